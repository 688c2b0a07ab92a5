// The armchair in the waiting room remembers somebody.
// film: size=560x440 exposure=1.25 warmth=0.35 vignette=1.2
#include "light.inc"
#include "palette.inc"
#include "duck.inc"
#include "characters.inc"
#include "set.inc"

Shot(<-1.5, 6.8, -6.2>, <0.30, 0.35, 0.42>, 30, <0.1, 0.4, -0.2>, 0.15)
Sky(rgb 0.02, rgb 0.06, rgb 0.08)
#declare Hide = texture {
    pigment { bozo turbulence 0.7 scale 1.1 color_map { [0.2 srgb <0.38, 0.15, 0.09>] [0.6 srgb <0.46, 0.24, 0.15>] [0.85 srgb <0.66, 0.39, 0.24>] } }
    normal { average normal_map { [1 crackle 0.32 scale 0.08] [0.7 wrinkles 0.6 scale 0.4] } }
    finish { ambient 0 diffuse 0.75 specular 0.35 roughness 0.04 reflection { 0.0, 0.05 } }
}

// The seat is a height over (x, z), 4.6 wide and 4.4 deep, with the print of a duck that lay on its side:
// Shape is below 0 inside the joined ellipses of body, tail, head, beak.
#declare Oval = function (x, y, A, B, C, S, P, Q) { (sqrt(pow(((x - A)*C + (y - B)*S)/P, 2) + pow(((y - B)*C - (x - A)*S)/Q, 2)) - 1)*min(P, Q) }
#declare Soft = 0.055;
#declare Shape = function (x, y) {
    -Soft*ln(exp(-Oval(x, y, 0.25, -0.35, 1, 0, 0.95, 0.60)/Soft)
           + exp(-Oval(x, y, 1.18, 0.12, 0.819, 0.574, 0.42, 0.20)/Soft)
           + exp(-Oval(x, y, -0.48, 0.62, 1, 0, 0.50, 0.48)/Soft)
           + exp(-Oval(x, y, -1.08, 0.50, 0.990, 0.139, 0.34, 0.13)/Soft))
}
#declare Crease = function { pattern { wrinkles scale 0.7 } }
#declare Seat = function (x, y) {
    0.72 - 0.022*(x*x + y*y) + 0.030*Crease(x, y, 0)
    - 0.30*(0.5 - 0.5*tanh(Shape(x, y)/0.07 + 0.35)) + 0.035*exp(-pow((Shape(x, y) - 0.14)/0.10, 2))
}
height_field {
    function 460, 440 { Seat((x - 0.5)*4.6, (0.5 - y)*4.4) }
    smooth
    translate <-0.5, 0, -0.5> scale <4.6, 1, 4.4>
    texture { Hide }
}
#macro Roll(P, Q, R)
    cylinder { P, Q, R } sphere { P, R } sphere { Q, R }
#end
union {
    Roll(<-2.75, 0.75, -2.2>, <-2.75, 0.75, 2.6>, 0.62) Roll(<2.75, 0.75, -2.2>, <2.75, 0.75, 2.6>, 0.62)
    box { <-3.3, -3, -2.2>, <-2.2, 0.7, 2.8> } box { <2.2, -3, -2.2>, <3.3, 0.7, 2.8> }
    Roll(<-2.4, 2.6, 2.7>, <2.4, 2.6, 2.7>, 0.6)
    box { <-2.6, -1, 2.2>, <2.6, 2.7, 3.3> }
    Roll(<-2.15, 0.60, -2.15>, <2.15, 0.60, -2.15>, 0.13)
    texture { Hide }
}
// Brass studs along the seams.
#local I = 0;
#while (I < 29)
    sphere { 0, 0.062 scale <1, 1, 0.6> translate <-2.5 + I*0.18, 1.30, 2.19> Brass() }
    sphere { 0, 0.062 scale <0.6, 1, 1> translate <-2.19, 0.86, -2.15 + I*0.16> Brass() }
    sphere { 0, 0.062 scale <0.6, 1, 1> translate <2.19, 0.86, -2.15 + I*0.16> Brass() }
    #local I = I + 1;
#end
object { Ticket("9000") rotate x*86 rotate y*-24 translate <1.15, 0.67, -1.6> }
Softbox(<-4.8, 3.6, 2.6>, <0, 0, 0>, 1.3, rgb <1.75, 1.30, 0.80>)
Softbox(<1.5, 6, -5>, <0, 0, 0>, 3, rgb <0.46, 0.38, 0.30>)
