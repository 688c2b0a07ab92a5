#include "sound/SoundPlayer.h"
#include "sound/SoundDecoder.h"

#include "tests/sound/SoundTestDevice.h"
#include "tests/sound/SoundTestSupport.h"
#include "tests/sound/SoundTestTime.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

using test::cTime;
using vyr::SoundDecoder;
using vyr::SoundOutput;
using vyr::SoundPlayer;

namespace
{
// What the clock makes of readings every 4 ms of a device that moves by 20 ms at a time.
const double accuracy = 0.001; // seconds

std::unique_ptr<SoundDecoder> OpenSound(const std::string &path)
{
    std::unique_ptr<SoundDecoder> decoder;
    EXPECT_EQ(SoundDecoder::Open(path.c_str(), decoder), FMOD_OK);
    return decoder;
}

std::unique_ptr<SoundDecoder> OpenLongSound(int count = 10)
{
    test::WriteFile("long.mp3", test::LongSweep(count));
    return OpenSound("long.mp3");
}

double GetSeconds(SoundPlayer &player) { return player.GetFrames() / player.GetRate(); }

// Asks every 2 ms, as a show does: the position after `seconds`. It never goes back.
double Watch(SoundPlayer &player, double seconds)
{
    double last = GetSeconds(player);
    for (const double end = cTime::Now() + seconds; cTime::Now() < end - 1e-9;) {
        cTime::Advance(0.002);
        const double now = GetSeconds(player);
        EXPECT_GE(now, last);
        last = now;
    }
    return last;
}

/// Sound on a device, and a long file that plays.
class Player : public testing::Test
{
protected:
    void Play() { mPlayer = std::make_unique<SoundPlayer>(mOutput, *mDecoder); }
    double WatchFor(double seconds) { return Watch(*mPlayer, seconds); }

    test::cTemporaryFolder mFolder;
    test::cSpeaker mSpeaker;
    SoundOutput mOutput{test::MakeDevice(mSpeaker)};
    std::unique_ptr<SoundDecoder> mDecoder = OpenLongSound();
    std::unique_ptr<SoundPlayer> mPlayer;
};
} // namespace

TEST(SoundPlayer, PlaysToTheLastFrameAndStandsStill)
{
    SoundOutput output(nullptr);
    const auto decoder = OpenSound(test::SweepPath());
    SoundPlayer player(output, *decoder);
    EXPECT_NEAR(Watch(player, 0.5), 0.5, 1e-6);
    EXPECT_NEAR(Watch(player, 0.5), 1.0, 1e-6);
    EXPECT_FALSE(player.HasPlayedOut());
    Watch(player, 0.2);
    EXPECT_EQ(player.GetFrames(), double(test::sweepFrames));
    EXPECT_TRUE(player.HasPlayedOut());
    Watch(player, 10);
    EXPECT_EQ(player.GetFrames(), double(test::sweepFrames));
}

TEST_F(Player, FollowsTheDevice)
{
    Play();
    EXPECT_NEAR(WatchFor(1), 1, accuracy);
    EXPECT_NEAR(WatchFor(5), 6, accuracy);
}

TEST_F(Player, StandsWhileTheDeviceIsStalledAndGoesOnWithIt)
{
    Play();
    WatchFor(0.5);
    mSpeaker.SetStalled(true);
    const double stalled = WatchFor(0.2);
    EXPECT_EQ(WatchFor(0.5), stalled);
    EXPECT_GE(stalled, 0.5);
    EXPECT_LT(stalled, 0.5 + 0.02 + 0.05); // a block, and what the clock waits for it
    mSpeaker.SetStalled(false);
    // It waits for the sound to catch up, and goes on with it.
    EXPECT_NEAR(WatchFor(0.5), 1.0, accuracy);
}

// The queue ran dry, and the rest of the stream comes later: the position waits for it.
TEST_F(Player, WaitsOutAGapOfTheStream)
{
    Play();
    const double before = WatchFor(0.5);
    mSpeaker.LoseTime(0.3);
    EXPECT_LE(WatchFor(0.2), before + 0.01); // a pass of the thread
    EXPECT_NEAR(WatchFor(0.5), before + 0.4, accuracy);
}

TEST_F(Player, RunsOnSilentlyWhenTheDeviceIsGone)
{
    testing::internal::CaptureStderr();
    Play();
    const double before = WatchFor(0.5);
    mSpeaker.Unplug();
    EXPECT_NEAR(WatchFor(1), before + 1, accuracy); // beyond what was queued, too
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "The sound device is gone: the show plays on silently.\n");
}

TEST_F(Player, EndsWhereItShouldWhenTheDeviceIsGone)
{
    testing::internal::CaptureStderr();
    mDecoder = OpenSound(test::SweepPath());
    Play();
    WatchFor(0.3);
    mSpeaker.Unplug();
    WatchFor(1.0);
    EXPECT_EQ(mPlayer->GetFrames(), double(test::sweepFrames));
    testing::internal::GetCapturedStderr();
}

TEST_F(Player, PlaysSilentlyOnADeviceWithoutAVoice)
{
    mSpeaker.mHasVoice = false;
    Play();
    EXPECT_NEAR(WatchFor(0.5), 0.5, accuracy);
}

// The device gets the file's frames, each once and in their order.
TEST_F(Player, QueuesEveryFrameOnce)
{
    std::vector<int16_t> frames(2 * 60000);
    mDecoder = OpenSound(test::SweepPath());
    frames.resize(2 * mDecoder->Read(frames.data(), 60000));
    mDecoder->Rewind();
    Play();
    WatchFor(1.3);
    EXPECT_EQ(mPlayer->GetFrames(), double(test::sweepFrames));
    EXPECT_EQ(mSpeaker.GetQueued(), frames);
}

// The file is read while it plays: what is cut off from it now will not be heard.
TEST(SoundPlayer, DecodesLittleMoreThanIsHeard)
{
    const test::cTemporaryFolder folder;
    SoundOutput output(nullptr);
    const auto decoder = OpenLongSound(30); // 36 seconds, half a megabyte
    SoundPlayer player(output, *decoder);
    Watch(player, 0.1);
    std::filesystem::resize_file("long.mp3", 20000); // a second and a quarter, its head included
    EXPECT_NEAR(Watch(player, 1.5), 1.2, 0.05);
}

// Its thread pauses, and time stands still: whoever waited for the pause would wait for ever.
TEST(SoundPlayer, StopsAtOnce)
{
    const test::cTemporaryFolder folder;
    SoundOutput output(nullptr);
    const auto decoder = OpenLongSound();
    const double before = cTime::Now();
    for (int i = 0; i < 20; i++) {
        SoundPlayer player(output, *decoder);
        cTime::Advance(0); // until it pauses
    }
    EXPECT_EQ(cTime::Now(), before);
}
