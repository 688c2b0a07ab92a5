// The portrait with the ticket.
// film: exposure=1.15 warmth=0.4
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<0.9, 1.95, -9.5>, <0.02, 1.50, 0>, 20, <0, 1.75, -0.95>, 0.2)
Sky(rgb 0.03, rgb 0.08, rgb 0.1)
plane { -z, -2.4 Planks(0.52) }
box { <-7, -0.3, -1.8>, <7, 0, 2.4> Satin(srgb <0.20, 0.38, 0.34>) }
Softbox(<-4, 4.2, -4.2>, <0, 1.3, 0>, 2.2, rgb <1.45, 1.15, 0.80>)
Softbox(<4.5, 2.5, -3.5>, <0, 1.3, 0>, 2, rgb <0.30, 0.26, 0.30>)
Softbox(<3.5, 4.5, 1.6>, <0, 1.5, 0>, 1.4, rgb <0.70, 0.45, 0.30>)
object { Skarnold(HeadPose(0, 3, -3), 0.40, <-0.1, 0.1>, BeakTicket("9000")) rotate y*12 }
