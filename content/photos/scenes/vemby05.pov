// On the wall behind the stop, a northerly in the scarf.
// film: tilt=-12 scale=0.86 exposure=0.9 warmth=0.2
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<0, 1.7, -11>, <0.05, 1.30, 0>, 19.5, <-0.4, 1.75, -0.4>, 0.2)
Dusk(0.8)
sphere { 0, 90 hollow
    texture { pigment { bozo turbulence 0.9 omega 0.55 scale <26, 4.5, 26> translate 7
        color_map { [0.42 rgbt <1, 1, 1, 1>] [0.60 rgbt <1.0, 0.50, 0.38, 0.3>] [0.8 rgbt <0.42, 0.30, 0.42, 0.15>] } } finish { ambient 0 diffuse 0 emission 0.85 } } no_shadow no_radiosity }
box { <-20, -4, -0.95>, <20, -0.06, 1.1> BrickWall(srgb <0.50, 0.22, 0.16>) }
box { <-20, -0.12, -1.05>, <20, 0.0, 1.2> Plaster(srgb <0.55, 0.52, 0.48>) }
Softbox(<-6, 3.2, -3.5>, <0, 1.2, 0>, 2.6, rgb <1.15, 0.72, 0.46>)
Softbox(<4, 4, -6>, <0, 1.2, 0>, 3, rgb <0.26, 0.33, 0.44>)
// The scarf's long end, in the wind behind the neck.
#local P0 = <0.30, 1.15, -0.62>; #local P1 = <1.25, 1.95, -0.72>; #local P2 = <1.10, 0.45, -0.85>; #local P3 = <1.98, 1.50, -0.74>;
union {
    blob {
        threshold 0.5
        #local I = 0;
        #while (I <= 34)
            sphere { 0, 1.75, 1 scale <0.065, 0.125 + 0.03*I/34, 0.035> translate BezierPoint(P0, P1, P2, P3, I/34) }
            #local I = I + 1;
        #end
    }
    #local I = -3;
    #while (I <= 3)
        cylinder { P3 + <0, I*0.055, 0>, P3 + <0.20, I*0.066 + 0.05, 0>, 0.016 }
        #local I = I + 1;
    #end
    Wool(pigment { gradient x color_map { [0.5 BrickRose] [0.5 Cream] } scale 0.36 })
}
union {
    Duck(VembySkin, HeadPose(8, 6, 4), 0.45, 17, <0, 0.1>, Headphones)
    torus { 0.46, 0.135 scale <1, 0.85, 0.96> rotate x*-9 translate <0, 1.10, -0.31> Wool(pigment { radial frequency 9 color_map { [0.5 Cream] [0.5 BrickRose] } translate <0, 0, -0.31> }) }
    torus { 0.42, 0.10 scale <1, 0.9, 0.96> rotate <-4, 0, 5> translate <0, 1.21, -0.32> Wool(pigment { radial frequency 9 color_map { [0.5 BrickRose] [0.5 Cream] } translate <0, 0, -0.31> }) }
    rotate y*66
}
