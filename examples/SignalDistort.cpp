// Post effect: a bad connection.
//
// See: the rows of the picture swing out sideways in waves; now and then the picture rolls over.
// Change: the amount (squared: 2 moves four times as far as 1, and -2 as far as 2), how time runs
// (the wave's strength is the sine of a thousandth of it), when it rolls (1 is a whole picture).
//
// Every row of the window is one quad over the whole window, cut out with the scissors. The effect
// shows a render target upright.

#include "examples/Example.h"
#include "examples/Scene.h"

#include <epoxy/gl.h>

#include <cmath>

namespace
{
void Load() { LoadScene(); }

void Draw(double seconds)
{
    const int scene = DrawScene(seconds);
    const float amount = float(8.0 + 5.0 * std::sin(0.9 * seconds));
    const float time = float(800.0 + 400.0 * seconds);
    const double phase = std::fmod(seconds, 4.0); // the last half second of four rolls
    const float roll = phase < 3.5 ? 0.0f : float(2.0 * (phase - 3.5));

    glDisable(GL_BLEND); // a picture that is whole by itself hides what was there before
    Renderer().Post_SignalDistort(scene, {amount, roll}, time);
}
} // namespace

const cExample kExample = {"Post effect: signal distortion", Load, Draw, WindowSeconds};
