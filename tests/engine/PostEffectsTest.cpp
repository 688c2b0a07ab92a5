#include "tests/support/OffscreenTest.h"
#include "tests/support/OpenGLLog.h"

#include <epoxy/gl.h>

#include <cmath>

namespace
{
using test::cPicture;
using test::tPixel;
using vyr::cVector2;

using tBytes = std::vector<uint8_t>;

const int width = 128, height = 72;
const double pi = 3.14159265358979;

/// A window, and a picture of the window's size in which no two pixels are alike, and no two
/// neighbours in any channel.
class PostEffect : public test::cOffscreenTest
{
protected:
    PostEffect() : cOffscreenTest(width, height)
    {
        glColor4f(1, 1, 1, 1);
        mSource = MakePicture([](int x, int y) {
            return tPixel{x + y, 255 - x - y, 128 + x - y, 255};
        });
    }

    template <typename Function>
    int MakePicture(Function color)
    {
        tBytes rgba;
        for (int y = 0; y < height; y++)
            for (int x = 0; x < width; x++)
                for (int channel : tPixel(color(x, y)))
                    rgba.push_back(uint8_t(channel));
        return MakeTexture(width, height, rgba);
    }

    // Plain copies, as the other drawing calls make them.
    cPicture Upright(int texture)
    {
        Clear();
        mRenderer.Post_Draw(texture);
        return ReadPicture();
    }

    cPicture UpsideDown(int texture)
    {
        Clear();
        mTextures.BindTexture(texture);
        mRenderer.DrawFullscreenQuad({0, 0, 0}, {0, 0}, {1, 1});
        return ReadPicture();
    }

    void Clear(float brightness = 0)
    {
        mRenderer.Clear(vyr::cColor(brightness, brightness, brightness, 1));
    }

    static int Integer(GLenum name)
    {
        GLint value = 0;
        glGetIntegerv(name, &value);
        return value;
    }

