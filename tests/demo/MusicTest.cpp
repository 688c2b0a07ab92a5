#include "demo/Music.h"

#include <gtest/gtest.h>

namespace
{
TEST(Music, ASecondIsSeventeenRowsAndSixTenths)
{
    EXPECT_EQ(demo::RowAtPosition(0), 0.0);
    EXPECT_EQ(demo::RowAtPosition(176400), 17.6);
    EXPECT_EQ(demo::RowAtPosition(88200), 8.8);
    EXPECT_EQ(demo::RowAtPosition(4294967295u), 4294967295.0 / 176400.0 * 17.6);
}

TEST(Music, AssumesItsRateAndFile)
{
    EXPECT_EQ(samplerate, 44100);
    EXPECT_STREQ(music_url, "data/waiting.mp3");
}
} // namespace
