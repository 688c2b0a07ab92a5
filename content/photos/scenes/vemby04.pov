// Rain on a puddle, in time.
// film: tilt=-13 scale=0.86 exposure=1.1 warmth=-0.1
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-1.6, 1.5, -10>, <0.05, 1.05, 0>, 20, <-0.2, 1.7, -0.9>, 0.2)
Sky(rgb <0.05, 0.06, 0.06>, rgb <0.55, 0.64, 0.62>, rgb <0.34, 0.42, 0.44>)
plane { y, 0
    material {
        texture {
            pigment { rgb <0.010, 0.018, 0.020> }
            normal { average normal_map {
                [1 ripples 0.55 frequency 3 translate <2.4, 0, 0.5>]
                [1 ripples 0.45 frequency 4 translate <-3.1, 0, 1.7>]
                [1 bumps 0.25 scale 0.35] } }
            finish { ambient 0 diffuse 0.5 specular 0.6 roughness 0.003 reflection { 0.05, 0.95 fresnel on } conserve_energy }
        }
        interior { ior 1.33 }
    }
}
#local Roll = seed(5);
#local I = 0;
#while (I < 26)
    #local X = -3.4 + 6.8*rand(Roll); #local Z = -3.0 + 6*rand(Roll); #local R = 0.08 + 0.34*rand(Roll);
    #if (X*X + Z*Z > 2.2)
        torus { R, 0.016 scale <1, 0.7, 1> translate <X, 0, Z> material { texture { pigment { rgb <0.02, 0.03, 0.03> } finish { ambient 0 diffuse 0.5 specular 0.8 roughness 0.003 reflection { 0.05, 0.95 fresnel on } conserve_energy } } interior { ior 1.33 } } }
        #if (R < 0.2)
            cone { <X, 0, Z>, 0.022, <X, 0.10, Z>, 0.006 Gloss(rgb 0.35) }
            sphere { <X, 0.17, Z>, 0.020 Gloss(rgb 0.4) }
        #end
    #end
    #local I = I + 1;
#end
House(4, <-12, 0, 20>, <-1.4, 12, 20>, srgb <0.30, 0.42, 0.42>)
House(6, <-1.4, 0, 22>, <2.6, 6.5, 22>, srgb <0.42, 0.50, 0.46>)
House(9, <2.6, 0, 19>, <12, 12, 19>, srgb <0.46, 0.30, 0.27>)
Rain(9, 75, <-4, 0, -3>, <4, 5, 6>, 0.12, rgb 0.8)
Softbox(<-4, 7, -3>, <0, 1, 0>, 4.5, rgb <0.85, 0.92, 0.92>)
object { Vemby(HeadPose(4, 14, 10), 0.75, <0, 0.2>) rotate y*20 translate y*-0.10 }
