#include "demo/Tunnel.h"

#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

#include <cmath>

namespace demo
{
namespace
{
const float depth = 5.0f;      // of the tunnel, in units along the view axis
const float sliceStep = 0.5f;  // between two slices
const float sliceTurn = 22.0f; // degrees from one square of a slice to the next

// The path: divided in single precision, summed in double in this order, then single again.
float PathX(float u)
{
    return float(std::cos(double(u / 5.0f)) + std::cos(double(u / 20.0f)) +
                 std::sin(double(u / 15.0f)) + std::sin(double(u / 7.0f)));
}

float PathY(float u)
{
    return float(4.0 * std::cos(double(u / 20.0f)) + std::sin(double(u / 12.0f)) +
                 std::cos(double(u / 5.0f)) + std::sin(double(u / 25.0f)));
}

// Three squares, each half the size of the one before and turned further.
void DrawSlice(float z, float pos)
{
    const float u = z + pos;
    glPushMatrix();
    glTranslatef(PathX(u), 2.0f * PathY(u), -z);
    // magenta that brightens with the distance, more opaque near the viewer
    glColor4f(z / 5.0f, 0.0f, z / 5.0f, 2.0f / (z + 1.0f));
    const float size = 10.0f / (z + 1.0f);
    DrawQuad(size);
    glRotatef(sliceTurn, 0.0f, 0.0f, 1.0f);
    DrawQuad(size * 0.5f);
    glRotatef(sliceTurn, 0.0f, 0.0f, 1.0f);
    DrawQuad(size * 0.25f);
    glPopMatrix();
}

// Where the next call's slices begin: -pos, and above 1 raised by whole slices, one at least, into
// [-1, -0.5). The remainder is exact in single precision, so this is what adding step by step
// gives.
float NextAnchor(float pos)
{
    if (!(pos > 1.0f))
        return -pos;
    const float remainder = std::fmod(pos, sliceStep);
    return remainder > 0.0f ? -(sliceStep + remainder) : -1.0f;
}
} // namespace

void DrawQuad(float size)
{
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 1.0f);
    glVertex2f(-size, -size);
    glTexCoord2f(1.0f, 1.0f);
    glVertex2f(size, -size);
    glTexCoord2f(1.0f, 0.0f);
    glVertex2f(size, size);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(-size, size);
    glEnd();
}

void Tunnel(int texture, float pos)
{
    static float tunnel_min = 0.0f; // contract: a call begins where the one before ended
    auto &renderer = vyr::tSingleton<vyr::cRenderer>::GetSingleton();
    auto &textures = vyr::tSingleton<vyr::cTextureManager>::GetSingleton();

    renderer.Reset();
    glDepthFunc(GL_ALWAYS);
    glDepthMask(GL_FALSE);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    textures.BindTexture(texture);
    glTranslatef(-PathX(pos), -2.0f * PathY(pos), 0.0f);
    textures.BindTexture(texture); // contract: once more than needed
    // contract: in single precision; where the anchor's rounding gives an eleventh slice, it is
    // drawn.
    for (float z = tunnel_min + depth; z > tunnel_min; z -= sliceStep) {
        DrawSlice(z, pos);
        if (z - sliceStep == z)
            break; // so far out a slice's step is too small to count: it would never end
    }
    tunnel_min = NextAnchor(pos);
}
} // namespace demo
