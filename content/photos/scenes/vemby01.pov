// Seen from outside: Vemby at the rainy window, warm inside.
// film: exposure=0.9 warmth=0.25 bloom=1.3
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-0.8, 2.0, -10.5>, <0, 1.72, 0>, 19.5, <0, 1.85, -1.0>, 0.085)
Sky(rgb 0.02, rgb <0.10, 0.15, 0.18>, rgb <0.05, 0.09, 0.12>)
plane { -z, -5 CircleWallpaper(srgb <0.80, 0.55, 0.26>, srgb <0.62, 0.27, 0.13>, srgb <0.90, 0.74, 0.46>, 1.3) }
box { <-6, -1, -1.3>, <6, 0, 2> Satin(Cream*0.9) }
Bulb(<2.6, 3.6, 2.4>, 0.6, rgb <1.7, 1.0, 0.45>, 2.6)
union { cone { <2.1, 2.9, 3.0>, 0.75, <2.1, 3.8, 3.0>, 0.4 open Glow(rgb <1, 0.62, 0.26>, 3) no_shadow } cylinder { <2.1, 0, 3.0>, <2.1, 2.9, 3.0>, 0.06 Brass() } }
Softbox(<-3.5, 4.2, -1.0>, <0, 1.4, 0>, 1.8, rgb <1.05, 0.80, 0.52>)
Softbox(<2, 5, -8>, <0, 1, -1.5>, 3, rgb <0.16, 0.22, 0.26>)
// The window: frame, glass, drops on the outside.
union {
    box { <-6, -1, -1.75>, <6, 0.12, -1.45> } box { <-2.05, 0, -1.75>, <-1.85, 8, -1.45> } box { <1.85, 0, -1.75>, <2.05, 8, -1.45> } box { <-6, 3.55, -1.75>, <6, 3.72, -1.45> }
    Satin(srgb <0.16, 0.30, 0.30>)
}
object { Drops(7, 300, <-1.9, 0.1>, <1.9, 3.6>, 0.042) translate z*-1.62 }
object { Vemby(HeadPose(-8, 6, 9), 0.22, <-0.3, 0.5>) rotate y*14 }
