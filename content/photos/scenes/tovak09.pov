// At the ticket counter, seen from the clerk's side. The clock has lost a hand.
// film: shape=round exposure=1.1 warmth=0.35
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<0.4, 2.2, -10>, <0, 1.68, 0>, 22.5, <0, 1.75, -0.4>, 0.20)
Sky(rgb 0.04, rgb 0.12, rgb 0.15)
plane { -z, -8 Plaster(srgb <0.20, 0.40, 0.42>) }
box { <-12, -2, 7.7>, <12, 0.9, 8> Planks(0.6) }
object { WallClock(5, -17, 1.12) translate <-1.15, 3.28, 7.95> }
union { cone { <2.3, 3.4, 5>, 0.65, <2.3, 4.0, 5>, 0.12 open } cylinder { <2.3, 4, 5>, <2.3, 9, 5>, 0.03 } Satin(srgb <0.60, 0.22, 0.14>) }
sphere { <2.3, 3.42, 5>, 0.36 Glow(LampAmber, 4) no_shadow no_radiosity }
plane { y, -2 Matt(srgb <0.2, 0.15, 0.12>) }
// The counter, its glass with a round mouth, and the brass slot.
box { <-6, -2, -1.9>, <6, 0.12, -0.9> Wood() }
box { <-6, 0.12, -2.05>, <6, 0.24, -0.75> Wood() }
difference {
    box { <-6, 0.24, -1.36>, <6, 6, -1.33> }
    cylinder { <0, 1.55, -2>, <0, 1.55, -1>, 1.22 }
    box { <-0.8, 0, -2>, <0.8, 0.5, -1> }
    Pane() no_shadow
}
torus { 1.24, 0.07 rotate x*90 translate <0, 1.55, -1.345> Brass() }
union { box { <-2.05, 0.24, -1.45>, <-1.90, 6, -1.25> } box { <1.90, 0.24, -1.45>, <2.05, 6, -1.25> } Wood() }
object { Ticket("9000") scale 1.1 rotate x*76 rotate y*-12 translate <1.12, 0.25, -2.0> }
Softbox(<-3.5, 5.5, -4.5>, <0, 1.2, 0>, 2.4, rgb <1.10, 0.88, 0.60>)
Softbox(<4, 5, 5>, <0, 1.8, 0>, 3, rgb <0.50, 0.50, 0.42>)
object { Tovak(HeadPose(4, 2, 0), 0.05, <0, 0.1>) rotate y*4 translate <-0.05, 0.1, 0.35> }
box { <-3, -2, -0.85>, <3, 0.1, 2.5> Satin(srgb <0.3, 0.18, 0.12>) }
