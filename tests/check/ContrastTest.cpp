#include "tools/check/Contrast.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
struct cPaint
{
    int mLevel, mAlpha;
};

// Upright bars 4 pixels wide, 8 apart, in a border as wide as the ring.
double ContrastOf(const cPaint &letters, const cPaint &backing)
{
    const int width = 80, height = 40;
    std::vector<uint8_t> pixels;
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) {
            const bool isLetter = x >= 12 && x < 68 && y >= 12 && y < 28 && x % 12 < 4;
            const cPaint &paint = isLetter ? letters : backing;
            for (int channel = 0; channel < 3; channel++)
                pixels.push_back(uint8_t(paint.mLevel));
            pixels.push_back(uint8_t(paint.mAlpha));
        }
    }
    return check::LetterContrast(pixels.data(), width, height);
}
} // namespace

// 21 to 1 is the largest ratio there is.
TEST(Contrast, WhiteOnOpaqueBlackIsTheLargest)
{
    EXPECT_NEAR(ContrastOf({255, 255}, {0, 255}), 21.0, 0.01);
    EXPECT_NEAR(ContrastOf({0, 255}, {255, 255}), 21.0, 0.01); // dark letters too
}

// Level 119 has 18.4 % of the light of white: (1.05) / (0.184 + 0.05).
TEST(Contrast, IsTheRatioOfWcag)
{
    EXPECT_NEAR(ContrastOf({255, 255}, {119, 255}), 4.48, 0.02);
    EXPECT_NEAR(ContrastOf({255, 255}, {118, 255}), 4.54, 0.02);
}

// Over white, white letters without anything behind them are gone.
TEST(Contrast, WithoutABackingThereIsNone)
{
    EXPECT_NEAR(ContrastOf({255, 255}, {0, 0}), 1.0, 0.01);
    EXPECT_NEAR(ContrastOf({0, 255}, {0, 0}), 1.0, 0.01);
}

// Black at 60 % over white is level 102: 13.3 % of the light. The worse of the two counts.
TEST(Contrast, AThinBackingCountsAsItLooksOverWhite)
{
    EXPECT_NEAR(ContrastOf({255, 255}, {0, 153}), 1.05 / 0.183, 0.03);
}

TEST(Contrast, AFlatOrEmptyImageHasNone)
{
    EXPECT_EQ(ContrastOf({0, 0}, {0, 0}), 1.0);
    EXPECT_EQ(ContrastOf({200, 255}, {200, 255}), 1.0);
}
