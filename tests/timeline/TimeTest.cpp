#include "show/Time.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace
{
const vyr::cTempo theShow = vyr::TempoOf(132.0, 8, 4);

int Row(const std::string &text, const vyr::cTempo &tempo = theShow)
{
    int row = INT_MIN;
    std::string expected;
    EXPECT_TRUE(vyr::ParseRow(text, tempo, row, expected)) << text << ": " << expected;
    return row;
}

std::string Refusal(const std::string &text, const vyr::cTempo &tempo = theShow)
{
    int row = 0;
    std::string expected;
    EXPECT_FALSE(vyr::ParseRow(text, tempo, row, expected)) << text;
    return expected;
}
} // namespace

// 32 rows a bar, 8 a beat.
TEST(Time, BarsBeatsAndRowsAddUp)
{
    EXPECT_EQ(Row("0:0:0"), 0);
    EXPECT_EQ(Row("24:0:0"), 768);
    EXPECT_EQ(Row("24:2:5"), 768 + 16 + 5);
    EXPECT_EQ(Row("111:2"), 3552 + 16);
    EXPECT_EQ(Row("-1:0:4"), -36); // the sign stands for the whole
}

TEST(Time, PlainNumbersAreRows)
{
    EXPECT_EQ(Row("768"), 768);
    EXPECT_EQ(Row("-8"), -8);
    EXPECT_EQ(Row("2147483647"), INT_MAX);
    EXPECT_EQ(Row("-2147483648"), INT_MIN);
}

// 17.6 rows a second: 43.6 s is row 767.36.
TEST(Time, SecondsGoToTheNearestRow)
{
    EXPECT_EQ(Row("43.6s"), 767);
    EXPECT_EQ(Row("1s"), 18); // 17.6
    EXPECT_EQ(Row("10s"), 176);
    EXPECT_EQ(Row("-1s"), -18);
}

TEST(Time, WhatIsNoTimeIsRefused)
{
    for (const char *text : {"", "-", "x", "1:", ":1", "::", "1::2", "1:2:3:4", "1e3", "s", "0x10",
                             "1:2s", "--1", "+1", "nan", "inf", "1.5.2"})
        EXPECT_NE(Refusal(text), "") << text;
}

TEST(Time, RangesAreNamed)
{
    EXPECT_EQ(Refusal("1:4:0"), "a beat from 0 to 3 behind the bar");
    EXPECT_EQ(Refusal("1:3:8"), "a row from 0 to 7 behind the beat");
    EXPECT_EQ(Refusal("12.5"), "a whole row");
    EXPECT_EQ(Refusal("2147483648"), "a row that fits into 32 bits");
    EXPECT_EQ(Refusal("67108864:0:0"), "a row that fits into 32 bits"); // 2^31
}

TEST(Time, PositionsMayBeFractional)
{
    double rows = 0.0;
    std::string expected;
    ASSERT_TRUE(vyr::ParsePosition("12.5", theShow, rows, expected));
    EXPECT_EQ(rows, 12.5);
    ASSERT_TRUE(vyr::ParsePosition("-0.5s", theShow, rows, expected));
    EXPECT_EQ(rows, -8.8);
}

TEST(Time, FormattedRowsReadBack)
{
    for (int row : {0, 1, 7, 8, 31, 32, 3624, -1, -33, INT_MAX, INT_MIN})
        EXPECT_EQ(Row(vyr::FormatRow(row, theShow)), row);
    EXPECT_EQ(vyr::FormatRow(789, theShow), "24:2:5");
}

TEST(Time, FormattedValuesAreShortAndKeepTheSignOfZero)
{
    EXPECT_EQ(vyr::FormatValue(0.1f), "0.1");
    EXPECT_EQ(vyr::FormatValue(-0.0f), "-0");
    EXPECT_EQ(vyr::FormatValue(1.0f), "1");
    EXPECT_EQ(vyr::FormatValue(std::numeric_limits<float>::denorm_min()), "1e-45");
}

// 3 beats of 5 rows are a bar of 15; 90 beats a minute are 7.5 rows a second.
TEST(Time, BarsBeatsAndSecondsAreThoseOfTheTempo)
{
    const vyr::cTempo waltz = vyr::TempoOf(90.0, 5, 3);
    EXPECT_EQ(Row("2:1:4", waltz), 39);
    EXPECT_EQ(Row("2s", waltz), 15);
    EXPECT_EQ(vyr::FormatRow(39, waltz), "2:1:4");
    EXPECT_EQ(Refusal("1:3", waltz), "a beat from 0 to 2 behind the bar");
    EXPECT_EQ(Refusal("1:2:5", waltz), "a row from 0 to 4 behind the beat");
}

TEST(Time, SecondsNeedATempo)
{
    EXPECT_EQ(Row("24:2:5", {}), 789); // 8 rows a beat, 4 beats a bar
    EXPECT_EQ(
        Refusal("43.6s", {}),
        "rows (768) or bars:beats:rows (24:0:0), as there are no seconds without a tempo line");
}

// The show counts 17.6 rows a second; its timeline must mean exactly the same number.
TEST(Tempo, OfTheShowIsExact)
{
    EXPECT_EQ(vyr::TempoOf(132.0, 8, 4).mRowsPerSecond, 17.6);
    EXPECT_EQ(vyr::FormatTempo(vyr::cTempo{17.6}), "132 8 4");
}

TEST(Tempo, FormattedReadsBack)
{
    for (double beats : {1.0, 77.7, 97.3, 119.99, 128.0, 174.5, 333.0 / 7.0, 10'000.0})
        for (int rows : {1, 3, 6, 7, 1000}) {
            const vyr::cTempo tempo = vyr::TempoOf(beats, rows, 4);
            const std::string text = vyr::FormatTempo(tempo);
            EXPECT_EQ(vyr::TempoOf(std::stod(text), rows, 4), tempo) << text;
        }
}
