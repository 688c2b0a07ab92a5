// The plain one: a studio portrait, the duck and nothing else.
// film: exposure=1.12 warmth=0.3
#declare LampSamples = 3;
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"

Shot(<0.5, 2.25, -9.5>, <0.03, 1.13, 0>, 16.4, <0.1, 1.6, -0.9>, 0.22)
Sky(rgb 0.02, rgb <0.03, 0.06, 0.07>, rgb <0.05, 0.09, 0.10>)

// Seamless paper: a floor that bends up into the wall.
#declare Paper = texture { pigment { color srgb <0.16, 0.42, 0.46> } finish { ambient 0 diffuse 0.85 } }
plane { y, 0 texture { Paper } }
plane { -z, -7 texture { Paper } }
difference { box { <-40, 0, 3.5>, <40, 3.5, 7.1> } cylinder { <-41, 3.5, 3.5>, <41, 3.5, 3.5>, 3.5 } texture { Paper } }

Softbox(<-4.5, 5.5, -4.5>, <0, 1, 0>, 3.4, rgb <1.35, 1.22, 1.05>)
Softbox(<5.5, 2.8, -2.5>, <0, 1.2, 0>, 2.4, rgb <0.16, 0.20, 0.24>)
Softbox(<2.5, 4.5, 4.5>, <0, 1.5, 0>, 1.5, rgb <0.55, 0.42, 0.30>)

object { Duck(DuckSkin, HeadPose(-4, 2, 3), 0, 0, <-0.1, 0>, Bare) rotate y*24 }
