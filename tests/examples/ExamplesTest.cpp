#include "tests/examples/Examples.h"
#include "tests/support/OffscreenTest.h"

#include "sync/data.h"

#include <epoxy/gl.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <functional>

namespace
{
using test::cPicture;
using test::tPixel;

/// Draws examples as their window does, at times of the test's choosing.
class Example : public test::cOffscreenTest, public testing::WithParamInterface<const cExample *>
{
protected:
    Example() { std::filesystem::current_path(VYR_BINARY_DIR "/examples"); }

    cPicture Draw(const cExample &example, double seconds)
    {
        mRenderer.BeginScene();
        mRenderer.Clear(vyr::cColor(0, 0, 0, 1));
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glColor4f(1, 1, 1, 1);
        example.mDraw(seconds);
        mRenderer.EndScene();
        return ReadPicture();
    }
};

/// The rectangle of the pixels that `isPart` picks.
struct cBounds
{
    int mLeft = 1280, mTop = 720, mRight = -1, mBottom = -1, mCount = 0;

    double MiddleX() const { return (mLeft + mRight) / 2.0; }
    double MiddleY() const { return (mTop + mBottom) / 2.0; }
};

cBounds Bounds(const cPicture &picture, const std::function<bool(const tPixel &)> &isPart)
{
    cBounds bounds;
    for (int y = 0; y < picture.mHeight; y++)
        for (int x = 0; x < picture.mWidth; x++)
            if (isPart(picture.At(x, y))) {
                bounds.mLeft = std::min(bounds.mLeft, x);
                bounds.mRight = std::max(bounds.mRight, x);
                bounds.mTop = std::min(bounds.mTop, y);
                bounds.mBottom = std::max(bounds.mBottom, y);
                bounds.mCount++;
            }
    return bounds;
}

bool IsLit(const tPixel &pixel) { return pixel[0] + pixel[1] + pixel[2] > 60; }

bool IsNear(const tPixel &a, const tPixel &b)
{
    return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]) <= 3;
}

// Pixels of a rectangle that are lit.
int CountLit(const cPicture &picture, int left, int top, int width, int height)
{
    int count = 0;
    for (int y = top; y < top + height; y++)
        for (int x = left; x < left + width; x++)
            count += IsLit(picture.At(x, y));
    return count;
}

// Every example ------------------------------------------------------------------------------

TEST_P(Example, ShowsSomethingThatMovesAndFollowsItsClockAlone)
{
    const cExample &example = *GetParam();
    example.mLoad();
    const cPicture first = Draw(example, 1.3), second = Draw(example, 1.9);
    EXPECT_GT(Bounds(first, IsLit).mCount, 10000);
    EXPECT_GT(Bounds(second, IsLit).mCount, 10000);
    EXPECT_FALSE(first == second);
    EXPECT_TRUE(Draw(example, 1.3) == first);
}

std::string NameOf(const testing::TestParamInfo<const cExample *> &info)
{
    std::string name;
    for (char letter : std::string(info.param->mTitle))
        name += std::isalnum(static_cast<unsigned char>(letter)) ? std::string(1, letter) : "";
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, Example,
                         testing::Values(&kSprite, &kMovement, &kObject, &kRgbSplit, &kFeedbackBlur,
                                         &kSignalDistort, &kText, &kShow),
                         NameOf);

// Each for itself ----------------------------------------------------------------------------

TEST_F(Example, TheSpriteStandsInTheMiddleAtItsOwnSizeAtFirst)
{
    kSprite.mLoad();
    const cBounds logo = Bounds(Draw(kSprite, 0), IsLit);
    const vyr::cVector2 size = Textures().GetTexture(LoadPicture("data/zemlogo.png")).mSize;
    EXPECT_GE(logo.mLeft, (1280 - int(size.x)) / 2);
    EXPECT_LT(logo.mRight, (1280 + int(size.x)) / 2);
    EXPECT_GE(logo.mTop, (720 - int(size.y)) / 2);
    EXPECT_LT(logo.mBottom, (720 + int(size.y)) / 2);
    EXPECT_GT(logo.mRight - logo.mLeft, 500);
    const cBounds larger = Bounds(Draw(kSprite, 0.7), IsLit);
    EXPECT_GT(larger.mRight - larger.mLeft, logo.mRight - logo.mLeft + 50);
}

