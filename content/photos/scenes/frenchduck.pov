// Sunday, a small coffee, nowhere to be.
// film: shape=stamp tilt=-9 scale=0.84 exposure=1.05 warmth=0.45
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-1.7, 2.6, -9.5>, <0.18, 1.22, -0.2>, 20.5, <-0.1, 1.65, -0.95>, 0.24)
Sky(rgb <0.2, 0.16, 0.1>, rgb <0.75, 0.66, 0.52>, rgb <0.55, 0.62, 0.70>)
// A round marble table with a brass rim; behind it the terrace, out of focus.
cylinder { <0.2, -0.2, -0.4>, <0.2, 0, -0.4>, 3.1
    material { texture { pigment { granite turbulence 0.3 scale 2.2 color_map { [0.2 srgb <0.90, 0.87, 0.82>] [0.6 srgb <0.80, 0.76, 0.70>] [0.75 srgb <0.50, 0.45, 0.42>] } }
        finish { ambient 0 diffuse 0.75 specular 0.5 roughness 0.01 reflection { 0.02, 0.5 fresnel on } conserve_energy } } interior { ior 1.5 } } }
torus { 3.1, 0.1 translate <0.2, -0.1, -0.4> Brass() }
box { <-20, -6, 13>, <20, 2.2, 14> Matt(srgb <0.25, 0.36, 0.30>) }
box { <-20, 2.2, 13>, <20, 9, 14> Matt(srgb <0.80, 0.62, 0.40>) }
#local I = 0;
#while (I < 7)
    box { <-9 + I*3, 2.8, 12.8>, <-7.4 + I*3, 6, 13> Matt(srgb <0.16, 0.24, 0.28>) }
    box { <-9.6 + I*3, 5.6, 11.5>, <-8.1 + I*3, 6.8, 12> Matt(BrickRose) }
    box { <-8.1 + I*3, 5.6, 11.5>, <-6.6 + I*3, 6.8, 12> Matt(Cream) }
    #local I = I + 1;
#end
plane { y, -5 Matt(srgb <0.45, 0.40, 0.34>) }
Bokeh(12, 16, <-5, 1.0, 9>, <7, 4.6, 12>, 0.15, 3)
// The cup.
union {
    lathe { cubic_spline 11, <0, 0.06>, <0.0, 0.06>, <0.26, 0.07>, <0.40, 0.24>, <0.44, 0.52>, <0.455, 0.54>, <0.43, 0.53>, <0.37, 0.26>, <0.24, 0.12>, <0, 0.12>, <-0.1, 0.12> }
    lathe { cubic_spline 8, <-0.1, 0.0>, <0, 0.02>, <0.4, 0.03>, <0.72, 0.12>, <0.735, 0.14>, <0.70, 0.14>, <0.38, 0.06>, <0, 0.06> }
    torus { 0.14, 0.035 rotate x*90 translate <0.52, 0.32, 0> }
    Gloss(srgb <0.96, 0.94, 0.89>)
    translate <1.28, 0, -0.75>
}
disc { <1.28, 0.44, -0.75>, y, 0.43 Gloss(srgb <0.22, 0.11, 0.05>) }
torus { 0.37, 0.045 scale <1, 0.3, 1> translate <1.28, 0.44, -0.75> Matt(srgb <0.62, 0.38, 0.18>) }
Softbox(<-5, 5, -4>, <0, 1, 0>, 3, rgb <1.25, 1.08, 0.84>)
Softbox(<5, 4, 4>, <0, 1.5, 0>, 2.5, rgb <0.62, 0.50, 0.34>)
object { Duck(ShirtSkin, HeadPose(-8, 4, -5), 0.16, 14, <-0.1, 0.1>, Beret) rotate y*22 translate <-0.35, 0, 0> }
