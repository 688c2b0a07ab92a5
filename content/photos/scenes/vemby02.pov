// The bus shelter at night, lit by an advertisement for somewhere else.
// film: tilt=-14 scale=0.84 exposure=1.15 warmth=0.1 bloom=1.7
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<2.6, 1.7, -10.5>, <-0.12, 1.68, 0>, 21.5, <-0.45, 1.75, -0.9>, 0.2)
Sky(rgb 0.002, rgb <0.015, 0.045, 0.06>, rgb <0.004, 0.012, 0.02>)
plane { y, 0 WetAsphalt(0.45, <2.2, 0, 0.2>) }
Bokeh(41, 26, <-9, 0.5, 10>, <2, 4.4, 20>, 0.16, 7)
// The lit case: a sun going down behind a palm.
union {
    box { <-1.35, 0.35, -0.12>, <1.35, 4.45, 0.12> Satin(srgb <0.08, 0.10, 0.11>) }
    box { <-1.2, 0.5, -0.13>, <1.2, 4.3, 0> texture { pigment { gradient y color_map { [0.1 srgb <0.10, 0.45, 0.50>] [0.42 srgb <0.12, 0.52, 0.55>] [0.42 srgb <0.98, 0.52, 0.28>] [1 srgb <0.98, 0.80, 0.50>] } scale 4.4 } finish { ambient 0 diffuse 0.1 emission 1.25 } } }
    cylinder { <0.1, 2.3, -0.14>, <0.1, 2.3, -0.10>, 0.55 texture { pigment { gradient y color_map { [0.42 srgb <0.98, 0.52, 0.28>] [0.42 srgb <1, 0.92, 0.70>] } scale 4.4 } finish { ambient 0 diffuse 0 emission 1.7 } } }
    box { <-1.2, 0.5, -0.145>, <1.2, 1.85, -0.12> texture { pigment { srgb <0.10, 0.48, 0.52> } finish { ambient 0 diffuse 0.1 emission 1.1 } } }
    object { Label("AWAY", 0.36, 0.02) translate <0, 0.95, -0.165> Glow(Cream, 1.5) }
    scale <0.88, 0.94, 1> rotate y*-14 translate <0.95, 0, 1.35>
}
light_source { <0.8, 2.4, 0.9> color rgb <1.35, 0.85, 0.50>*1.5 area_light x*2.2, y*3, 2, 2 jitter fade_distance 2.2 fade_power 2 }
cylinder { <-2.3, 0, 1.6>, <-2.3, 5, 1.6>, 0.07 Steel() }
Softbox(<-4.5, 3.6, -5>, <-0.3, 1, 0>, 2.4, rgb <0.55, 0.80, 0.84>)
object { Vemby(HeadPose(-14, 6, 10), 0.25, <0.2, 0.3>) rotate y*-4 translate <-0.75, 0, -0.3> }