const double beatSeconds = 60.0 / 132.0;

TEST_F(Example, TheClockHopsWithTheBeatAndRollsWithTheBar)
{
    kMovement.mLoad();
    const cBounds ground = Bounds(Draw(kMovement, 4 * beatSeconds), IsLit);
    const cBounds air = Bounds(Draw(kMovement, 4.5 * beatSeconds), IsLit);
    EXPECT_NEAR(ground.MiddleY() - air.MiddleY(), 160, 10) << "of movement.txt: floor less top";
    const cBounds again = Bounds(Draw(kMovement, 5 * beatSeconds), IsLit);
    EXPECT_NEAR(again.MiddleY(), ground.MiddleY(), 5);
    // A quarter of the way there (768 pixels in 8 beats) is two beats.
    const cBounds later = Bounds(Draw(kMovement, 6 * beatSeconds), IsLit);
    EXPECT_NEAR(later.MiddleX() - ground.MiddleX(), 768 / 4, 10);
    const cBounds back = Bounds(Draw(kMovement, 20 * beatSeconds), IsLit);
    EXPECT_NEAR(back.MiddleX(), ground.MiddleX(), 10) << "four bars are a round";
}

TEST_F(Example, EachCornerHasTheObjectInAnotherMode)
{
    kObject.mLoad();
    const cPicture picture = Draw(kObject, 0.5);
    auto corner = [&](int x, int y) { return CountLit(picture, 640 * x, 360 * y, 640, 360); };
    for (int y : {0, 1})
        for (int x : {0, 1})
            EXPECT_GT(corner(x, y), 3000) << x << " " << y;
    EXPECT_GT(corner(0, 0), 15000) << "filled";

    const cBounds normals = Bounds(picture, [](const tPixel &p) {
        return p[1] > p[0] + 20 && p[1] > p[2] + 8; // the mint of the normals
    });
    EXPECT_GT(normals.mCount, 3000);
    EXPECT_LT(normals.mRight, 640);
    EXPECT_GE(normals.mTop, 300);
}

TEST_F(Example, TheSplitOpensWithTheHitAndCloses)
{
    kRgbSplit.mLoad();
    auto distance = [this](double seconds) {
        const cPicture picture = Draw(kRgbSplit, seconds);
        const cBounds red = Bounds(picture, [](const tPixel &p) { return p[0] > 220; });
        const cBounds blue = Bounds(picture, [](const tPixel &p) { return p[2] > 170; });
        return blue.MiddleX() - red.MiddleX();
    };
    const double closed = distance(0.999);
    EXPECT_NEAR(distance(1.0) - closed, 60 - 3, 8);
    EXPECT_GT(distance(1.1), closed + 10);
}

// The glow: more of the window is lit than by the picture alone, and differently from time to time.
TEST_F(Example, TheBlurSmearsThePictureOutward)
{
    kFeedbackBlur.mLoad();
    const cPicture narrow = Draw(kFeedbackBlur, 3.14); // the sine at its lowest
    const cPicture wide = Draw(kFeedbackBlur, 1.05);
    auto isRim = [](const tPixel &p) { return p[0] > 40; };
    const cBounds narrowRim = Bounds(narrow, isRim), wideRim = Bounds(wide, isRim);
    EXPECT_GT(wideRim.mRight - wideRim.mLeft, narrowRim.mRight - narrowRim.mLeft + 20);
    GLint source = 0, destination = 0;
    glGetIntegerv(GL_BLEND_SRC, &source);
    glGetIntegerv(GL_BLEND_DST, &destination);
    EXPECT_EQ(source, GL_SRC_ALPHA);
    EXPECT_EQ(destination, GL_ONE_MINUS_SRC_ALPHA);
}

