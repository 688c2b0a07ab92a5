#pragma once

#include "engine/Renderer.h"
#include "engine/TextureManager.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

namespace test
{
using tPixel = std::array<int, 4>; // red, green, blue, alpha, 0 to 255

/// A picture read back from OpenGL, rows top first.
struct cPicture
{
    int mWidth = 0, mHeight = 0;
    std::vector<uint8_t> mBytes; // RGBA

    tPixel At(int x, int y) const;
    bool operator==(const cPicture &) const = default;
};

/// A renderer and a texture manager over a real context of `Width()` by `Height()` pixels that
/// needs no display; both are made anew for each test, and the state of OpenGL with them.
class cOffscreenTest : public testing::Test
{
protected:
    explicit cOffscreenTest(int width = 1280, int height = 720);
    ~cOffscreenTest() override;

    /// What is in the framebuffer bound now, of the window's size.
    cPicture ReadPicture() const;
    tPixel ReadPixel(int x, int y) const; ///< y from the top

    /// A texture of one colour, or of `width` by `height` RGBA pixels, top row first.
    int MakeTexture(int width, int height, const tPixel &color);
    int MakeTexture(int width, int height, const std::vector<uint8_t> &rgba);

    /// 16 rows of one pixel, the upper half of one colour, the lower of another.
    int MakeUprightTexture(const tPixel &upper, const tPixel &lower);

    /// For a test that asks OpenGL for what it must refuse; any other error fails the test at its
    /// end.
    void ExpectOpenGLError(unsigned int error);

    vyr::cRenderer &mRenderer;
    vyr::cTextureManager &mTextures;
};
} // namespace test
