// A radio, some wallpaper, the afternoon programme.
// film: exposure=1.05 warmth=0.5 fade=1.4
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<1.4, 2.2, -10.5>, <0.1, 1.55, 0>, 21.5, <-0.35, 1.75, -0.9>, 0.18)
Sky(rgb 0.05, rgb 0.15, rgb 0.15)
plane { -z, -2.6 CircleWallpaper(srgb <0.86, 0.66, 0.34>, srgb <0.74, 0.34, 0.16>, srgb <0.40, 0.20, 0.13>, 1.15) }
box { <-7, -0.3, -1.9>, <7, 0, 2.2> Wood() }
union {
    superellipsoid { <0.12, 0.12> scale <0.85, 0.55, 0.28> translate y*0.55 Wood() }
    superellipsoid { <0.12, 0.12> scale <0.78, 0.48, 0.06> translate <0, 0.55, -0.26> Satin(Cream) }
    cylinder { <-0.34, 0.52, -0.34>, <-0.34, 0.52, -0.2>, 0.36 texture { pigment { hexagon color rgb 0.02, color srgb <0.50, 0.36, 0.24>, color srgb <0.50, 0.36, 0.24> rotate x*90 scale 0.03 } finish { ambient 0 diffuse 0.8 } } }
    torus { 0.36, 0.022 rotate x*90 translate <-0.34, 0.52, -0.335> Brass() }
    cylinder { <0.42, 0.36, -0.42>, <0.42, 0.36, -0.3>, 0.15 Satin(srgb <0.10, 0.08, 0.07>) }
    box { <0.12, 0.62, -0.335>, <0.70, 0.88, -0.3> Glow(rgb <1, 0.66, 0.28>, 1.1) }
    box { <0.44, 0.62, -0.345>, <0.46, 0.88, -0.33> Glow(BrickRose, 1.2) }
    cylinder { <0.72, 1.05, 0.1>, <1.25, 2.6, 0.2>, 0.018 Steel() } sphere { <1.25, 2.6, 0.2>, 0.035 Steel() }
    rotate y*-14
    translate <1.35, 0, -0.1>
}
Softbox(<-4.5, 4.5, -4>, <0, 1.2, 0>, 2.2, rgb <1.28, 1.0, 0.66>)
Softbox(<5, 3, -3>, <0, 1.2, 0>, 2.5, rgb <0.16, 0.14, 0.12>)
object { Vemby(HeadPose(-6, 3, 12), 0.36, <0.3, 0.1>) rotate y*18 translate <-0.55, 0, -0.1> }
