// The chairs stand in a line.
// film: exposure=1.1 warmth=0.25
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-5.0, 3.6, -10.5>, <0.15, 2.15, 0.3>, 24.5, <-0.75, 3.0, -0.8>, 0.2)
Sky(rgb 0.05, rgb <0.18, 0.2, 0.2>, rgb 0.25)
plane { y, 0 PolishedFloor(pigment { checker color srgb <0.22, 0.30, 0.30>, color srgb <0.26, 0.35, 0.34> scale 1.1 }) }
plane { -z, -2.6 Plaster(srgb <0.74, 0.68, 0.52>) }
box { <-20, 0, 2.5>, <60, 1.2, 2.7> Satin(srgb <0.16, 0.36, 0.36>) }
#declare ChairColour = array[2] { srgb <0.86, 0.36, 0.13>, srgb <0.90, 0.66, 0.22> }
#local I = 0;
#while (I < 6)
    object { ShellChair(ChairColour[mod(I, 2)]) scale 1.25 translate <-0.6 + I*3.15, 0, 0.4> }
    #local I = I + 1;
#end
Softbox(<-5, 7, -3>, <0, 1.5, 0>, 3, rgb <1.15, 1.10, 0.92>)
Softbox(<7, 5, -5>, <1, 1.5, 0>, 3, rgb <0.28, 0.30, 0.30>)
object { Skarnold(HeadPose(4, -4, 3), 0.46, <-0.2, -0.2>, HatWithTicket("9000")) rotate y*18 scale 0.88 translate <-0.6, 1.48, 0.12> }