TEST_F(Example, TheDistortionSwingsTheRowsAndRollsNowAndThen)
{
    kSignalDistort.mLoad();
    const cPicture picture = Draw(kSignalDistort, 1.7);
    int smallest = 1280, largest = 0;
    for (int y = 0; y < 720; y++) {
        int left = 0;
        while (left < 1280 && !IsLit(picture.At(left, y)))
            left++;
        smallest = std::min(smallest, left);
        largest = std::max(largest, left);
    }
    EXPECT_EQ(smallest, 0);
    EXPECT_GT(largest, 30) << "a row swings out and leaves the window black";
    EXPECT_FALSE(Draw(kSignalDistort, 3.75) == picture);
}

TEST_F(Example, TheTextLeavesTheClockAroundItsLetters)
{
    kText.mLoad();
    const cPicture picture = Draw(kText, 0);
    const cBounds heading = Bounds(picture, [](const tPixel &p) {
        return IsNear(p, {255, 178, 71, 255}); // its colour where the coverage is full
    });
    EXPECT_GT(heading.mCount, 300);
    EXPECT_NEAR(heading.MiddleX(), 640, 40) << "in the middle of its image";
    EXPECT_LT(heading.mBottom, 180);
    const cBounds paragraph = Bounds(picture, [](const tPixel &p) {
        return IsNear(p, {245, 232, 209, 255});
    });
    EXPECT_GT(paragraph.mCount, 5000);
    EXPECT_GE(paragraph.mLeft, 360);
    EXPECT_LT(paragraph.mRight, 360 + 560) << "wrapped";
    EXPECT_GT(paragraph.mBottom - paragraph.mTop, 4 * 40) << "into several lines";

    // The clock alone: the same without the three textures' text, which is drawn behind it.
    mRenderer.Clear(vyr::cColor(0, 0, 0, 1));
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1, 1, 1, 0.5f);
    const int dial = LoadPicture("data/tex9.png");
    mRenderer.Post_DrawSprite(dial, {384, 104}, {1.5f, 1.5f}, 0);
    const cPicture clock = ReadPicture();
    int seen = 0, hidden = 0;
    for (int y = 230; y < 480; y++)
        for (int x = 360; x < 920; x++)
            if (IsLit(clock.At(x, y)))
                (IsLit(picture.At(x, y)) ? seen : hidden)++;
    EXPECT_GT(seen, 1000);
    EXPECT_EQ(hidden, 0) << "no black box around the letters";
}

TEST_F(Example, TheShowsLayersComeAndGoByTheirTracks)
{
    kShow.mLoad();
    const cPicture start = Draw(kShow, 0);
    const cPicture middle = Draw(kShow, 16 * beatSeconds);
    const auto sum = [](const cPicture &picture) {
        long total = 0;
        for (size_t i = 0; i < picture.mBytes.size(); i++)
            total += i % 4 == 3 ? 0 : picture.mBytes[i];
        return total;
    };
    EXPECT_GT(sum(middle), sum(start) + sum(start) / 5) << "the fog is stronger in the middle";
    const auto cream = [](const tPixel &p) { return p[0] > 230 && p[2] > 180; };
    EXPECT_LT(Bounds(start, cream).mBottom, 500) << "no words";
    EXPECT_GT(Bounds(Draw(kShow, 6 * beatSeconds), cream).mBottom, 560) << "words";

    const auto duck = [](const tPixel &p) { return p[0] > 150 && p[0] > 2 * p[2]; };
    const cBounds ground = Bounds(start, duck);
    const cBounds air = Bounds(Draw(kShow, 0.5 * beatSeconds), duck);
    EXPECT_GT(ground.mCount, 5000);
    EXPECT_LT(air.mTop, ground.mTop - 20);
}

// What may be missing ------------------------------------------------------------------------

TEST_F(Example, AMissingFileEndsItWithOneLine)
{
    // A sanitizer has lines of its own to add.
    const auto isTheLine = [](const std::string &file) {
        return testing::StartsWith(file + ": can't be read\n");
    };
    EXPECT_EXIT(LoadPicture("data/none.png"), testing::ExitedWithCode(1),
                isTheLine("data/none.png"));
    EXPECT_EXIT(LoadObject("data/none.lwo"), testing::ExitedWithCode(1),
                isTheLine("data/none.lwo"));
}
} // namespace
