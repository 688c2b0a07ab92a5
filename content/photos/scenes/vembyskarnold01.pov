// One umbrella, two ducks.
// film: size=560x440 exposure=1.2 warmth=0.25 bloom=1.6
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-0.4, 1.7, -14>, <0, 1.95, 0>, 27.5, <0, 1.75, -0.9>, 0.22)
Sky(rgb 0.003, rgb <0.04, 0.08, 0.10>, rgb <0.006, 0.018, 0.028>)
plane { y, 0 WetAsphalt(0.52, <1.7, 0, 2.2>) }
box { <-40, 0, 26>, <40, 12, 27> Matt(rgb <0.01, 0.022, 0.03>) }
Bokeh(61, 44, <-10, 0.6, 9>, <10, 5, 22>, 0.19, 6.5)
Rain(3, 110, <-5, -0.2, -3>, <-1.9, 5.5, 6>, 0.10, rgb 0.8)
Rain(4, 110, <2.0, -0.2, -3>, <5, 5.5, 6>, 0.10, rgb 0.8)
Softbox(<-5, 3.4, -6>, <0, 1.2, 0>, 2.6, rgb <1.20, 0.86, 0.50>)
Softbox(<5, 4, 3>, <0, 1.4, 0>, 2, rgb <0.40, 0.75, 0.75>)
object { Umbrella(4.3, BrickRose) rotate z*-3 translate <0.0, 0.95, -0.15> }
object { Vemby(HeadPose(-10, 4, -9), 0.3, <0.4, 0.2>) rotate y*-10 translate <-1.02, 0, -0.1> }
object { Skarnold(HeadPose(12, 2, 6), 0.42, <-0.3, 0.1>, BeakTicket("9000")) rotate y*10 scale 0.98 translate <1.05, 0, 0.05> }
