// The machine hums, too, in four frames: it looks, it chooses, it waits, it has.
// film: size=1000x370 shape=strip tilt=-7 exposure=1.1 warmth=0.05 bloom=1.5
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

#declare Look = array[4] { <-26, 8, 8>, <-40, 14, -6>, <6, 0, 12>, <-22, -12, 4> }
#declare Lids = array[4] { 0.2, 0.05, 0.9, 0.1 }
Shot(<-2.9, 1.9, -10.2>, <-0.05, 1.78, 0>, 21.5, <-0.5, 1.75, -0.7>, 0.2)
Sky(rgb 0.02, rgb <0.04, 0.07, 0.08>, rgb 0.04)
plane { y, 0 PolishedFloor(pigment { checker color srgb <0.42, 0.22, 0.16>, color srgb <0.70, 0.62, 0.48> scale 0.8 }) }
plane { -z, -2.6 Plaster(srgb <0.20, 0.34, 0.34>) }
union {
    difference { box { <-1.5, 0.1, 0>, <1.5, 5.2, 1.6> } box { <-1.3, 1.5, -0.1>, <0.75, 4.9, 0.5> } Satin(srgb <0.62, 0.16, 0.11>) }
    box { <-1.3, 1.5, 0.48>, <0.75, 4.9, 0.52> Glow(rgb <0.86, 1.0, 0.92>, 1.4) }
    #local Row = 0;
    #while (Row < 4)
        box { <-1.3, 1.56 + Row*0.84, 0.06>, <0.75, 1.62 + Row*0.84, 0.5> Steel() }
        #local I = 0;
        #while (I < 5)
            union {
                cylinder { <0, 0, 0>, <0, 0.50, 0>, 0.15 }
                cylinder { <0, 0.50, 0>, <0, 0.53, 0>, 0.12 }
                #switch (mod(Row + (Row > 1), 3))
                    #case (0) Gloss(TovakYellow) #break
                    #case (1) Gloss(VembyMint) #break
                    #else Gloss(srgb <0.92, 0.88, 0.80>)
                #end
                translate <-1.08 + I*0.40, 1.62 + Row*0.84, 0.24>
            }
            #local I = I + 1;
        #end
        #local Row = Row + 1;
    #end
    #local I = 0;
    #while (I < 4)
        box { <0.92, 3.9 - I*0.26, -0.05>, <1.32, 4.06 - I*0.26, 0.02> Glow(Cream, (I = 2 ? 2.4 : 0.5)) }
        #local I = I + 1;
    #end
    box { <1.05, 2.5, -0.03>, <1.2, 2.75, 0.02> Steel() }
    box { <-1.2, 0.45, -0.03>, <0.7, 1.05, 0.02> Satin(rgb 0.015) }
    rotate y*12
    translate <1.15, 0, 0.9>
}
light_source { <0.5, 3.2, 0.55> color rgb <0.86, 1.05, 0.95>*1.5 area_light x*1.6, y*2.6, 2, 2 jitter fade_distance 2.2 fade_power 2 }
Softbox(<-5, 4.5, -5>, <0, 1, 0>, 2.6, rgb <0.95, 0.70, 0.42>)
object { Vemby(HeadPose(Look[Frame].x, Look[Frame].y, Look[Frame].z), Lids[Frame], <0.4, (Frame = 3 ? -0.6 : 0.4)>) rotate y*(Frame = 2 ? 0 : 10) translate <-0.75, 0, -0.35> }
#if (Frame = 3)
    union { cylinder { 0, y*0.5, 0.15 } cylinder { y*0.5, y*0.53, 0.12 } Gloss(TovakYellow) rotate z*4 translate <0.42, 0, -1.5> }
#end
