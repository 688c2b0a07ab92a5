// A queue in an empty hall. The window is closed; nobody minds. One hums.
// film: size=980x520 exposure=1.1 warmth=0.3 vignette=1.1
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<6.4, 3.0, -17.5>, <0.55, 2.75, 0.6>, 45.5, <1.9, 1.7, -0.6>, 0.12)
Sky(rgb 0.05, rgb <0.16, 0.2, 0.22>, rgb <0.2, 0.26, 0.3>)
plane { y, 0 PolishedFloor(pigment { checker color srgb <0.26, 0.36, 0.35>, color srgb <0.72, 0.66, 0.54> scale 1.25 }) }
plane { -z, -6 Plaster(srgb <0.24, 0.46, 0.45>) }
box { <-30, 0, 5.6>, <30, 1.5, 6> Planks(0.55) }
box { <-30, 1.5, 5.5>, <30, 1.62, 6> Wood() }
// The counter at the head of the queue, its blind down.
union {
    box { <-9.2, 0, -2.2>, <-7.4, 1.75, 4.2> Planks(0.5) }
    box { <-9.4, 1.75, -2.4>, <-7.2, 1.92, 4.3> Wood() }
    box { <-8.2, 1.92, -2.2>, <-8.0, 5.2, 4.2> Satin(srgb <0.90, 0.84, 0.68>) }
}
object { Label("BACK", 0.52, 0.03) rotate y*-90 translate <-7.97, 3.75, 2.2> Matt(BrickRose) }
object { Label("SOON", 0.52, 0.03) rotate y*-90 translate <-7.97, 2.95, 2.2> Matt(BrickRose) }
object { WallClock(5, 17, 0.95) translate <-3.6, 4.05, 5.95> }
// High windows on the wall throw their shapes on it.
#local I = 0;
#while (I < 4)
    box { <1.4 + I*3.1, 3.0, 5.9>, <3.5 + I*3.1, 6.5, 6> texture { pigment { gradient y color_map { [0 rgb <1.0, 0.60, 0.28>*0.30] [1 rgb <1.0, 0.78, 0.50>*0.62] } scale 3.6 translate y*3 } finish { ambient 0 diffuse 0 emission 1 } } no_radiosity }
    box { <2.41 + I*3.1, 3.0, 5.86>, <2.49 + I*3.1, 6.5, 5.95> Satin(srgb <0.2, 0.13, 0.1>) }
    box { <1.4 + I*3.1, 4.3, 5.86>, <3.5 + I*3.1, 4.38, 5.95> Satin(srgb <0.2, 0.13, 0.1>) }
    #local I = I + 1;
#end
Softbox(<-5, 7.5, -6>, <0, 1, 0>, 3.4, rgb <1.10, 0.95, 0.72>)
Softbox(<9, 4, -7>, <2, 1, 0>, 3, rgb <0.34, 0.34, 0.34>)
Softbox(<7, 6, 4.5>, <2, 1, 0>, 2.5, rgb <0.60, 0.42, 0.24>)
#macro Waits(Who, X, Turn) object { Who rotate y*(90 + Turn) translate <X, 0, 0.35*sin(X*2.1)> } #end
Waits(Duck(DuckSkin, HeadPose(0, 6, 0), 0.1, 0, <0, 0.2>, Bare), -6.1, 0)
Waits(Duck(ShirtSkin, HeadPose(0, 3, 4), 0.3, 0, <0, 0>, Beret), -4.0, -3)
Waits(Duck(Vinyl(srgb <225, 96, 88>/255), HeadPose(-10, 0, 0), 0.3, 0, <0, 0>, Bare), -1.95, 4)
Waits(Tovak(HeadPose(-14, 3, 0), 0.1, <0.2, 0.2>), 0.1, -6)
Waits(Duck(Vinyl(srgb <236, 226, 205>/255), HeadPose(6, -10, 0), 0.95, 0, <0, 0>, Bare), 2.15, 2)
Waits(Vemby(HeadPose(-46, 6, 8), 0.18, <-0.2, 0.1>), 4.2, -8)
Waits(Skarnold(HeadPose(-10, -2, -4), 0.46, <0, -0.1>, HatWithTicket("9000")), 6.35, -4)
