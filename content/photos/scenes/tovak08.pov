// Close: the spectacles, and what they see.
// film: exposure=1.0 warmth=0.3
#declare LampSamples = 3;
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-1.9, 2.0, -7.2>, <-0.14, 1.62, -0.5>, 17.5, <-0.32, 1.75, -0.95>, 0.20)
Sky(rgb 0.01, rgb <0.03, 0.03, 0.04>, rgb 0.02)
plane { -z, -4 Plaster(Plum*0.8) }
plane { y, 0 Matt(srgb <0.25, 0.14, 0.10>) }
Softbox(<-4.2, 4.6, -5.2>, <0, 1.6, 0>, 1.4, rgb <1.15, 0.95, 0.70>)
Softbox(<3.8, 2.6, -1.5>, <0, 1.6, 0>, 1.6, rgb <0.55, 0.30, 0.14>)
// A window behind the camera: four panes that the lenses mirror.
union {
    box { <-1.05, 0.05, 0>, <-0.05, 1.05, 0.02> } box { <0.05, 0.05, 0>, <1.05, 1.05, 0.02> }
    box { <-1.05, -1.05, 0>, <-0.05, -0.05, 0.02> } box { <0.05, -1.05, 0>, <1.05, -0.05, 0.02> }
    Glow(rgb <0.75, 0.92, 1.0>, 2.4) no_image no_shadow rotate y*6 scale 1.2 translate <1.2, 3.2, -10>
}
Bokeh(21, 9, <-1, 0.6, 2.5>, <3, 3.4, 3.8>, 0.13, 2.2)
object { Tovak(HeadPose(0, -2, -3), 0.12, <0.1, 0>) rotate y*10 }
