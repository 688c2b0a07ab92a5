// One umbrella, two ducks: cut out of the rain.
// film: size=620x600 shape=cutout tilt=-6 exposure=1.25 warmth=0.25 vignette=0 grain=0.8
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-0.4, 1.7, -14>, <0.02, 2.02, 0>, 19.6, <0, 1.75, -0.9>, 0.06)
Sky(rgb 0.003, rgb <0.05, 0.10, 0.12>, rgb <0.02, 0.05, 0.07>)
Softbox(<-5, 3.4, -6>, <0, 1.2, 0>, 2.6, rgb <1.25, 0.92, 0.56>)
Softbox(<5, 4, 3>, <0, 1.4, 0>, 2, rgb <0.55, 0.95, 0.95>)
Softbox(<-5, 5, 3>, <0, 1.4, 0>, 2, rgb <0.70, 0.45, 0.22>)
Softbox(<5, 2.6, -7>, <0, 1.2, 0>, 2.6, rgb <0.20, 0.24, 0.28>)
object { Umbrella(4.3, BrickRose) rotate z*-3 translate <0.0, 0.95, -0.15> }
object { Vemby(HeadPose(-10, 4, -9), 0.3, <0.4, 0.2>) rotate y*-10 translate <-1.02, 0, -0.1> }
object { Skarnold(HeadPose(12, 2, 6), 0.42, <-0.3, 0.1>, BeakTicket("9000")) rotate y*10 scale 0.98 translate <1.05, 0, 0.05> }
