#include "tools/tracks/Plotter.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"
#include "tools/tracks/PlotLane.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <sstream>

using testing::HasSubstr;
using testing::Not;

namespace
{
/// A track that owns its keys.
struct cOwned
{
    std::string mName;
    std::vector<sync_key> mKeys;
    sync_track mTrack{};

    cOwned(const std::string &name, const std::vector<sync_key> &keys) : mName(name), mKeys(keys)
    {
        mTrack = {mName.data(), mKeys.data(), int(mKeys.size())};
    }
    cOwned(const cOwned &) = delete;
};

size_t Count(const std::string &text, const std::string &part)
{
    size_t count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        count++;
    return count;
}

// How high the drawn curve, the page's only line of several points, is at `x`.
double DrawnY(const std::string &page, double x)
{
    const std::string start = " points=\"";
    const size_t at = page.find(start, page.find("<polyline"));
    std::istringstream points(page.substr(at + start.size()));
    double fromX = 0, fromY = 0, toX = 0, toY = 0;
    char comma = 0;
    while (points >> toX >> comma >> toY) {
        if (toX >= x && toX > fromX)
            return fromY + (toY - fromY) * (x - fromX) / (toX - fromX);
        fromX = toX;
        fromY = toY;
    }
    ADD_FAILURE() << "no curve at " << x << " in " << page;
    return 0;
}

// 132 beats a minute, 8 rows a beat, 4 beats a bar, up to row 3624.
tracks::cPlotInput OfTheShow()
{
    tracks::cPlotInput input;
    input.mTempo = vyr::TempoOf(132.0);
    input.mLastRow = 3624.0;
    return input;
}

bool IsXml(const std::string &text)
{
    TiXmlDocument document;
    document.Parse(text.c_str());
    return !document.Error();
}
} // namespace

TEST(Plotter, AllTracksStandOnOnePageWithSectionsBarsSecondsAndWords)
{
    const cOwned fade("fade:plasma", {{0, 0, 1}, {320, 1, 2}, {640, 0, 0}});
    const cOwned photo("image:left", {{0, -1, 0}, {256, 5, 0}, {512, -1, 0}});
    tracks::cPlotInput input = OfTheShow();
    input.mTitle = "the show";
    input.mTracks = {&fade.mTrack, &photo.mTrack};
    input.mSections = {{"verse 1", 256, 768}};
    input.mValueNames["image:left"][5] = "photo.tovak04";
    input.mLyrics = {{0, 256, 320}};
    input.mWords[0] = "the sign says seven minutes";
    const std::string page = tracks::PlotShow(input);
    EXPECT_TRUE(IsXml(page));
    for (const char *text : {">the show<", ">fade:plasma<", ">image:left<", ">verse 1<",
                             ">tovak04<", ">the sign says seven minutes<", ">112<", ">3:20<"})
        EXPECT_THAT(page, HasSubstr(text));
}

// Bar 113 and a quarter lies at the right edge: 3624 rows over the lane's width.
TEST(Plotter, RowsLieOnTheAxisInProportion)
{
    const tracks::cTimeAxis axis{100, 3624, 0, 3624};
    EXPECT_EQ(axis.X(0), 100.0);
    EXPECT_EQ(axis.X(1812), 1912.0);
    EXPECT_EQ(axis.Row(axis.X(77)), 77.0);
}

TEST(Plotter, KeysShowTheirInterpolationAndCurvesTheirShape)
{
    const cOwned track("a", {{0, 0, 0}, {100, 1, 1}, {200, 2, 2}, {300, 3, 3}, {400, 0, 0}});
    const tracks::cTimeAxis axis{0, 400, 0, 400};
    const std::map<float, std::string> none;
    tracks::cSvg svg(400, 100, "white");
    tracks::cLane lane(track.mTrack, axis, 0, 90, "red", none);
    lane.Draw(svg);
    const std::string page = svg.Finish();
    EXPECT_EQ(Count(page, "<polygon"), 5u); // a mark a key
    // Value 3 at the top (y 0), 0 at the bottom (y 90): the hold is a step, 0 up to row 100.
    EXPECT_THAT(page, HasSubstr("points=\"0,90 0,90 100,90 100,60 200,30 "));
    // 30 pixels are 1. Linear is at 1.5 halfway. Smoothstep from 2 to 3 has gone 5/32 of the way at
    // a quarter of it, 1/2 at half of it; quadratic falls from 3 by a quarter of 3 halfway. Between
    // its corners, 3 pixels apart, a drawn curve may leave the true one by a tenth of a pixel.
    EXPECT_NEAR(DrawnY(page, 150), 90.0 - 30.0 * 1.5, 1e-6);
    EXPECT_NEAR(DrawnY(page, 225), 90.0 - 30.0 * (2.0 + 5.0 / 32.0), 0.1);
    EXPECT_NEAR(DrawnY(page, 250), 90.0 - 30.0 * 2.5, 0.1);
    EXPECT_NEAR(DrawnY(page, 350), 90.0 - 30.0 * (3.0 - 0.75), 0.1);
}

