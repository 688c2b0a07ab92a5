// Tovak at the stop of the seventeen, at dusk. He has been here since noon.
// film: exposure=1.05 warmth=0.3
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-1.2, 1.25, -11.5>, <0.33, 2.02, 0>, 20.5, <-0.45, 1.7, -1>, 0.20)
Dusk(0.9)
plane { y, 0 Paving(1.15) rotate y*12 }
House(5, <-12, 0, 21>, <-3.2, 5.2, 21>, NightTeal*0.9)
House(8, <-3.2, 0, 23>, <1.2, 3.4, 23>, NightTeal*0.6)
House(2, <1.2, 0, 20>, <10, 6.6, 20>, NightTeal*0.8)
Bokeh(3, 16, <-9, 0.5, 14>, <9, 1.6, 19>, 0.11, 8)
Softbox(<-7, 5, -5>, <0, 1, 0>, 4, rgb <0.90, 0.62, 0.42>)
Softbox(<6, 4, 5>, <0, 1.5, 0>, 2.5, rgb <0.70, 0.34, 0.18>)

object { Tovak(HeadPose(-6, 4, 0), 0.08, <0.1, 0.15>) rotate y*16 translate <-0.45, 0, 0> }
object { BusStop("17") rotate y*-6 scale 0.86 translate <1.36, 0, 0.9> }
