#include "tools/record/Sheet.h"
#include "tools/record/Progress.h"

#include <gtest/gtest.h>

namespace
{
const vyr::cTempo tempo = vyr::TempoOf(132.0);

// 32 rows a bar, 17.6 rows a second: bar 24 is at 43.636 seconds.
TEST(SheetLabel, TellsBarRowAndTime)
{
    EXPECT_EQ(record::SheetLabel(768 * record::kMicroRows, tempo), "bar 24   row 768   0:43.6");
    EXPECT_EQ(record::SheetLabel(0, tempo), "bar 0   row 0   0:00.0");
    EXPECT_EQ(record::SheetLabel(3200 * record::kMicroRows, tempo), "bar 100   row 3200   3:01.8");
    EXPECT_EQ(record::SheetLabel(16 * record::kMicroRows, tempo), "bar 0.5   row 16   0:00.9");
}

TEST(SheetRows, AreOneStepApartFromFirstToEnd)
{
    record::cOptions options;
    options.mTo = 3624 * record::kMicroRows;
    EXPECT_EQ(SheetRows(options, tempo).size(), 29u); // 113.25 bars, every 4
    options.mEveryBars = 0.5;
    options.mFrom = 100 * record::kMicroRows;
    options.mTo = 140 * record::kMicroRows;
    const std::vector<int64_t> expected = {100 * record::kMicroRows, 116 * record::kMicroRows,
                                           132 * record::kMicroRows};
    EXPECT_EQ(SheetRows(options, tempo), expected);
}

// 25 of 100 frames in 5 seconds: 5 a second, 15 seconds left.
TEST(Progress, TellsFrameRowShareSpeedAndTimeLeft)
{
    EXPECT_EQ(record::cProgress::Describe({50, 150}, 74, 21.7, 5.0),
              "frame 25/100  row 21.7  25 %  5.0 frames/s  0:15 left");
}
} // namespace
