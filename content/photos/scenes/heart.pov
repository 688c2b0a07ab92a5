// Somebody breathed on the window and drew a heart; somebody looks in.
// film: tilt=-10 scale=0.9 exposure=1.1 warmth=0.3 bloom=1.3
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<0, 1.9, -10>, <0, 1.62, 0>, 20, <0, 1.62, -1.75>, 0.16)
Sky(rgb 0.02, rgb <0.06, 0.09, 0.11>, rgb <0.03, 0.05, 0.08>)
plane { y, 0 WetAsphalt(0.4, <2, 0, 1>) }
Bokeh(71, 30, <-6, 0.4, 7>, <6, 5, 16>, 0.22, 5)
Softbox(<-4, 4.5, -1.2>, <0, 1.4, 0>, 2, rgb <1.35, 0.92, 0.52>)
Softbox(<4, 3, -1>, <0, 1.4, 0>, 2, rgb <0.35, 0.50, 0.55>)
// The breath: a white veil, wiped off in the shape of a heart (x^2 + (1.2y - 0.8 sqrt|x|)^2 < 1).
box { <-4, -1, -1.80>, <4, 5, -1.79>
    texture {
        pigment_pattern { function { min(1, max(0, (sqrt(x*x + pow(1.18*y - 0.72*sqrt(abs(x)), 2)) - 0.96)*14)) } color_map { [0 rgb 0] [1 rgb 1] } scale 1.42 translate <0, 1.55, 0> }
        texture_map {
            [0 pigment { rgbt <1, 1, 1, 1> } finish { ambient 0 diffuse 0 }]
            [1 pigment { bozo scale <0.7, 0.9, 1> turbulence 0.5 color_map { [0 rgbt <0.70, 0.80, 0.80, 0.42>] [1 rgbt <0.75, 0.83, 0.82, 0.24>] } } finish { ambient 0 diffuse 0.35 emission 0.16 }]
        }
    }
    no_shadow
}
object { Drops(13, 150, <-2.0, 0>, <2.0, 3.6>, 0.030) translate z*-1.83 }
object { Tovak(HeadPose(-12, 2, -9), 0.1, <0.1, 0.1>) rotate y*8 translate <-0.96, 0.25, 0.3> }
object { Vemby(HeadPose(12, 2, 9), 0.3, <-0.1, 0.1>) rotate y*-10 translate <0.98, 0.30, 0.45> }
