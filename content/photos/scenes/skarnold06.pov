// The ticket itself, cut out: number nine thousand, folded and carried about for hours.
// film: size=500x460 shape=cutout tilt=-12 exposure=1.0 warmth=0.35 vignette=0.3 grain=0.8
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<0, 0, -10>, <0, 0, 0>, 13.6, <0, 0, 0>, 0.02)
Sky(rgb 0.04, rgb <0.16, 0.14, 0.12>, rgb 0.12)
Softbox(<-5, 3.4, -3.2>, <0, 0, 0>, 2, rgb <1.25, 1.02, 0.74>)
Softbox(<5, -2, -5>, <0, 0, 0>, 3, rgb <0.24, 0.26, 0.30>)
#declare Inked = texture { pigment { bozo scale 0.05 turbulence 0.4 color_map { [0.3 srgb <0.13, 0.09, 0.11>] [0.8 srgb <0.26, 0.18, 0.19>] } } finish { ambient 0 diffuse 0.85 } }
#declare Rose = texture { pigment { bozo scale 0.06 turbulence 0.4 color_map { [0.3 BrickRose] [0.8 srgb <0.86, 0.50, 0.38>] } } finish { ambient 0 diffuse 0.85 } }
#declare Stub = texture {   // a fold down the middle: the left leaf is in the shade
    pigment { gradient x pigment_map {
        [0.49 bozo turbulence 0.6 scale 0.9 color_map { [0 srgb <0.82, 0.73, 0.55>] [1 srgb <0.88, 0.81, 0.65>] }]
        [0.50 color srgb <0.70, 0.60, 0.44>]
        [0.51 bozo turbulence 0.6 scale 0.9 color_map { [0 srgb <0.94, 0.86, 0.67>] [1 srgb <0.99, 0.94, 0.80>] }]
    } scale 4 translate x*-2 }
    normal { wrinkles 0.25 scale 0.9 } finish { ambient 0 diffuse 0.85 }
}
difference {
    box { <-1.1, -0.84, 0>, <1.1, 0.84, 0.01> }
    #local I = 0;
    #while (I < 12)
        cylinder { <-1.1 + I*0.2, 0.84, -1>, <-1.1 + I*0.2, 0.84, 1>, 0.055 }
        cylinder { <-1.1 + I*0.2, -0.84, -1>, <-1.1 + I*0.2, -0.84, 1>, 0.055 }
        #local I = I + 1;
    #end
    cylinder { <0.94, -0.62, -1>, <0.94, -0.62, 1>, 0.075 }
    texture { Stub }
}
object { Label("9000", 0.56, 0.004) translate <0, -0.30, -0.006> texture { Inked } }
object { Label("NUMBER", 0.20, 0.004) translate <0, 0.44, -0.006> texture { Rose } }
object { Label("PLEASE  WAIT", 0.13, 0.004) translate <-0.1, -0.62, -0.006> texture { Rose } }
box { <-0.98, 0.35, -0.006>, <0.98, 0.375, 0.01> texture { Rose } }
box { <-0.98, -0.405, -0.006>, <0.98, -0.38, 0.01> texture { Rose } }
