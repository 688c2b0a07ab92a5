// Rain. The hat was a good idea.
// film: exposure=1.2 warmth=0.1 bloom=1.6
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<1.9, 1.5, -10>, <0.02, 1.50, 0>, 21, <0.15, 1.72, -0.9>, 0.24)
Sky(rgb 0.003, rgb <0.05, 0.08, 0.10>, rgb <0.01, 0.02, 0.03>)
plane { y, 0 WetAsphalt(0.5, <0.5, 0, 1.1>) }
box { <-40, 0, 26>, <40, 12, 27> Matt(rgb <0.01, 0.022, 0.03>) }
Bokeh(52, 40, <-9, 0.5, 9>, <6, 5.6, 22>, 0.22, 6)
Rain(6, 240, <-4, -0.2, 0.9>, <4, 5.5, 7>, 0.16, rgb <0.9, 0.8, 0.65>)
Softbox(<3.5, 5, 3.5>, <0, 1.5, 0>, 1.6, rgb <1.9, 1.15, 0.50>)
Softbox(<-4.5, 4, -4.5>, <0, 1.2, 0>, 2.4, rgb <0.62, 0.72, 0.80>)
object { Skarnold(HeadPose(4, -3, -4), 0.45, <0.1, -0.2>, FeltHat) rotate y*-8 }
