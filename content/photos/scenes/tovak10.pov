// From the roof: a duck, a long shadow, two hundred and four stones.
// film: exposure=1.0 warmth=0.45 vignette=1.3
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<0.6, 15, -3.4>, <0.32, 0.3, 0.05>, 15.2, <0, 2.1, -0.5>, 0.2)
Sky(rgb 0.1, rgb <0.30, 0.36, 0.44>, rgb <0.22, 0.30, 0.42>)
plane { y, 0 Paving(0.62) rotate y*31 }
light_source { <-13, 6.0, -5.5> rgb <1.75, 1.12, 0.55> area_light x*1.2, y*1.2, 2, 2 jitter }
object { Tovak(HeadPose(-14, 30, 0), 0, <0, 0.5>) rotate y*24 translate <-0.3, 0, 0> }
object { Notebook rotate y*-24 scale 0.9 translate <-1.35, 0, -1.25> }
