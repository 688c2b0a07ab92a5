// Post effect: the colours come apart.
//
// See: twice a second the red and the blue of the picture jump away from each other and close
// again. Change: how far (pixels of the window), the direction, how fast it closes.
//
// Red moves by minus half of the offset, blue by plus half, green stays. The effect draws a texture
// as Post_Draw does, so a render target must be turned over before: a plain copy does that.

#include "examples/Example.h"
#include "examples/Scene.h"

#include <epoxy/gl.h>

#include <cmath>

namespace
{
int upright;
unsigned int framebuffer;

void Load()
{
    LoadScene();
    const int width = Renderer().GetWidth(), height = Renderer().GetHeight();
    upright = Textures().CreateTexture("upright", width, height, true, false);
    framebuffer = Renderer().CreateFBO(static_cast<unsigned int>(upright), 0);
}

void Draw(double seconds)
{
    const int scene = DrawScene(seconds);
    glDisable(GL_BLEND); // a picture that is whole by itself hides what was there before
    Renderer().BeginUpdateFBO(framebuffer);
    Renderer().Post_Draw(scene);
    Renderer().EndUpdateFBO();

    const double sinceHit = std::fmod(seconds, 0.5);
    const float offset = float(60.0 * std::exp(-6.0 * sinceHit));
    Renderer().Post_RGBSplit(upright, {offset, 0.3f * offset});
}
} // namespace

const cExample kExample = {"Post effect: RGB split", Load, Draw, WindowSeconds};