TEST(Plotter, OneTrackHasItsPageWithTheValueOfEveryKey)
{
    const cOwned track("flare:x", {{0, 0.25f, 1}, {1000, 0.75f, 1}, {2000, 0.5f, 0}});
    tracks::cPlotInput input = OfTheShow();
    input.mTracks = {&track.mTrack};
    input.mTitle = "flare:x";
    const std::string page = tracks::PlotOneTrack(input, track.mTrack);
    for (const char *value : {">0.25<", ">0.75<", ">0.5<"})
        EXPECT_THAT(page, HasSubstr(value));
}

TEST(Plotter, NamesOfAnyBytesMakeGoodXml)
{
    const cOwned track("<&\"\x01\xFF>", {{0, 1, 0}});
    tracks::cPlotInput input = OfTheShow();
    input.mTracks = {&track.mTrack};
    const std::string page = tracks::PlotShow(input);
    EXPECT_TRUE(IsXml(page));
    EXPECT_THAT(page, Not(HasSubstr("\x01")));
    EXPECT_THAT(page, Not(HasSubstr("\xFF")));
}

// A page has only so many pixels: past that, what is drawn no longer grows with the keys.
TEST(Plotter, AHundredThousandKeysMakeAPageOfBoundedSize)
{
    std::vector<sync_key> keys;
    for (int i = 0; i < 100'000; i++)
        keys.push_back({i, float(i % 17), i % 4});
    const cOwned track("a", keys);
    tracks::cPlotInput input = OfTheShow();
    input.mTracks = {&track.mTrack};
    EXPECT_LT(tracks::PlotShow(input).size(), 200'000u);
}

// 60 beats a minute of 2 rows: 40 rows are 20 s, and 6 bars and two thirds of 3 beats.
TEST(Plotter, BarsAndSecondsAreThoseOfTheTempo)
{
    const cOwned track("a", {{0, 1, 0}, {40, 1, 0}});
    tracks::cPlotInput input;
    input.mTracks = {&track.mTrack};
    input.mLastRow = 40.0;
    EXPECT_THAT(tracks::PlotShow(input), Not(HasSubstr(">0:10<"))); // seconds are not known
    input.mTempo = vyr::TempoOf(60.0, 2, 3);
    const std::string page = tracks::PlotShow(input);
    for (const char *text : {">0:00<", ">0:10<", ">0:20<", ">6<"})
        EXPECT_THAT(page, HasSubstr(text));
    EXPECT_THAT(page, Not(HasSubstr(">7<")));
}

TEST(Plotter, ATrackWithoutKeysSaysSo)
{
    const cOwned track("a", {});
    tracks::cPlotInput input = OfTheShow();
    input.mTracks = {&track.mTrack};
    EXPECT_THAT(tracks::PlotShow(input), HasSubstr("no keys: 0 everywhere"));
}

// Rows far outside any show: the grid must stay a grid of few lines.
TEST(Plotter, ExtremeRowsAreDrawn)
{
    const cOwned track("a", {{-2147483647 - 1, 1, 1}, {2147483647, -3e38f, 1}});
    tracks::cPlotInput input = OfTheShow();
    input.mTracks = {&track.mTrack};
    const std::string page = tracks::PlotShow(input);
    EXPECT_TRUE(IsXml(page));
    EXPECT_LT(page.size(), 200'000u);
}
