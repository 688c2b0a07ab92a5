#include "demo/Frame.h"

#include "base/Truncate.h"
#include "demo/Tunnel.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

#include <array>
#include <cmath>

namespace demo
{
namespace
{
using vyr::cVector2;
using vyr::cVector3;

/// What every layer draws from.
struct cFrame
{
    const cLoadedShow &mShow;
    const cAssets &mAssets;
    vyr::cRenderer &mRenderer;
    double mRow;
    double mSeconds;

    float Sample(eTrack track) const { return sync_get_val(mShow.mTracks[size_t(track)], mRow); }
};

// contract: negative is off, but values above -1 are on: -0.4 is picture 0.
int ToIndex(float value) { return vyr::TruncateToInt(double(value)); }

// Tracks stay below the end of a table. What lies past it is no texture, which the texture manager
// stops at.
template <size_t Count>
int TextureAt(const std::array<int, Count> &table, int index)
{
    const int noTexture = -1;
    return size_t(index) < Count ? table[size_t(index)] : noTexture;
}

cVector2 TextureSize(int texture)
{
    return vyr::tSingleton<vyr::cTextureManager>::GetSingleton().GetTexture(texture).mSize;
}

void SetUniform(unsigned int program, const char *name, float value)
{
    glUniform1f(glGetUniformLocation(program, name), value);
}

void SetUniform(unsigned int program, const char *name, float x, float y)
{
    glUniform2f(glGetUniformLocation(program, name), x, y);
}

void DrawWholeScreen(const cFrame &frame)
{
    frame.mRenderer.DrawFullscreenQuad(cVector3(0, 0, 0), cVector2(0, 1), cVector2(1, 0));
}

void FillScreen(const cFrame &frame, float brightness, float alpha)
{
    glColor4f(brightness, brightness, brightness, alpha);
    glDisable(GL_TEXTURE_2D);
    DrawWholeScreen(frame);
}

// The flare has no layer of its own: the plasma's shader draws it.
void DrawPlasma(const cFrame &frame)
{
    const float alpha = frame.Sample(FADE_PLASMA);
    if (!(alpha > 0.0f))
        return;
    const float flareX = frame.Sample(FLARE_X);
    const float flareY = frame.Sample(FLARE_Y);
    const float flareSize = frame.Sample(FLARE_SIZE);
    const unsigned int program = frame.mAssets.mPlasmaProgram;
    glUseProgram(program);
    SetUniform(program, "time", float(frame.mSeconds));
    SetUniform(program, "alpha", alpha);
    // of the window, not of the design
    SetUniform(program, "resolution", float(frame.mRenderer.GetWidth()),
               float(frame.mRenderer.GetHeight()));
    SetUniform(program, "flarepos", flareX, flareY);
    SetUniform(program, "flaresize", flareSize);
    DrawWholeScreen(frame);
    glUseProgram(0);
}

// contract: any index draws the one texture there is.
void DrawTunnel(const cFrame &frame)
{
    const float texture = frame.Sample(TUNNEL_TEXTURE);
    const float position = frame.Sample(TUNNEL_POS);
    if (ToIndex(texture) >= 0)
        Tunnel(frame.mAssets.mTunnelTexture, position);
}

void DrawLeftPhoto(const cFrame &frame)
{
    const int index = ToIndex(frame.Sample(IMAGE_LEFT));
    if (index < 0)
        return;
    glColor4f(1, 1, 1, 1);
    const double wobble = std::sin(double(0.7f) * frame.mSeconds) * 7.0 + 5.0;
    frame.mRenderer.Post_DrawSprite(TextureAt(frame.mAssets.mPhotos, index), cVector2(150, 100),
                                    cVector2(1, 1), float(wobble));
}

void DrawRightPhoto(const cFrame &frame)
{
    const int index = ToIndex(frame.Sample(IMAGE_RIGHT));
    if (index < 0)
        return;
    glColor4f(1, 1, 1, 1);
    const int photo = TextureAt(frame.mAssets.mPhotos, index);
    const cVector2 position(kDesignWidth - TextureSize(photo).x + -100.0f, 110);
    const double wobble = std::cos(frame.mSeconds) * -7.0 + 5.0;
    frame.mRenderer.Post_DrawSprite(photo, position, cVector2(1, 1), float(wobble));
}

void DrawCenterPhoto(const cFrame &frame)
{
    const float number = frame.Sample(IMAGE_CENTER);
    const float alpha = frame.Sample(IMAGE_CENTER_ALPHA);
    const int index = ToIndex(number);
    if (index < 0)
        return;
    glColor4f(1, 1, 1, alpha);
    const int photo = TextureAt(frame.mAssets.mPhotos, index);
    const cVector2 size = TextureSize(photo);
    const cVector2 position((kDesignWidth - size.x) * 0.5f, (kDesignHeight - size.y) * 0.5f);
    const double t = frame.mSeconds;
    double swing = std::sin(0.25 * t) + std::cos(t);
    swing = std::sin(-2.0 * t) + swing;
    const float zoom = float(std::cos(t) * 0.5 + 1.0);
    frame.mRenderer.Post_DrawSprite(photo, position, cVector2(zoom, zoom), float(swing * 25.0));
}

void DrawLyric(const cFrame &frame)
{
    const float number = frame.Sample(LYRICS_NUM);
    const float alpha = frame.Sample(LYRICS_FADE);
    const float x = frame.Sample(LYRICS_X);
    const float y = frame.Sample(LYRICS_Y);
    const int index = ToIndex(number);
    if (index < 0)
        return;
    glColor4f(1, 1, 1, alpha);
    frame.mRenderer.Post_DrawSprite(TextureAt(frame.mAssets.mLyrics, index), cVector2(x, y),
                                    cVector2(1, 1), 0);
}

// The track stays at -1, 0 or 1: a larger index hands on a null object, at which the renderer
// stops.
void DrawObject(const cFrame &frame)
{
    const int index = ToIndex(frame.Sample(OBJECT_NUM));
    if (index < 0)
        return;
    vyr::c3DObject::cRenderObject *object = index == 1   ? frame.mAssets.mObject2
                                            : index == 0 ? frame.mAssets.mObject1
                                                         : nullptr;
    const float x = frame.Sample(OBJECT_X);
    const float y = frame.Sample(OBJECT_Y);
    const float z = frame.Sample(OBJECT_Z);
    glLoadIdentity();
    glTranslatef(x, y, z);
    frame.mRenderer.RenderObject(object, vyr::cRenderer::RENDERMODE_TEXTURED, -1);
}

void DrawNoise(const cFrame &frame)
{
    const float alpha = frame.Sample(FADE_FG_NOISE);
    if (!(alpha > 0.0f))
        return;
    const unsigned int program = frame.mAssets.mNoiseProgram;
    glUseProgram(program);
    SetUniform(program, "time", float(frame.mSeconds));
    SetUniform(program, "alpha", alpha);
    DrawWholeScreen(frame);
    glUseProgram(0);
}

void DrawLogo(const cFrame &frame)
{
    const float alpha = frame.Sample(IMAGE_ZEMLOGO);
    if (!(alpha > 0.0f))
        return;
    glColor4f(1, 1, 1, alpha);
    const cVector2 size = TextureSize(frame.mAssets.mLogo);
    const cVector2 position((kDesignWidth - size.x) * 0.5f, (kDesignHeight - size.y) * 0.5f);
    frame.mRenderer.Post_DrawSprite(frame.mAssets.mLogo, position, cVector2(1, 1), 0);
}

// contract: its track calls it a background, but it flashes over everything drawn so far.
void DrawWhiteFade(const cFrame &frame) { FillScreen(frame, 1.0f, frame.Sample(FADE_BG_WHITE)); }

void DrawVignette(const cFrame &frame)
{
    glColor4f(1, 1, 1, 1);
    const int vignette = frame.mAssets.mVignette;
    const cVector2 position((kDesignWidth - TextureSize(vignette).x) * 0.5f, 0);
    vyr::tSingleton<vyr::cTextureManager>::GetSingleton().BindTexture(vignette);
    frame.mRenderer.Post_DrawSprite(vignette, position, cVector2(1, 1), 0);
}

void DrawBlackFade(const cFrame &frame) { FillScreen(frame, 0.0f, frame.Sample(FADE_FG_BLACK)); }
} // namespace

void DrawFrame(const cLoadedShow &show, double row, double seconds)
{
    auto &renderer = vyr::tSingleton<vyr::cRenderer>::GetSingleton();
    const cFrame frame{show, show.mAssets, renderer, row, seconds};

    renderer.BeginScene();
    renderer.Clear(vyr::cColor(0, 0, 0, 1));
    DrawPlasma(frame);
    DrawTunnel(frame);
    DrawLeftPhoto(frame);
    DrawRightPhoto(frame);
    DrawCenterPhoto(frame);
    DrawLyric(frame);
    DrawObject(frame);
    DrawNoise(frame);
    DrawLogo(frame);
    DrawWhiteFade(frame);
    DrawVignette(frame);
    DrawBlackFade(frame);
    renderer.EndScene();
}
} // namespace demo
