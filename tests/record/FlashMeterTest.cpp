#include "tools/record/FlashMeter.h"

#include <gtest/gtest.h>

#include <functional>

using record::cDrawnFrame;
using record::cFlashMeter;
using record::cLight;
using record::cPicture;

namespace
{
using tColor = std::array<uint8_t, 3>;

const tColor black = {0, 0, 0}, white = {255, 255, 255}, red = {255, 0, 0}, blue = {0, 0, 255};
const int width = 256, height = 144, rate = 60;

/// The colour of a frame's pixel.
using tFilm = std::function<tColor(int frame, int x, int y)>;

cFlashMeter Measure(int frames, const tFilm &film)
{
    cFlashMeter meter(width, height, record::cFrameRate{rate, 1});
    cDrawnFrame frame;
    frame.mPicture = cPicture(width, height);
    for (int i = 0; i < frames; i++) {
        frame.mFrame = i;
        for (int y = 0; y < height; y++)
            for (int x = 0; x < width; x++) {
                const tColor color = film(i, x, y);
                std::copy(color.begin(), color.end(), frame.mPicture.Row(y) + 4 * x);
            }
        meter.Take(frame);
    }
    return meter;
}

// `perSecond` flashes of equal on and off times.
bool IsOn(int frame, int perSecond) { return frame * 2 * perSecond / rate % 2 != 0; }

cFlashMeter MeasureFlashes(int perSecond, const tColor &dark, const tColor &bright)
{
    return Measure(2 * rate,
                   [&](int frame, int, int) { return IsOn(frame, perSecond) ? bright : dark; });
}

TEST(FlashMeter, AllowsThreeFlashesASecond)
{
    const cFlashMeter meter = MeasureFlashes(3, black, white);
    EXPECT_TRUE(meter.GetFlashes().empty());
    EXPECT_EQ(meter.GetMost(false), 6);
}

TEST(FlashMeter, FindsFourFlashesASecond)
{
    const cFlashMeter meter = MeasureFlashes(4, black, white);
    ASSERT_EQ(meter.GetFlashes().size(), 1u);
    const record::cFlashes &flashes = meter.GetFlashes()[0];
    EXPECT_FALSE(flashes.mIsRed);
    EXPECT_EQ(flashes.mTransitions, 8);
    EXPECT_NEAR(flashes.mField, 1.0, 0.01);
    // Changes come every 7 or 8 frames from frame 8 on; the seventh is at frame 53.
    EXPECT_EQ(flashes.mFirst, 53);
    EXPECT_GT(flashes.mLast, 100);
}

// sRGB 89 is 0.1000 of the light of white, 88 is 0.0976.
TEST(FlashMeter, CountsStepsOfATenthOfWhite)
{
    EXPECT_FALSE(MeasureFlashes(5, black, {90, 90, 90}).GetFlashes().empty());
    EXPECT_TRUE(MeasureFlashes(5, black, {87, 87, 87}).GetFlashes().empty());
}

// sRGB 231 is 0.799 of white, 232 is 0.807.
TEST(FlashMeter, IgnoresFlashesBetweenBrightPictures)
{
    EXPECT_FALSE(MeasureFlashes(5, {230, 230, 230}, white).GetFlashes().empty());
    EXPECT_TRUE(MeasureFlashes(5, {233, 233, 233}, white).GetFlashes().empty());
}

// The step is the whole way, however many frames it takes.
TEST(FlashMeter, CountsSlopesAsSteps)
{
    const cFlashMeter meter = Measure(2 * rate, [](int frame, int, int) -> tColor {
        const int phase = frame % 12; // five a second
        const auto level = uint8_t(20 * (phase < 6 ? phase : 12 - phase));
        return {level, level, level};
    });
    EXPECT_FALSE(meter.GetFlashes().empty());
}

// A field is 85 by 64 cells of 4 pixels; a quarter of its area are 1364 cells, 37 by 37 are 1369.
TEST(FlashMeter, AllowsFlashesInUpToAQuarterOfAField)
{
    const auto square = [](int side) {
        return Measure(2 * rate, [side](int frame, int x, int y) {
            return IsOn(frame, 5) && x >= 50 && x < 50 + side && y >= 60 && y < 60 + side ? white
                                                                                          : black;
        });
    };
    EXPECT_TRUE(square(36).GetFlashes().empty());
    EXPECT_FALSE(square(37).GetFlashes().empty());
}

// Two strips, each below the limit, too far apart for one field.
TEST(FlashMeter, LooksAtOneFieldAtATime)
{
    const cFlashMeter meter = Measure(2 * rate, [](int frame, int x, int y) {
        const bool isInStrip = x < 20 || x >= width - 20;
        return IsOn(frame, 5) && isInStrip && y < 64 ? white : black;
    });
    EXPECT_TRUE(meter.GetFlashes().empty());
}

TEST(FlashMeter, IgnoresAFineBalancedPattern)
{
    cFlashMeter meter(4 * width, 4 * height, record::cFrameRate{rate, 1});
    cDrawnFrame frame;
    frame.mPicture = cPicture(4 * width, 4 * height);
    for (frame.mFrame = 0; frame.mFrame < rate; frame.mFrame++) {
        for (size_t i = 0; i < frame.mPicture.mBytes.size(); i++)
            frame.mPicture.mBytes[i] = uint8_t((i / 4 + i / 4096 + size_t(frame.mFrame)) % 2 * 255);
        meter.Take(frame);
    }
    EXPECT_TRUE(meter.GetFlashes().empty());
}

// Red and a blue of the same luminance as far as bytes allow: only the hue flashes.
TEST(FlashMeter, FindsRedFlashes)
{
    const cFlashMeter meter = MeasureFlashes(4, {0, 0, 231}, {127, 0, 0});
    ASSERT_EQ(meter.GetFlashes().size(), 1u);
    EXPECT_TRUE(meter.GetFlashes()[0].mIsRed);
    EXPECT_TRUE(MeasureFlashes(3, {0, 0, 231}, {127, 0, 0}).GetFlashes().empty());
}

TEST(FlashMeter, TakesNoRedFromBlacksAndBrowns)
{
    EXPECT_TRUE(MeasureFlashes(5, black, {10, 0, 0}).GetFlashes().empty());
    EXPECT_FALSE((cLight{0.5f, 0.2f, 0.1f}.IsSaturatedRed()));
    EXPECT_TRUE((cLight{0.5f, 0.1f, 0.0f}.IsSaturatedRed()));
}

TEST(FlashMeter, JoinsFlashesLessThanASecondApart)
{
    const cFlashMeter meter = Measure(8 * rate, [](int frame, int, int) {
        const bool pauses = frame >= 3 * rate && frame < 5 * rate;
        return !pauses && IsOn(frame, 6) ? white : black;
    });
    EXPECT_EQ(meter.GetFlashes().size(), 2u);
}

TEST(FlashMeter, CountsByTimeWhateverTheRate)
{
    cFlashMeter meter(64, 36, record::cFrameRate{24, 1});
    cDrawnFrame frame;
    frame.mPicture = cPicture(64, 36);
    for (frame.mFrame = 0; frame.mFrame < 48; frame.mFrame++) {
        const auto level = uint8_t(frame.mFrame / 4 % 2 * 255); // three a second
        std::fill(frame.mPicture.mBytes.begin(), frame.mPicture.mBytes.end(), level);
        meter.Take(frame);
    }
    EXPECT_TRUE(meter.GetFlashes().empty());
    EXPECT_EQ(meter.GetMost(false), 6);
}

// u'v' of the primaries of sRGB: red (0.4507, 0.5229), blue (0.1754, 0.1579).
TEST(Chromaticity, IsThatOfThePrimaries)
{
    EXPECT_NEAR(record::ChromaticityDistance({1, 0, 0}, {0, 0, 1}), 0.4574f, 0.001f);
    EXPECT_NEAR(record::ChromaticityDistance({1, 1, 1}, {0, 0, 0}), 0.0f, 0.001f);
}
} // namespace
