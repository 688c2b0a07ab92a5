// The corridor. Doors, and more doors.
// film: tilt=-11 scale=0.88 exposure=1.1 warmth=-0.05 vignette=1.3
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<0.25, 1.15, -8.2>, <-0.05, 1.52, 0>, 31, <0, 1.7, -0.9>, 0.14)
Sky(rgb 0.05, rgb 0.1, rgb 0.1)
plane { y, 0 PolishedFloor(pigment { checker color srgb <0.20, 0.40, 0.40>, color srgb <0.82, 0.77, 0.62> scale 0.9 }) }
#macro Flank(S)
    plane { x*-S, -2.9 Plaster(srgb <0.70, 0.66, 0.50>) }
    box { <S*2.9, 0, -20>, <S*2.82, 1.5, 60> Satin(srgb <0.14, 0.38, 0.38>) }
    box { <S*2.9, 1.5, -20>, <S*2.78, 1.58, 60> Wood() }
    #local I = 0;
    #while (I < 8)
        box { <S*2.9, 0, 2 + I*5>, <S*2.70, 3.3, 4.1 + I*5> Wood() }
        box { <S*2.9, 0, 2.15 + I*5>, <S*2.68, 3.15, 3.95 + I*5> Satin(srgb <0.50, 0.26, 0.18>) }
        sphere { <S*2.62, 1.5, 2.4 + I*5>, 0.08 Brass() }
        #local I = I + 1;
    #end
#end
Flank(1) Flank(-1)
plane { -y, -4.4 Plaster(srgb <0.66, 0.66, 0.58>) }
plane { -z, -44 Plaster(srgb <0.5, 0.5, 0.4>) }
#local I = 0;
#while (I < 7)
    box { <-0.9, 4.32, -0.2 + I*6.4>, <0.9, 4.39, 0.9 + I*6.4> Glow(rgb <0.92, 1.05, 0.9>, 4) no_shadow }
    #if (I < 4)
        light_source { <0, 4.25, 0.35 + I*6.4> rgb <0.92, 1.05, 0.9>*1.3 area_light x*1.8, z*1.1, 2, 2 jitter fade_distance 3 fade_power 2 }
    #end
    #local I = I + 1;
#end
Softbox(<-1.8, 3.4, -7.5>, <0, 1, 0>, 2, rgb <0.42, 0.44, 0.40>)

object { Tovak(HeadPose(2, 2, 0), 0.1, <0, 0>) rotate y*6 translate <-0.1, 0, 0> }
