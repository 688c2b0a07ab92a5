// In the phone booth. Nobody answers, but he likes the ringing.
// film: shape=torn tilt=-12 scale=0.88 exposure=1.1 warmth=0.2 bloom=1.3
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-2.4, 2.2, -12>, <0.12, 1.85, 0>, 19.5, <-0.05, 1.8, -0.8>, 0.18)
Sky(rgb 0.01, rgb <0.05, 0.10, 0.12>, rgb <0.01, 0.03, 0.05>)
plane { y, -0.2 WetAsphalt(0.4, <1, 0, 2>) }
House(3, <-14, -0.2, 24>, <-1, 5.5, 24>, NightTeal*0.8)
House(7, <-1, -0.2, 26>, <5, 8, 26>, NightTeal*0.6)
House(9, <5, -0.2, 23>, <16, 4.6, 23>, NightTeal*0.8)
Bokeh(31, 34, <-9, 0.2, 12>, <9, 5, 22>, 0.17, 7)
#declare Enamel = texture { pigment { srgb <0.62, 0.10, 0.08> } finish { ambient 0 diffuse 0.75 specular 0.5 roughness 0.02 reflection { 0.02, 0.15 } } }
union {
    box { <-1.55, -0.2, -1.6>, <1.55, 0.0, 1.6> }
    box { <-1.6, 4.5, -1.65>, <1.6, 5.2, 1.65> }
    box { <-1.55, 0, -1.6>, <-1.33, 4.5, -1.38> } box { <1.33, 0, -1.6>, <1.55, 4.5, -1.38> }
    box { <-1.55, 0, 1.38>, <-1.33, 4.5, 1.6> } box { <1.33, 0, 1.38>, <1.55, 4.5, 1.6> }
    #local I = 1;
    #while (I < 4)
        box { <-1.5, I*1.12, 1.45>, <1.5, I*1.12 + 0.06, 1.52> }
        box { <1.44, I*1.12, -1.5>, <1.50, I*1.12 + 0.06, 1.5> }
        box { <-1.50, I*1.12, -1.5>, <-1.44, I*1.12 + 0.06, 1.5> }
        #local I = I + 1;
    #end
    texture { Enamel }
}
box { <-1.4, 4.62, -1.68>, <1.4, 5.05, -1.64> Glow(Cream, 1.6) }
object { Label("TELEPHONE", 0.24, 0.03) translate <0, 4.72, -1.70> Matt(Ink) }
// The set on the back wall, its receiver off the hook.
box { <0.35, 1.9, 1.0>, <1.25, 3.4, 1.45> Satin(srgb <0.08, 0.09, 0.10>) }
torus { 0.24, 0.07 rotate x*90 translate <0.8, 2.75, 0.98> Steel() }
union { Wire(<0.5, 2.0, 1.1>, <0.3, 0.2, 0.6>, <1.0, 0.0, -0.6>, <0.86, 1.9, -0.72>, 0.035, 24) Satin(srgb <0.05, 0.05, 0.05>) }
union {
    cylinder { <0, -0.36, 0>, <0, 0.36, 0>, 0.075 }
    sphere { 0, 0.17 scale <0.7, 1, 1> translate <-0.07, -0.38, 0> } sphere { 0, 0.17 scale <0.7, 1, 1> translate <-0.07, 0.38, 0> }
    Satin(srgb <0.05, 0.05, 0.05>) rotate z*-8 translate <0.88, 1.75, -0.55>
}
Bulb(<-0.2, 4.25, -0.7>, 0.7, rgb <1.2, 1.05, 0.72>, 2.6)
box { <-0.7, 4.42, -0.9>, <0.7, 4.47, 0.5> Glow(Cream, 3) no_shadow }
Softbox(<-6, 3.5, -6>, <0, 1.5, 0>, 3, rgb <0.18, 0.24, 0.28>)
object { Tovak(HeadPose(-14, 2, -5), 0.1, <0.5, 0.3>) rotate y*14 scale 0.98 translate <-0.12, 0, -0.1> }
