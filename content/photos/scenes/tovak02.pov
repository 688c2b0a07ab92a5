// Counting paving stones, with chalk for the fives.
// film: shape=torn tilt=-13 scale=0.88 exposure=1.1 warmth=0.15 vignette=1.2
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<2.6, 8.2, -7.2>, <0.15, 0.55, -0.45>, 21.5, <0, 1.6, -0.8>, 0.22)
Sky(rgb 0.1, rgb <0.75, 0.78, 0.80>, rgb <0.55, 0.66, 0.80>)
plane { y, 0 Paving(0.92) rotate y*-14 }
Softbox(<-7, 6.5, -1>, <0, 0.8, 0>, 2.2, rgb <1.25, 1.02, 0.74>)

#macro Tally(Place, Count)
    union {
        #local I = 0;
        #while (I < Count)
            #if (mod(I, 5) < 4)
                superellipsoid { <0.4, 0.4> scale <0.016, 0.006, 0.13> rotate y*(3 - I*1.7) translate <floor(I/5)*0.46 + mod(I, 5)*0.085, 0, 0> }
            #else
                superellipsoid { <0.4, 0.4> scale <0.21, 0.006, 0.016> rotate y*-24 translate <floor(I/5)*0.46 + 0.125, 0, 0> }
            #end
            #local I = I + 1;
        #end
        texture { pigment { bozo scale 0.02 color_map { [0.3 rgbt <1, 1, 1, 0.6>] [0.6 srgb <0.98, 0.97, 0.92>] } } finish { ambient 0 diffuse 0.95 } }
        no_shadow
        rotate y*-14
        translate Place
    }
#end
Tally(<-1.55, 0.003, -1.38>, 10)
Tally(<-0.62, 0.003, -1.62>, 5)
Tally(<0.92, 0.003, 1.05>, 9)
cylinder { <0.95, 0.06, -1.35>, <1.32, 0.06, -1.12>, 0.06 Matt(srgb <0.97, 0.96, 0.90>) }

object { Tovak(HeadPose(6, -14, 0), 0.15, <0.1, -0.6>) rotate y*-12 }
