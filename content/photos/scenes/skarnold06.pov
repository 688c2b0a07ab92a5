// Asleep in the tiled hall, the ticket safe in the hat.
// film: exposure=1.1 warmth=0.15
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<3.0, 2.7, -10>, <0.15, 1.52, 0>, 22.5, <0.1, 1.8, -0.9>, 0.2)
Sky(rgb 0.04, rgb <0.14, 0.16, 0.16>, rgb 0.2)
plane { y, -0.9 PolishedFloor(pigment { color srgb <0.36, 0.33, 0.30> }) }
plane { -z, -2.3 Tiles(srgb <0.54, 0.70, 0.62>, srgb <0.66, 0.80, 0.70>, 0.62) }
box { <-20, 3.5, 2.24>, <20, 3.75, 2.4> Gloss(srgb <0.12, 0.30, 0.32>) }
// The suitcase he sits on.
union {
    superellipsoid { <0.08, 0.08> scale <1.55, 0.43, 1.0> texture { pigment { bozo scale 0.5 turbulence 0.8 color_map { [0 srgb <0.46, 0.24, 0.13>] [1 srgb <0.56, 0.31, 0.17>] } } normal { granite 0.12 scale 0.15 } finish { ambient 0 diffuse 0.8 specular 0.3 roughness 0.03 reflection { 0.0, 0.06 } } } }
    box { <-1.56, -0.03, -1.01>, <1.56, 0.03, 1.01> Satin(srgb <0.14, 0.08, 0.05>) }
    box { <-0.95, -0.44, -1.012>, <-0.75, 0.44, 1.01> Satin(srgb <0.20, 0.11, 0.07>) } box { <0.75, -0.44, -1.012>, <0.95, 0.44, 1.01> Satin(srgb <0.20, 0.11, 0.07>) }
    box { <-0.92, -0.10, -1.06>, <-0.78, 0.12, -1.0> Brass() } box { <0.78, -0.10, -1.06>, <0.92, 0.12, -1.0> Brass() }
    union { Wire(<-0.34, 0.05, -1.0>, <-0.34, 0.04, -1.28>, <0.34, 0.04, -1.28>, <0.34, 0.05, -1.0>, 0.055, 14) Satin(srgb <0.14, 0.08, 0.05>) }
    translate <0, -0.45, 0>
}
Softbox(<-4.2, 5.4, -3.2>, <0, 1, 0>, 1.5, rgb <1.35, 1.22, 0.98>)
Softbox(<5, 3, -4>, <0, 1, 0>, 2.5, rgb <0.24, 0.27, 0.28>)
object { Skarnold(HeadPose(-2, -6, 9), 1, <0, 0>, HatWithTicket("9000")) rotate y*-16 translate <0, -0.03, 0.05> }
