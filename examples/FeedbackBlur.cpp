// Post effect: a glow that streams out of the middle.
//
// See: rays grow out of the picture and shrink back.
// Change: the zoom (1 is none; each of eight passes squares it) and the weight (how much of each
// magnified layer is laid over; below 1 the later passes count for less and less).
//
// The layers lie upside down on one another from pass to pass: that is the ghost of the picture.
//
// The effect adds its result to what is in the window and leaves that blend function behind, with
// white as the current colour. It starts from the current colour, so set that before. It shows a
// render target upright.

#include "examples/Example.h"
#include "examples/Scene.h"

#include <epoxy/gl.h>

#include <cmath>

namespace
{
void Load()
{
    LoadScene();
    Renderer().InitPostProcessing(); // the two render targets that the blur works in
}

void Draw(double seconds)
{
    const int scene = DrawScene(seconds);
    const float zoom = float(1.06 + 0.05 * std::sin(1.5 * seconds));
    const float weight = 0.8f;

    glColor4f(1, 1, 1, 1);
    Renderer().Post_FeedbackBlur(scene, zoom, weight);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA); // the next drawer expects the usual one
}
} // namespace

const cExample kExample = {"Post effect: feedback blur", Load, Draw, WindowSeconds};
