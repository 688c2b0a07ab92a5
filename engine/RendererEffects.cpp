#include "engine/Renderer.h"

#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

#include <cmath>

namespace vyr
{
namespace
{
const int blurPasses = 8;

void BindTexture(int texture) { tSingleton<cTextureManager>::GetSingleton().BindTexture(texture); }

// How far a row of the window moves sideways, in pixels; `s` is the row plus a tenth of the time.
// contract: the amount enters squared: the wave is gentle for small amounts, and the same for -a as
// for a.
float RowShift(double s, float amount, double c)
{
    return float(200.0 * std::sin(0.01 * std::cos(0.04 * s)) * std::sin(0.02 * s) *
                 std::sin(0.01 * s) * std::cos(0.02 * s) * std::cos(0.01 * s) * double(amount) *
                 double(amount) * std::sin(c));
}
} // namespace

void cRenderer::Post_RGBSplit(int texture, cVector2 offset)
{
    glEnable(GL_TEXTURE_2D);
    offset *= 0.5f;
    BindTexture(texture);
    glColorMask(GL_TRUE, GL_FALSE, GL_FALSE, GL_TRUE);
    DrawFullscreenQuad({-offset.x, -offset.y, 0.0f}, {0.0f, 1.0f}, {1.0f, 0.0f});
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
    DrawFullscreenQuad({0.0f, 0.0f, 0.0f}, {0.0f, 1.0f}, {1.0f, 0.0f});
    glColorMask(GL_FALSE, GL_FALSE, GL_TRUE, GL_TRUE);
    DrawFullscreenQuad({offset.x, offset.y, 0.0f}, {0.0f, 1.0f}, {1.0f, 0.0f});
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

void cRenderer::Post_FeedbackBlur(int texture, float zoom, float weight)
{
    glDisable(GL_DEPTH_TEST);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDisable(GL_BLEND);
    BeginUpdateFBO(mZoomBlurFBO1);
    Post_Draw(texture);
    EndUpdateFBO();

    for (int i = 0; i < blurPasses; i++) {
        BlurPass(i, zoom, weight);
        zoom *= zoom;
        weight *= weight;
    }

    // contract: added onto the window, and left so: the next drawer sets its own blend function.
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    Post_Draw(int(mZoomBlurTexture1));
    glEnable(GL_DEPTH_TEST);
}

// One step of the blur, from one target into the other. The magnified layer is upside down compared
// with the plain copy under it, so every other pass sees the two the other way round: the blur
// smears both ways from the centre because of it.
void cRenderer::BlurPass(int pass, float zoom, float weight)
{
    const bool isEven = pass % 2 == 0;
    const int source = int(isEven ? mZoomBlurTexture1 : mZoomBlurTexture2);
    BeginUpdateFBO(isEven ? mZoomBlurFBO2 : mZoomBlurFBO1);
    glDisable(GL_BLEND);
    Post_Draw(source);
    glColor4f(1.0f, 1.0f, 1.0f, weight / (weight + 1.0f));
    glEnable(GL_BLEND);
    BindTexture(source);
    const float low = float(0.5 + -0.5 / double(zoom)), high = float(0.5 + 0.5 / double(zoom));
    DrawFullscreenQuad({0.0f, 0.0f, 0.0f}, {low, low}, {high, high});
    EndUpdateFBO();
}

void cRenderer::Post_SignalDistort(int texture, cVector2 amount, float time)
{
    glEnable(GL_TEXTURE_2D);
    BindTexture(texture);
    glEnable(GL_SCISSOR_TEST);
    const float t = time * 0.1f;
    const double c = double(t) * 0.01;
    for (int y = 0; y < mHeight; y++) {
        glScissor(0, y, mWidth, 1);
        const float x = RowShift(double(float(y) + t), amount.x, c);
        DrawFullscreenQuad({x, 0.0f, 0.0f}, {0.0f, amount.y}, {1.0f, amount.y + 1.0f});
    }
    glDisable(GL_SCISSOR_TEST);
}
} // namespace vyr
