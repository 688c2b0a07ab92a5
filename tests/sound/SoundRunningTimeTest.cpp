#include "sound/SoundRunningTime.h"

#include <gtest/gtest.h>

using vyr::SoundRunningTime;

TEST(SoundRunningTime, BeginsAtZeroAndFollowsTheClock)
{
    SoundRunningTime time;
    EXPECT_EQ(time.At(1000.0), 0.0);
    EXPECT_EQ(time.At(1000.0625), 0.0625); // exact in binary, as all numbers here
    EXPECT_EQ(time.At(1000.125), 0.125);
}

// A fifth of a second without a question: nobody was running.
TEST(SoundRunningTime, LeavesOutTheTimeInWhichTheProgramWasStopped)
{
    SoundRunningTime time;
    time.At(10.0);
    time.At(10.0625);
    EXPECT_EQ(time.At(15.0), 0.0625);
    EXPECT_EQ(time.At(15.0625), 0.125);
}

TEST(SoundRunningTime, CountsAPauseOfASlowFrame)
{
    SoundRunningTime time;
    time.At(10.0);
    EXPECT_NEAR(time.At(10.0 + SoundRunningTime::stoppedSeconds - 0.001), 0.199, 1e-9);
}

// Two threads read their clocks, then one overtakes the other.
TEST(SoundRunningTime, NeverGoesBack)
{
    SoundRunningTime time;
    time.At(10.0);
    time.At(10.0625);
    EXPECT_EQ(time.At(10.03125), 0.0625);
    EXPECT_EQ(time.At(10.09375), 0.09375);
}
