#include "tests/support/OffscreenTest.h"

#include <epoxy/gl.h>

namespace
{
using test::tPixel;
using vyr::cVector2;

const tPixel black = {0, 0, 0, 255};
const tPixel white = {255, 255, 255, 255};
const tPixel red = {255, 0, 0, 255};
const tPixel blue = {0, 0, 255, 255};

// On a window of 1920 by 1080: a design unit is one and a half pixels.
class Sprite : public test::cOffscreenTest
{
protected:
    Sprite() : cOffscreenTest(1920, 1080) { glColor4f(1, 1, 1, 1); }

    void Draw(int texture, cVector2 position, cVector2 scale = {1, 1}, float angle = 0)
    {
        mRenderer.Post_DrawSprite(texture, position, scale, angle);
    }

    // Left half red, right half blue.
    int MakeTwoColors(int width, int height)
    {
        std::vector<uint8_t> pixels;
        for (int i = 0; i < width * height; i++)
            for (int channel : i % width < width / 2 ? red : blue)
                pixels.push_back(uint8_t(channel));
        return MakeTexture(width, height, pixels);
    }
};

TEST_F(Sprite, LiesWithItsTopLeftCornerAtItsPositionInDesignUnits)
{
    Draw(MakeTexture(256, 128, white), {0, 0});
    EXPECT_EQ(ReadPixel(0, 0), white);
    EXPECT_EQ(ReadPixel(383, 191), white);
    EXPECT_EQ(ReadPixel(384, 100), black);
    EXPECT_EQ(ReadPixel(100, 192), black);
}

TEST_F(Sprite, PositionIsScaledToo)
{
    Draw(MakeTexture(100, 100, white), {200, 100});
    EXPECT_EQ(ReadPixel(300, 150), white);
    EXPECT_EQ(ReadPixel(449, 299), white);
    EXPECT_EQ(ReadPixel(299, 150), black);
    EXPECT_EQ(ReadPixel(300, 149), black);
}

TEST_F(Sprite, StandsUpright)
{
    const int texture = MakeUprightTexture({255, 0, 0, 255}, {0, 0, 255, 255});
    Draw(texture, {100, 100}, {20, 1});
    EXPECT_EQ(ReadPixel(150, 154), red);
    EXPECT_EQ(ReadPixel(150, 170), blue);
}

// 400 by 200 pixels about (300, 300): turned by 90 degrees it covers 200 by 400, its left side on
// top.
TEST_F(Sprite, TurnsClockwiseAboutItsCentre)
{
    const int texture = MakeTwoColors(256, 128);
    Draw(texture, {200 - 128, 200 - 64}, {1, 1}, 90);
    EXPECT_EQ(ReadPixel(300, 150), red);
    EXPECT_EQ(ReadPixel(300, 450), blue);
    EXPECT_EQ(ReadPixel(150, 300), black);
    EXPECT_EQ(ReadPixel(300, 300 - 193), black);
}

TEST_F(Sprite, ScalesAboutItsCentre)
{
    Draw(MakeTexture(100, 100, white), {100, 100}, {2, 0.5f});
    EXPECT_EQ(ReadPixel(76, 225), white);
    EXPECT_EQ(ReadPixel(373, 225), white);
    EXPECT_EQ(ReadPixel(225, 180), black);
    EXPECT_EQ(ReadPixel(225, 190), white);
}

TEST_F(Sprite, MirroredInBothAxesIsTurnedByHalf)
{
    Draw(MakeTwoColors(100, 100), {100, 100}, {-1, -1});
    EXPECT_EQ(ReadPixel(160, 225), blue);
    EXPECT_EQ(ReadPixel(290, 225), red);
}

// Mirrored in one axis it shows its back: with culling on, nothing is seen.
TEST_F(Sprite, MirroredInOneAxisIsCulled)
{
    const int texture = MakeTwoColors(100, 100);
    Draw(texture, {100, 100}, {-1, 1});
    EXPECT_EQ(ReadPixel(225, 225), black);
    glDisable(GL_CULL_FACE);
    Draw(texture, {100, 100}, {-1, 1});
    EXPECT_EQ(ReadPixel(160, 225), blue);
}

TEST_F(Sprite, IsMultipliedWithTheCurrentColour)
{
    glEnable(GL_BLEND);
    glColor4f(1, 1, 1, 0.5f);
    Draw(MakeTexture(10, 10, white), {0, 0}, {10, 10});
    EXPECT_NEAR(ReadPixel(7, 7)[0], 128, 1);
    GLint mode = 0;
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    EXPECT_EQ(mode, GL_MODULATE);
}

TEST_F(Sprite, LeavesDepthTestingOffAndTexturingOn)
{
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_2D);
    Draw(MakeTexture(1, 1, white), {0, 0});
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
}

// The caller's matrix is lost: a helper ends the orthographic mode whoever entered it.
TEST_F(Sprite, EndsTheCallersOwnOrthographicMode)
{
    mRenderer.SetOrtho(true);
    Draw(MakeTexture(1, 1, white), {0, 0});
    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
    GLfloat projection[16] = {};
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    EXPECT_EQ(projection[11], -1.0f); // the perspective
}

using SpriteDeath = Sprite;

TEST_F(SpriteDeath, UnknownTextureStopsTheProgram)
{
    EXPECT_DEATH(Draw(-1, {0, 0}), "cTextureManager::BindTexture\\(\\): ID is out of range: ");
}
} // namespace