    int mSource = -1;
};

// Red, green and blue split -------------------------------------------------------------------

using RGBSplit = PostEffect;

TEST_F(RGBSplit, WithoutOffsetIsThePlainPicture)
{
    const cPicture plain = Upright(mSource);
    Clear();
    mRenderer.Post_RGBSplit(mSource, {0, 0});
    EXPECT_EQ(ReadPicture(), plain);
}

TEST_F(RGBSplit, MovesRedAndBlueByHalfTheOffsetEach)
{
    const cPicture plain = Upright(mSource);
    Clear();
    mRenderer.Post_RGBSplit(mSource, {20, 0});
    const cPicture split = ReadPicture();
    for (int x : {10, 40, 117}) {
        EXPECT_EQ(split.At(x, 30)[0], plain.At(x + 10, 30)[0]) << "red goes left, " << x;
        EXPECT_EQ(split.At(x, 30)[1], plain.At(x, 30)[1]);
        EXPECT_EQ(split.At(x, 30)[2], plain.At(x - 10, 30)[2]) << "blue goes right, " << x;
    }
}

TEST_F(RGBSplit, MovesUpAndDownToo)
{
    const cPicture plain = Upright(mSource);
    Clear();
    mRenderer.Post_RGBSplit(mSource, {0, 8});
    const tPixel pixel = ReadPixel(60, 30);
    EXPECT_EQ(pixel[0], plain.At(60, 34)[0]) << "red goes up";
    EXPECT_EQ(pixel[1], plain.At(60, 30)[1]);
    EXPECT_EQ(pixel[2], plain.At(60, 26)[2]) << "blue goes down";
}

TEST_F(RGBSplit, LeavesWhatItDoesNotCover)
{
    Clear(1);
    mRenderer.Post_RGBSplit(MakeTexture(1, 1, tPixel{0, 0, 0, 255}), {20, 0});
    EXPECT_EQ(ReadPixel(118, 30), (tPixel{255, 0, 0, 255}));
    EXPECT_EQ(ReadPixel(117, 30), (tPixel{0, 0, 0, 255}));
    EXPECT_EQ(ReadPixel(9, 30), (tPixel{0, 0, 255, 255}));
    EXPECT_EQ(ReadPixel(10, 30), (tPixel{0, 0, 0, 255}));
}

TEST_F(RGBSplit, TakesTheCallersColorAndBlending)
{
    Clear(0.2f);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    glColor4f(1, 0.5f, 0, 1);
    mRenderer.Post_RGBSplit(MakeTexture(1, 1, tPixel{102, 102, 102, 255}), {0, 0});
    EXPECT_EQ(ReadPixel(60, 30), (tPixel{51 + 102, 51 + 51, 51, 255}));
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
}

TEST_F(RGBSplit, WritesAlphaThreeTimes)
{
    mRenderer.Clear(vyr::cColor(0, 0, 0, 0));
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    mRenderer.Post_RGBSplit(MakeTexture(1, 1, tPixel{10, 20, 30, 40}), {0, 0});
    EXPECT_EQ(ReadPixel(60, 30), (tPixel{10, 20, 30, 120}));
}

TEST_F(RGBSplit, WritesAllChannelsAgainAfterwards)
{
    glDisable(GL_TEXTURE_2D);
    mRenderer.Post_RGBSplit(mSource, {20, 0});
    GLboolean mask[4] = {};
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    for (GLboolean channel : mask)
        EXPECT_TRUE(channel);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(RGBSplit, AnUnknownTextureIsAProgrammingError)
{
    EXPECT_DEATH(mRenderer.Post_RGBSplit(-1, {0, 0}), "ID is out of range");
}

// Feedback blur -------------------------------------------------------------------------------

class FeedbackBlur : public PostEffect
{
protected:
    FeedbackBlur() { mRenderer.InitPostProcessing(); }

    int MakeSquare()
    {
        return MakePicture([](int x, int y) {
            const bool isInside =
                std::abs(x - middleX + 0.5) < 8 && std::abs(y - middleY + 0.5) < 8;
            return isInside ? tPixel{255, 255, 255, 255} : tPixel{0, 0, 0, 255};
        });
    }

    static constexpr int middleX = width / 2, middleY = height / 2;
};

// Nine copies, each of which turns a render target over, and one more onto the window.
TEST_F(FeedbackBlur, WithoutWeightOnlyThePlainCopiesRemain)
{
    const cPicture expected = UpsideDown(mSource);
    for (float zoom : {1.0f, 1.1f, 3.0f}) {
        Clear();
        mRenderer.Post_FeedbackBlur(mSource, zoom, 0);
        EXPECT_EQ(ReadPicture(), expected) << zoom;
    }
}

TEST_F(FeedbackBlur, ARenderTargetComesOutUpright)
{
    const int target = mTextures.CreateTexture("target", width, height, true, false);
    const unsigned int fbo = mRenderer.CreateFBO(unsigned(target), 0);
    const cPicture expected = Upright(mSource);
    mRenderer.BeginUpdateFBO(fbo);
    mRenderer.Post_Draw(mSource);
    mRenderer.EndUpdateFBO();
    Clear();
    mRenderer.Post_FeedbackBlur(target, 1.1f, 0);
    EXPECT_EQ(ReadPicture(), expected);
}

TEST_F(FeedbackBlur, IsAddedToTheWindow)
{
    Clear(0.2f);
    mRenderer.Post_FeedbackBlur(MakeTexture(1, 1, tPixel{50, 100, 255, 255}), 1, 0);
    EXPECT_EQ(ReadPixel(60, 30), (tPixel{101, 151, 255, 255}));
}

// The upper half bright, the lower dark; zoom 1, so that only the orientation of the layers tells.
// A pass lays the picture, as it was, over the picture turned over. The plain copy takes the colour
// that the pass before left, so that its opacity shrinks from pass to pass, and the layer's with
// it.
TEST_F(FeedbackBlur, EveryPassBlendsThePictureWithItselfUpsideDown)
{
    const int halves = MakePicture([](int, int y) {
        const int value = y < height / 2 ? 240 : 20;
        return tPixel{value, value, value, 255};
    });
    double upper = 240, lower = 20, opacity = 1;
    double weight = 0.5, colorAlpha = 1;
    for (int pass = 0; pass < 8; pass++) {
        const double copied = opacity * colorAlpha;
        colorAlpha = weight / (weight + 1);
        const double layer = opacity * colorAlpha;
        const double newUpper = (1 - layer) * lower + layer * upper;
        lower = (1 - layer) * upper + layer * lower;
        upper = newUpper;
        opacity = layer * layer + (1 - layer) * copied;
        weight *= weight;
    }
    Clear();
    mRenderer.Post_FeedbackBlur(halves, 1, 0.5f);
    // Roundings to a byte, pass after pass. The last copy turns the picture over once more.
    EXPECT_NEAR(ReadPixel(60, 10)[0], lower, 2);
    EXPECT_NEAR(ReadPixel(60, 60)[0], upper, 2);
    EXPECT_NEAR(upper + lower, 260, 1e-9) << "only mixed";
    EXPECT_GT(std::abs(upper - lower), 30) << "and not all the same";
}

// A white square of 16 pixels in the middle; a weight of 0.1 is an opacity of 1/11 in the first
// pass (zoom 3), about 1/101 in the second (zoom 9) and nothing to speak of later.
TEST_F(FeedbackBlur, EveryPassMagnifiesAndWeighsByTheSquareOfTheLast)
{
    const int square = MakeSquare();
    Clear();
    mRenderer.Post_FeedbackBlur(square, 3, 0.1f);
    EXPECT_EQ(ReadPixel(middleX, middleY), (tPixel{255, 255, 255, 255}));
    for (int side : {-1, 1}) {
        EXPECT_NEAR(ReadPixel(middleX + side * 5, middleY)[0], 255, 3);
        EXPECT_NEAR(ReadPixel(middleX + side * 18, middleY)[0], 255 / 11.0 + 255 / 101.0, 3);
        EXPECT_NEAR(ReadPixel(middleX, middleY + side * 18)[0], 255 / 11.0 + 255 / 101.0, 3);
        EXPECT_NEAR(ReadPixel(middleX + side * 50, middleY)[0], 255 / 101.0, 1);
        EXPECT_GT(ReadPixel(middleX + side * 50, middleY)[0], 0);
    }
}

// The eighth pass magnifies by 1.02^128 = 12.6: what lies 60 pixels from the middle is taken from 5
// pixels, inside the square, with an opacity that has sunk to about 0.31. The seventh, by 3.5,
// would take it from 17, outside.
TEST_F(FeedbackBlur, HasEightPasses)
{
    const int square = MakeSquare();
    Clear();
    mRenderer.Post_FeedbackBlur(square, 1.02f, 1.5f);
    EXPECT_NEAR(ReadPixel(middleX + 60, middleY)[0], 0.31 * 255, 15);
}

// The first two copies are drawn before the effect sets a colour: the caller's counts twice.
TEST_F(FeedbackBlur, ThePlainCopiesTakeTheCurrentColorAsItStands)
{
    glColor4f(0.5f, 1, 1, 1);
    Clear();
    mRenderer.Post_FeedbackBlur(MakeTexture(1, 1, tPixel{200, 200, 200, 255}), 1, 0);
    const tPixel pixel = ReadPixel(60, 30);
    EXPECT_NEAR(pixel[0], 50, 1);
    EXPECT_EQ(pixel[1], 200);
}

TEST_F(FeedbackBlur, DrawsInThePlaneOfTheWindow)
{
    const test::cOpenGLLog log;
    mRenderer.Post_FeedbackBlur(mSource, 1.1f, 0.8f);
    EXPECT_FALSE(log.LinesOf("glVertex3f").empty());
    for (const std::string &line : log.LinesOf("glVertex3f"))
        EXPECT_TRUE(line.ends_with(" 0")) << line;
}

TEST_F(FeedbackBlur, LeavesAdditiveBlendingAndWhite)
{
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glColor4f(0.1f, 0.2f, 0.3f, 0.4f);
    mRenderer.Post_FeedbackBlur(mSource, 1.1f, 0.9f);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(Integer(GL_BLEND_SRC), GL_ONE);
    EXPECT_EQ(Integer(GL_BLEND_DST), GL_ONE);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    float color[4] = {};
    glGetFloatv(GL_CURRENT_COLOR, color);
    for (float channel : color)
        EXPECT_EQ(channel, 1);
}

TEST_F(FeedbackBlur, EndsOnTheWindowWhateverWasBound)
{
    const int target = mTextures.CreateTexture("target", width, height, true, false);
    const unsigned int fbo = mRenderer.CreateFBO(unsigned(target), 0);
    mRenderer.BeginUpdateFBO(fbo);
    Clear();
    mRenderer.Post_FeedbackBlur(MakeTexture(1, 1, tPixel{255, 0, 0, 255}), 1, 0);
    EXPECT_EQ(Integer(GL_FRAMEBUFFER_BINDING), 0);
    EXPECT_EQ(ReadPixel(60, 30), (tPixel{255, 0, 0, 255}));
    mRenderer.BeginUpdateFBO(fbo);
    EXPECT_EQ(ReadPixel(60, 30), (tPixel{0, 0, 0, 255}));
    mRenderer.EndUpdateFBO();
}

TEST_F(FeedbackBlur, DrawsWhateverBlendingWasOnBefore)
{
    Clear();
    mRenderer.Post_FeedbackBlur(mSource, 1.1f, 0.8f);
    const cPicture first = ReadPicture();
    Clear();
    mRenderer.Post_FeedbackBlur(mSource, 1.1f, 0.8f); // after its own additive blending
    EXPECT_EQ(ReadPicture(), first);
}

// Its copies are plain even where the picture is not opaque and the targets are used.
TEST_F(FeedbackBlur, CopiesWithoutBlending)
{
    mRenderer.Post_FeedbackBlur(MakeTexture(1, 1, tPixel{255, 255, 255, 255}), 1, 0);
    Clear();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    mRenderer.Post_FeedbackBlur(MakeTexture(1, 1, tPixel{40, 80, 120, 100}), 1, 0);
    EXPECT_EQ(ReadPixel(60, 30)[0], 40);
    EXPECT_EQ(ReadPixel(60, 30)[2], 120);
}

TEST_F(FeedbackBlur, NothingDrawnBeforeHidesIt)
{
    glClearDepth(0); // as near as can be
    Clear();
    mRenderer.Post_FeedbackBlur(MakeTexture(1, 1, tPixel{40, 80, 120, 255}), 1, 0);
    EXPECT_EQ(ReadPixel(60, 30), (tPixel{40, 80, 120, 255}));
}

TEST_F(FeedbackBlur, AnyNumbersAreDrawn)
{
    for (float zoom : {0.0f, -1.0f, 1e30f, INFINITY, NAN})
        for (float weight : {-1.0f, 1e30f, NAN})
            mRenderer.Post_FeedbackBlur(mSource, zoom, weight);
    EXPECT_EQ(Integer(GL_FRAMEBUFFER_BINDING), 0);
}

// Signal distortion ---------------------------------------------------------------------------

class SignalDistort : public PostEffect
{
protected:
    // Black on the left, white on the right; the black beyond the left edge repeats.
    int MakeEdge()
    {
        return MakePicture([](int x, int) {
            return x < width / 2 ? tPixel{0, 0, 0, 255} : tPixel{255, 255, 255, 255};
        });
    }

    // Where the edge lies in a row counted from the bottom.
    static int FindEdge(const cPicture &picture, int row)
    {
        int x = 0;
        while (x < width && picture.At(x, height - 1 - row)[0] < 128)
            x++;
        return x;
    }
};

TEST_F(SignalDistort, WithoutAmountOrTimeMovesNothing)
{
    const cPicture plain = UpsideDown(mSource);
    for (const auto &[amount, time] : {std::pair{0.0f, 1500.0f}, {9.0f, 0.0f}}) {
        Clear();
        mRenderer.Post_SignalDistort(mSource, {amount, 0}, time);
        EXPECT_EQ(ReadPicture(), plain) << amount << " " << time;
    }
}

TEST_F(SignalDistort, MovesEachRowByItsWave)
{
    const int edge = MakeEdge();
    const double time = 1500, amount = 11;
    Clear();
    mRenderer.Post_SignalDistort(edge, {float(amount), 0}, float(time));
    const cPicture picture = ReadPicture();
    double largest = 0;
    for (int row = 0; row < height; row++) {
        const double s = row + time * 0.1;
        const double shift = 200 * std::sin(0.01 * std::cos(0.04 * s)) * std::sin(0.02 * s) *
                             std::sin(0.01 * s) * std::cos(0.02 * s) * std::cos(0.01 * s) * amount *
                             amount * std::sin(time * 0.1 * 0.01);
        EXPECT_NEAR(FindEdge(picture, row), width / 2 + shift, 1.01) << row;
        largest = std::max(largest, std::abs(shift));
    }
    EXPECT_GT(largest, 15) << "else the comparison says little";
}

// Squared, on purpose: the sign does not matter, and twice the amount moves four times as far.
TEST_F(SignalDistort, TheAmountEntersSquared)
{
    const int edge = MakeEdge();
    const float time = float(500 * pi); // the slow sine at its top
    auto draw = [&](float amount) {
        Clear();
        mRenderer.Post_SignalDistort(edge, {amount, 0}, time);
        return ReadPicture();
    };
    const cPicture once = draw(6);
    EXPECT_EQ(draw(-6), once);
    const cPicture twice = draw(12);
    int moved = 0;
    for (int row = 0; row < height; row++) {
        const int shift = FindEdge(once, row) - width / 2;
        EXPECT_NEAR(FindEdge(twice, row) - width / 2, 4 * shift, 4) << row;
        moved = std::max(moved, std::abs(shift));
    }
    EXPECT_GT(moved, 4);
}

TEST_F(SignalDistort, RollsByPictureHeights)
{
    const int halves = MakePicture([](int, int y) {
        return y < height / 2 ? tPixel{255, 0, 0, 255} : tPixel{0, 0, 255, 255};
    });
    Clear();
    mRenderer.Post_SignalDistort(halves, {0, 0.25f}, 1);
    // The picture's first row at the bottom, a quarter of it rolled out below.
    EXPECT_EQ(ReadPixel(60, height - 2), (tPixel{255, 0, 0, 255}));
    EXPECT_EQ(ReadPixel(60, height - 16), (tPixel{255, 0, 0, 255}));
    EXPECT_EQ(ReadPixel(60, height - 20), (tPixel{0, 0, 255, 255}));
    EXPECT_EQ(ReadPixel(60, height - 52), (tPixel{0, 0, 255, 255}));
    EXPECT_EQ(ReadPixel(60, height - 56), (tPixel{255, 0, 0, 255})) << "repeated";
}

TEST_F(SignalDistort, TakesTheCallersColorAndBlending)
{
    Clear(0.2f);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    glColor4f(1, 0.5f, 0, 1);
    mRenderer.Post_SignalDistort(MakeTexture(1, 1, tPixel{102, 102, 102, 255}), {0, 0}, 1);
    EXPECT_EQ(ReadPixel(60, 0), (tPixel{51 + 102, 51 + 51, 51, 255}));
    EXPECT_EQ(ReadPixel(60, 71), (tPixel{51 + 102, 51 + 51, 51, 255}));
}

TEST_F(SignalDistort, LeavesTexturingOnAndTheScissorTestOff)
{
    glDisable(GL_TEXTURE_2D);
    mRenderer.Post_SignalDistort(mSource, {1, 1}, 1);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
    EXPECT_TRUE(Integer(GL_DEPTH_WRITEMASK));
}

TEST_F(SignalDistort, AnyNumbersAreDrawn)
{
    for (float number : {1e30f, -1e30f, INFINITY, NAN})
        mRenderer.Post_SignalDistort(mSource, {number, number}, number);
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
}
} // namespace
