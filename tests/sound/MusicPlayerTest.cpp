#include "sound/MusicPlayer.h"

#include "tests/sound/SoundTestDevice.h"
#include "tests/sound/SoundTestSupport.h"
#include "tests/sound/SoundTestTime.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

using test::cTime;
using vyr::MusicPlayer;
using vyr::SoundOutput;

namespace
{
const double length = double(test::sweepFrames) / 44100; // seconds

/// The sweep, in silence, whose time is exactly the machine's.
class Music : public testing::Test
{
protected:
    Music() { EXPECT_NE(mMusic, nullptr) << mError; }

    double After(double seconds)
    {
        cTime::Advance(seconds);
        return mMusic->GetSeconds();
    }

    std::string mError;
    SoundOutput mOutput;
    std::unique_ptr<MusicPlayer> mMusic = MusicPlayer::Open(test::SweepPath(), mOutput, mError);
};

TEST_F(Music, IsSilentUntilItPlays)
{
    EXPECT_EQ(After(0.1), 0.0);
    EXPECT_FALSE(mMusic->HasEnded());
}

TEST_F(Music, PlaysFromTheMiddleToTheEnd)
{
    mMusic->Play(1.0);
    EXPECT_NEAR(mMusic->GetSeconds(), 1.0, 1e-4); // the nearest frame
    EXPECT_NEAR(After(0.1), 1.1, 1e-4);
    EXPECT_FALSE(mMusic->HasEnded());
    EXPECT_NEAR(After(0.2), length, 1e-4);
    EXPECT_TRUE(mMusic->HasEnded());
}

TEST_F(Music, CanBeStartedAgainAnywhere)
{
    mMusic->Play(0.9);
    After(0.15);
    mMusic->Play(0.25);
    EXPECT_NEAR(After(0.1), 0.35, 1e-4);
    mMusic->Play(99);
    EXPECT_NEAR(After(0.1), length, 1e-4);
    EXPECT_TRUE(mMusic->HasEnded());
    mMusic->Play(-5);
    EXPECT_NEAR(After(0.1), 0.1, 1e-4);
    EXPECT_FALSE(mMusic->HasEnded());
}

TEST_F(Music, StandsWhereItIsStopped)
{
    mMusic->Play(0.5);
    After(0.1);
    mMusic->Stop();
    EXPECT_NEAR(After(0.1), 0.6, 1e-4);
    mMusic->Play(mMusic->GetSeconds());
    EXPECT_NEAR(After(0.1), 0.7, 1e-4);
}

TEST(MusicPlayer, WhatIsNoMusicIsTold)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("text.mp3", std::string(1000, 'x'));
    SoundOutput output;
    for (const char *path : {"nowhere.mp3", "text.mp3", "."}) {
        std::string error;
        EXPECT_EQ(MusicPlayer::Open(path, output, error), nullptr) << path;
        EXPECT_NE(error, "") << path;
    }
}
} // namespace
