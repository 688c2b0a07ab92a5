// A window and a sprite.
//
// See: a picture sways in the middle of the window and breathes.
// Change: the picture's file, the position, how far it turns, its colour (red, green, blue, alpha).
//
// Positions are design units of a screen of 1280 by 720, origin top left, y down. The position is
// the sprite's top-left corner; it turns and scales about its own middle.

#include "examples/Example.h"

#include <epoxy/gl.h>

#include <cmath>

namespace
{
int picture;

void Load() { picture = LoadPicture("data/zemlogo.png"); }

void Draw(double seconds)
{
    const vyr::cVector2 size = Textures().GetTexture(picture).mSize;
    const vyr::cVector2 middle((1280 - size.x) / 2, (720 - size.y) / 2);
    const float zoom = float(1.0 + 0.2 * std::sin(2.0 * seconds));
    const float degrees = float(12.0 * std::sin(seconds));

    glColor4f(1, 1, 1, 1);
    Renderer().Post_DrawSprite(picture, middle, {zoom, zoom}, degrees);
}
} // namespace

const cExample kExample = {"A sprite", Load, Draw, WindowSeconds};
