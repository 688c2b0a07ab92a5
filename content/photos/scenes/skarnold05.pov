// The sign of the seventeen, cut out of its picture.
// film: size=400x680 shape=cutout tilt=-5 exposure=1.1 warmth=0.3 vignette=0 grain=0.8
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-1.4, 2.8, -13>, <0.02, 3.35, 0>, 9.0, <0, 4, -0.1>, 0.02)
Sky(rgb 0.01, rgb <0.20, 0.12, 0.09>, rgb <0.03, 0.05, 0.07>)
Softbox(<-6, 6, -6>, <0, 3, 0>, 3, rgb <1.15, 0.88, 0.62>)
Softbox(<5, 4, -3>, <0, 3, 0>, 2.5, rgb <0.30, 0.40, 0.46>)
Softbox(<4, 6, 3>, <0, 3.6, 0>, 2, rgb <0.90, 0.50, 0.24>)
object { BusStop("17") rotate y*-10 }
