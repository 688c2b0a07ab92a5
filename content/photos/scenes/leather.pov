// The seventeen itself: lit windows, leather seats, and nobody in them.
// film: size=1080x500 exposure=1.2 warmth=0.35 bloom=1.5 vignette=1.0
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"
#include "bus.inc"

Shot(<-1.6, 1.5, -22>, <0.0, 2.02, 0>, 37.5, <0, 2.2, 0>, 0.1)
sky_sphere { pigment { gradient y color_map { [0 rgb 0.006] [0.5 rgb <0.16, 0.085, 0.06>] [0.56 rgb <0.055, 0.055, 0.075>] [0.65 rgb <0.020, 0.042, 0.062>] [1 rgb <0.008, 0.020, 0.032>] } scale 2 translate -y } }
plane { y, 0 WetAsphalt(0.66, <1.2, 0, 2.6>) }
House(5, <-20, 0, 24>, <-10, 6.4, 24>, NightTeal*0.5)
House(12, <-9.6, 0, 26>, <-3, 8.2, 26>, NightTeal*0.42)
House(8, <-2.6, 0, 25>, <5, 7.0, 25>, NightTeal*0.45)
House(2, <5.4, 0, 24>, <12, 8.8, 24>, NightTeal*0.5)
House(31, <12.4, 0, 26>, <21, 6.6, 26>, NightTeal*0.45)
Bokeh(23, 26, <-15, 0.5, 14>, <15, 2.2, 20>, 0.14, 6)
object { Bus }
// What falls out of windows and headlamp onto the street.
light_source { <-1.6, 2.9, -0.7> color rgb <1.5, 0.85, 0.36> fade_distance 2.2 fade_power 2 }
light_source { <3.4, 2.9, -0.7> color rgb <1.5, 0.85, 0.36> fade_distance 2.2 fade_power 2 }
light_source { <-8.4, 1.1, 0.3> color rgb <1.8, 1.4, 0.9> fade_distance 1.8 fade_power 2 }
Softbox(<-8, 7, -10>, <0, 2, 0>, 4, rgb <0.40, 0.44, 0.50>)
