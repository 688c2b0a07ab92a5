#include "examples/Scene.h"

#include "examples/Example.h"

#include <epoxy/gl.h>

namespace
{
int dial, logo, target;
unsigned int framebuffer;

vyr::cVector2 Centered(int texture)
{
    const vyr::cVector2 size = Textures().GetTexture(texture).mSize;
    return {(1280 - size.x) / 2, (720 - size.y) / 2};
}
} // namespace

void LoadScene()
{
    dial = LoadPicture("data/tex9.png");
    logo = LoadPicture("data/zemlogo.png");
    const int width = Renderer().GetWidth(), height = Renderer().GetHeight();
    target = Textures().CreateTexture("scene", width, height, true, false);
    framebuffer = Renderer().CreateFBO(static_cast<unsigned int>(target), 0);
}

int DrawScene(double seconds)
{
    Renderer().BeginUpdateFBO(framebuffer);
    Renderer().Clear(vyr::cColor(0.055f, 0.165f, 0.2f, 1));
    glColor4f(1, 1, 1, 1);
    Renderer().Post_DrawSprite(dial, Centered(dial), {1.6f, 1.6f}, float(-6 * seconds));
    Renderer().Post_DrawSprite(logo, Centered(logo), {1, 1}, 0);
    Renderer().EndUpdateFBO();
    return target;
}
