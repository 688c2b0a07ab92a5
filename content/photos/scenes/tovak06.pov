// Under the lamppost at night. Three of us and a lamppost; the other two are late.
// film: tilt=-14 scale=0.86 exposure=1.2 warmth=0.35 bloom=2
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-3.0, 1.6, -12.5>, <0.42, 2.05, 0>, 21.5, <-0.2, 1.7, -1>, 0.16)
Sky(rgb 0.002, rgb <0.012, 0.035, 0.048>, rgb <0.003, 0.008, 0.014>)
plane { y, 0 WetAsphalt(0.34, <3.1, 0, 1.4>) }
plane { -z, -5.5 BrickWall(srgb <0.30, 0.16, 0.14>) }
object { LampPost(LampAmber, 9) scale 0.82 rotate y*8 translate <1.25, 0, 0.7> }
Bulb(<1.1, 3.70, -0.1>, 0.5, rgb <1.9, 1.05, 0.38>, 2.6)
Softbox(<-6, 4, -6>, <0, 1, 0>, 3, rgb <0.17, 0.19, 0.19>)
cone { <1.1, 3.72, -0.05>, 0.28, <1.1, 0, -0.05>, 2.3 open hollow
    texture { pigment { gradient y color_map { [0 rgbt <1, 1, 1, 1>] [1 rgbt <1, 1, 1, 0.955>] } scale 3.7 } finish { ambient 0 diffuse 0 emission rgb <1.0, 0.6, 0.22> } } no_shadow no_reflection clipped_by { plane { -z, -0.35 } } }

object { Tovak(HeadPose(-6, 10, 0), 0.05, <0.3, 0.5>) rotate y*10 translate <-0.25, 0, -0.45> }
