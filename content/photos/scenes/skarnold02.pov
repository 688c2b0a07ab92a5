// He shows his ticket to a fern, who understands.
// film: tilt=-13 scale=0.86 exposure=1.1 warmth=0.3
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<0.5, 2.0, -11.5>, <0.42, 1.52, 0>, 19.6, <-0.35, 1.7, -0.7>, 0.18)
Sky(rgb 0.04, rgb <0.14, 0.16, 0.16>, rgb 0.2)
plane { y, 0 PolishedFloor(pigment { Terrazzo }) }
plane { -z, -2.6 Plaster(srgb <0.82, 0.62, 0.44>) }
box { <-9, 0, 2.5>, <9, 0.28, 2.7> Wood() }
object { Fern(4) scale 0.92 translate <1.62, 0, 0.6> }
Softbox(<-4.2, 5.2, -4>, <0, 1.2, 0>, 2, rgb <1.35, 1.12, 0.82>)
Softbox(<5, 4, -4>, <0, 1.2, 0>, 3, rgb <0.20, 0.24, 0.26>)
object { Skarnold(HeadPose(-22, 4, -4), 0.38, <0.4, 0.1>, BeakTicket("9000")) rotate y*-14 translate <-0.62, 0, -0.1> }
