#include "tools/record/FrameGrid.h"

#include <gtest/gtest.h>

using record::cFrameGrid;
using record::cFrameRange;
using record::cFrameRate;
using record::kMicroRows;

namespace
{
const cFrameGrid sixty(cFrameRate{60, 1}, 17.6);

TEST(FrameRate, ReadsWholeNumbersAndFractions)
{
    EXPECT_EQ(cFrameRate::Parse("24")->mNumerator, 24);
    EXPECT_EQ(cFrameRate::Parse("24")->mDenominator, 1);
    EXPECT_EQ(cFrameRate::Parse("30000/1001")->mNumerator, 30000);
    EXPECT_EQ(cFrameRate::Parse("30000/1001")->mDenominator, 1001);
    EXPECT_EQ(cFrameRate::Parse("30000/1001")->ToText(), "30000/1001");
    EXPECT_EQ(cFrameRate::Parse("120")->ToText(), "120");
}

TEST(FrameRate, RefusesWhatIsNone)
{
    for (const char *text : {"", "0", "-24", "29.97", "60/", "/60", "60/0", "1/2", "1001", "2001/2",
                             "60fps", "60/1/1", "99999999999999999999", "24/-1"})
        EXPECT_FALSE(cFrameRate::Parse(text).has_value()) << text;
    EXPECT_TRUE(cFrameRate::Parse("1000").has_value());
    EXPECT_TRUE(cFrameRate::Parse("1").has_value());
}

// 17.6 rows a second: 60 frames are 17.6 rows.
TEST(FrameGrid, PlacesFrameAtItsMusicPosition)
{
    EXPECT_EQ(sixty.Row(0), 0.0);
    EXPECT_EQ(sixty.Row(60), 17.6);
    EXPECT_EQ(sixty.Seconds(90), 1.5);
    EXPECT_EQ(sixty.MicroRow(1), 293333);
    EXPECT_EQ(sixty.Rate().Sample(1), 735);
    const cFrameGrid ntsc(cFrameRate{30000, 1001}, 17.6);
    EXPECT_DOUBLE_EQ(ntsc.Seconds(30000), 1001.0);
    EXPECT_DOUBLE_EQ(ntsc.Row(300), 17.6 * 10.01);
}

// The last frame before row 3624 at 60 frames a second is 12354.
TEST(FrameGrid, CountsTheWholeShow)
{
    const auto count = [](int64_t rate) {
        return cFrameGrid(cFrameRate{rate, 1}, 17.6).Between(0, 3624 * kMicroRows).Count();
    };
    EXPECT_EQ(count(60), 12355);
    EXPECT_EQ(count(24), 4942);
    EXPECT_EQ(count(25), 5148);
    EXPECT_EQ(count(120), 24710);
}

TEST(FrameGrid, ChoosesFramesAtOrAfterFromAndBeforeTo)
{
    const cFrameRange range = sixty.Between(176 * kMicroRows, 352 * kMicroRows);
    EXPECT_EQ(range.mFirst, 600); // row 176 itself
    EXPECT_EQ(range.mEnd, 1200);  // row 352 not
    EXPECT_EQ(sixty.FirstAtOrAfter(176 * kMicroRows + 1), 601);
}

// A manifest prints row 17.893333 for frame 61, whose row is a little more.
TEST(FrameGrid, FindsFrameByTheRowThatIsPrintedForIt)
{
    const double crooked = 125.0 / 60.0 * 8.0; // rows a second that are no whole millionths
    for (double rowsPerSecond : {17.6, 16.0, crooked, 0.1, 3000.0})
        for (const cFrameRate &rate :
             {cFrameRate{60, 1}, cFrameRate{30000, 1001}, cFrameRate{25, 1}}) {
            const cFrameGrid grid(rate, rowsPerSecond);
            for (int64_t frame = 0; frame < 5000; frame++)
                ASSERT_EQ(grid.FirstAtOrAfter(grid.MicroRow(frame)), frame);
        }
}

TEST(FrameRange, PartsFollowEachOtherAndDifferByOneFrame)
{
    const cFrameRange range{100, 741};
    for (int64_t parts : {1, 2, 3, 7, 16, 641}) {
        int64_t next = range.mFirst;
        for (int64_t part = 1; part <= parts; part++) {
            const cFrameRange piece = range.Part(part, parts);
            EXPECT_EQ(piece.mFirst, next);
            EXPECT_GE(piece.Count(), 641 / parts);
            EXPECT_LE(piece.Count(), 641 / parts + 1);
            next = piece.mEnd;
        }
        EXPECT_EQ(next, range.mEnd);
    }
}
} // namespace
