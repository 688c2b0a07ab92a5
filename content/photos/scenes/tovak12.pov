// An afternoon through the venetian blind, in four frames.
// film: size=1000x370 shape=strip tilt=4 exposure=1.05 warmth=0.55 vignette=1.2
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

#declare Low = array[4] { 11.5, 8.2, 5.6, 3.4 }          // the sun goes down
#declare Lids = array[4] { 0, 0.3, 0.62, 1 }
#declare Nod = array[4] { 8, 3, -4, -14 }
#declare Turn = array[4] { 40, 62, 70, 58 }
Shot(<0, 1.7, -10>, <-0.12, 1.30, 0>, 18, <-0.5, 1.7, -0.45>, 0.16)
Sky(rgb 0.02, rgb 0.05, rgb 0.06)
plane { y, 0 PolishedFloor(pigment { color srgb <0.34, 0.19, 0.12> }) }
plane { -z, -2.2 Plaster(srgb <0.62, 0.40, 0.26>) }
// The slats hang out of the picture, across the way from the sun to the duck.
#local I = -14;
#while (I < 14)
    box { <-3.4, -0.065, -0.005>, <3.4, 0.065, 0.005> translate y*I*0.25 rotate y*233 translate <-4.9, 3.7, -3.7> Matt(Cream) }
    #local I = I + 1;
#end
light_source { <-14, Low[Frame], -10.5> color rgb <2.6, 1.75 - 0.13*Frame, 1.0 - 0.2*Frame> area_light x*0.14, y*0.14, 2, 2 jitter }
Softbox(<4.5, 3.5, -6>, <0, 1, 0>, 3, rgb <0.17, 0.20, 0.26>)
object { Tovak(HeadPose((Frame = 1 ? -22 : 0), Nod[Frame], 0), Lids[Frame], <0.1, 0.1>) rotate y*Turn[Frame] }
