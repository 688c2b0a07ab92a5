#include "tests/support/OffscreenTest.h"

#include "engine/Singleton.h"
#include "platform/Window.h"

#include <epoxy/gl.h>

namespace test
{
namespace
{
using RendererHolder = vyr::tSingleton<vyr::cRenderer>;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

template <typename Holder>
auto &Make()
{
    Holder::CreateSingleton();
    return Holder::GetSingleton();
}
} // namespace

tPixel cPicture::At(int x, int y) const
{
    const uint8_t *p = mBytes.data() + 4 * (size_t(y) * size_t(mWidth) + size_t(x));
    return {p[0], p[1], p[2], p[3]};
}

cOffscreenTest::cOffscreenTest(int width, int height)
    : mRenderer(Make<RendererHolder>()), mTextures(Make<TexturesHolder>())
{
    vyr::platform::UseWindowSystem(vyr::platform::OffscreenWindowSystem());
    mRenderer.SetScaleFactor({float(width) / 1280.0f, float(height) / 720.0f});
    EXPECT_TRUE(mRenderer.Init(width, height, false));
    mRenderer.Clear(vyr::cColor(0, 0, 0, 1));
}

cOffscreenTest::~cOffscreenTest()
{
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    TexturesHolder::DestroySingleton();
    mRenderer.Shutdown();
    RendererHolder::DestroySingleton();
}

cPicture cOffscreenTest::ReadPicture() const
{
    const int width = mRenderer.GetWidth(), height = mRenderer.GetHeight();
    cPicture picture{width, height, std::vector<uint8_t>(4 * size_t(width) * size_t(height))};
    const size_t row = 4 * size_t(width);
    for (int y = 0; y < height; y++) // OpenGL's rows run upward
        glReadPixels(0, height - 1 - y, width, 1, GL_RGBA, GL_UNSIGNED_BYTE,
                     picture.mBytes.data() + size_t(y) * row);
    return picture;
}

tPixel cOffscreenTest::ReadPixel(int x, int y) const
{
    uint8_t p[4] = {};
    glReadPixels(x, mRenderer.GetHeight() - 1 - y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, p);
    return {p[0], p[1], p[2], p[3]};
}

int cOffscreenTest::MakeTexture(int width, int height, const tPixel &color)
{
    std::vector<uint8_t> rgba;
    for (int i = 0; i < width * height; i++)
        for (int channel : color)
            rgba.push_back(uint8_t(channel));
    return MakeTexture(width, height, rgba);
}

int cOffscreenTest::MakeTexture(int width, int height, const std::vector<uint8_t> &rgba)
{
    std::vector<uint8_t> bgra = rgba; // the order in which the manager takes pixels from memory
    for (size_t i = 0; i + 3 < bgra.size(); i += 4)
        std::swap(bgra[i], bgra[i + 2]);
    return mTextures.CreateTexture(bgra.data(), width, height, 4);
}

int cOffscreenTest::MakeUprightTexture(const tPixel &upper, const tPixel &lower)
{
    std::vector<uint8_t> rgba;
    for (int row = 0; row < 16; row++)
        for (int channel : row < 8 ? upper : lower)
            rgba.push_back(uint8_t(channel));
    return MakeTexture(1, 16, rgba);
}

void cOffscreenTest::ExpectOpenGLError(unsigned int error) { EXPECT_EQ(glGetError(), error); }
} // namespace test
