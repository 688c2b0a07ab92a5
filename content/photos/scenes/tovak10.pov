// Three of us and a lamppost, and nobody looks for the bus: already home.
// film: size=1080x500 exposure=1.4 warmth=0.4 bloom=1.7 vignette=1.1
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-1.4, 1.6, -19>, <0.25, 1.80, 0>, 29.5, <0, 1.7, -1>, 0.2)
sky_sphere { pigment { gradient y color_map { [0 rgb 0.006] [0.5 rgb <0.34, 0.15, 0.08>] [0.545 rgb <0.13, 0.075, 0.085>] [0.60 rgb <0.030, 0.055, 0.080>] [1 rgb <0.008, 0.020, 0.032>] } scale 2 translate -y } }
plane { y, 0 WetAsphalt(0.5, <2.4, 0, 1.4>) }
House(5, <-17, 0, 22>, <-9.0, 4.6, 22>, NightTeal*0.55)
House(12, <-8.4, 0, 24>, <-2.6, 3.4, 24>, NightTeal*0.45)
House(8, <-2.0, 0, 23>, <4.4, 5.4, 23>, NightTeal*0.5)
House(2, <5.0, 0, 21>, <10.5, 3.6, 21>, NightTeal*0.55)
House(31, <10.9, 0, 22>, <18, 5.6, 22>, NightTeal*0.5)
Bokeh(17, 34, <-13, 0.5, 13>, <13, 1.7, 20>, 0.13, 7)
object { LampPost(LampAmber, 9) scale 0.76 rotate y*-24 translate <0.78, 0, 1.05> }
#declare Head = vrotate(LampHead*0.76, y*-24) + <0.78, 0, 1.05>;
Bulb(Head - y*0.25, 0.6, rgb <3.0, 1.70, 0.66>, 2.6)
Softbox(<-6, 4.5, -7>, <0, 1.2, 0>, 3.4, rgb <0.42, 0.36, 0.32>)
Softbox(<-5, 4.0, 5>, <-1, 1.5, 0>, 2.4, rgb <0.70, 0.36, 0.18>)
Softbox(<7, 4.0, 5>, <1, 1.5, 0>, 2.4, rgb <0.20, 0.34, 0.42>)
cone { Head, 0.28, <Head.x, 0, Head.z>, 3.1 open hollow
    texture { pigment { gradient y color_map { [0 rgbt <1, 1, 1, 1>] [1 rgbt <1, 1, 1, 0.965>] } scale 3.5 } finish { ambient 0 diffuse 0 emission rgb <1.0, 0.6, 0.22> } }
    no_shadow no_reflection clipped_by { plane { -z, 0.1 } } }

object { Vemby(HeadPose(10, 8, 14), 0.92, <0, 0.2>) rotate y*-6 translate <-1.62, 0, -0.25> }
object { Tovak(HeadPose(-4, 7, 4), 0.12, <0.15, 0.35>) rotate y*6 scale 1.02 translate <0.05, 0, -0.62> }
object { Skarnold(HeadPose(-16, 6, -10), 0.42, <0.3, 0.3>, HatWithTicket("9000")) rotate y*10 translate <1.72, 0, -0.30> }
