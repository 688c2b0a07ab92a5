// Low over a puddle: one Tovak above, one below.
// film: shape=round exposure=1.15 warmth=0.2 bloom=1.6
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<1.5, 0.62, -10>, <0, 0.55, 0>, 24.5, <0, 1.7, -0.9>, 0.22)
Sky(rgb 0.003, rgb <0.03, 0.06, 0.08>, rgb <0.004, 0.012, 0.02>)
plane { y, 0 WetAsphalt(0.62, <0.4, 0, 0.9>) }
box { <-40, 0, 30>, <40, 14, 31> Matt(rgb <0.008, 0.02, 0.026>) }
Bokeh(17, 30, <-7, 0.7, 12>, <6, 4.6, 26>, 0.17, 7)
Bokeh(5, 6, <-3.5, 1.8, 9>, <3, 4, 12>, 0.20, 4)
Softbox(<-4.5, 4.2, -4>, <0, 1, 0>, 2.2, rgb <1.25, 0.70, 0.28>)
Softbox(<4.5, 3, 3>, <0, 1.3, 0>, 1.8, rgb <0.25, 0.85, 0.75>)

object { Tovak(HeadPose(8, -4, 0), 0.1, <0.2, -0.3>) rotate y*-14 }
