// On a bench in the last sun, the abacus beside him.
// film: exposure=1.1 warmth=0.4
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-4.2, 2.9, -9.5>, <0.32, 1.75, 0>, 25.5, <-0.2, 2.6, -0.9>, 0.24)
Sky(rgb <0.10, 0.08, 0.05>, rgb <0.85, 0.55, 0.28>, rgb <0.25, 0.38, 0.45>)
plane { y, 0 material { texture { pigment { bozo scale 0.5 turbulence 0.7 color_map { [0 srgb <0.30, 0.28, 0.14>] [1 srgb <0.42, 0.36, 0.18>] } } normal { granite 0.6 scale 0.4 } finish { ambient 0 diffuse 0.9 } } } }
box { <-30, 0, 14>, <30, 9, 15> texture { pigment { bozo turbulence 1 scale 0.8 color_map { [0.3 srgb <0.09, 0.15, 0.09>] [0.7 srgb <0.35, 0.32, 0.12>] } } finish { ambient 0 diffuse 0.9 } } }
Bokeh(8, 26, <-4, 2, 11>, <12, 7, 13.5>, 0.16, 4)
Softbox(<-8, 3.6, -2.5>, <0, 1.8, 0>, 1.8, rgb <1.75, 1.02, 0.42>)
Softbox(<5, 5, 6>, <0, 2, 0>, 2, rgb <0.7, 0.42, 0.16>)

object { Bench(5.2) }
object { Tovak(HeadPose(10, 0, 2), 0.18, <-0.3, 0>) rotate y*12 translate <-0.35, 1.0, 0> }
object { Abacus rotate <10, 14, 0> translate <1.32, 1.0, -0.1> }
