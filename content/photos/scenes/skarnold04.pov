// They are serving number nine.
// film: shape=torn tilt=-7 scale=0.9 exposure=1.15 warmth=0.2 bloom=1.7
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-0.6, 2.2, -11.5>, <0.15, 2.1, 0>, 22.5, <-0.35, 1.9, -0.9>, 0.2)
Sky(rgb 0.02, rgb <0.05, 0.07, 0.07>, rgb 0.05)
plane { y, 0 PolishedFloor(pigment { Terrazzo }) }
plane { -z, -3.4 Planks(0.7) }
// The number board: seven-segment digits, 0009.
#macro Digit(Mask, Place)
    union {
        #local Bit = 0;
        #while (Bit < 7)
            #local Lit = mod(floor(Mask/pow(2, Bit)), 2);
            object {
                #switch (Bit)
                    #case (0) box { <-0.20, 0.80, 0>, <0.20, 0.89, 0.02> } #break
                    #case (1) box { <0.20, 0.46, 0>, <0.29, 0.80, 0.02> } #break
                    #case (2) box { <0.20, 0.09, 0>, <0.29, 0.43, 0.02> } #break
                    #case (3) box { <-0.20, 0.0, 0>, <0.20, 0.09, 0.02> } #break
                    #case (4) box { <-0.29, 0.09, 0>, <-0.20, 0.43, 0.02> } #break
                    #case (5) box { <-0.29, 0.46, 0>, <-0.20, 0.80, 0.02> } #break
                    #else box { <-0.20, 0.40, 0>, <0.20, 0.49, 0.02> }
                #end
                Glow(rgb <1.0, 0.10, 0.03>, (Lit ? 1.9 : 0.03))
            }
            #local Bit = Bit + 1;
        #end
        translate Place
    }
#end
union {
    box { <-1.75, -0.28, 0>, <1.75, 1.65, 0.4> Satin(rgb 0.012) }
    Digit(63, <-1.2, 0, -0.02>) Digit(63, <-0.4, 0, -0.02>) Digit(63, <0.4, 0, -0.02>) Digit(111, <1.2, 0, -0.02>)
    object { Label("NOW SERVING", 0.2, 0.02) translate <0, 1.22, -0.03> Glow(Cream, 0.9) }
    translate <0.35, 3.15, 2.9>
}
light_source { <0.35, 3.5, 2.2> color rgb <1.3, 0.22, 0.08>*1.2 area_light x*3, y*1, 2, 2 jitter fade_distance 2 fade_power 2 }
Softbox(<-4.5, 4.6, -4>, <0, 1.3, 0>, 2.2, rgb <1.05, 0.82, 0.55>)
Softbox(<4.5, 3.5, -2>, <0, 1.3, 0>, 2.2, rgb <0.22, 0.32, 0.36>)
object { Skarnold(HeadPose(6, 8, 4), 0.44, <0.1, 0.4>, BeakTicket("9000")) rotate y*20 translate <-0.4, 0, -0.2> }
