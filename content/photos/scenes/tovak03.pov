// The lobby, dead centre, under the clock.
// film: exposure=1.05 warmth=0.35
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<0, 1.9, -14>, <0, 2.12, 0>, 17.4, <0, 1.7, -1>, 0.12)
Sky(rgb 0.05, rgb 0.2, rgb 0.3)
plane { y, 0 PolishedFloor(pigment { Terrazzo }) }
plane { -z, -1.9 Plaster(srgb <0.22, 0.50, 0.50>) }
box { <-9, 0, 1.72>, <9, 1.35, 2> Planks(0.42) }
box { <-9, 1.35, 1.64>, <9, 1.45, 2> Wood() }
box { <-9, 0, 1.62>, <9, 0.18, 2> Satin(srgb <0.16, 0.10, 0.08>) }
object { WallClock(5, 17, 0.86) translate <0, 3.42, 1.9> }
Softbox(<-3.4, 7, -4.5>, <0, 1, 0>, 3, rgb <1.15, 0.98, 0.74>)
Softbox(<5, 3, -5>, <0, 1, 0>, 3, rgb <0.20, 0.24, 0.24>)

object { Tovak(HeadPose(0, 3, 0), 0.05, <0, 0.1>) }
