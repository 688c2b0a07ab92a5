#include "sound/SoundPlayer.h"

#include "tests/sound/SoundTestSupport.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <filesystem>

using vyr::SoundDecoder;
using vyr::SoundDevice;
using vyr::SoundOutput;
using vyr::SoundPlayer;
using vyr::SoundProgress;
using vyr::SoundVoice;
using vyr::SteadySeconds;

namespace
{
/// What a test does to the device, from outside.
struct cSwitches
{
    std::atomic<bool> isConnected = true, isStalled = false;
    std::atomic<bool> hasVoice = true;
    std::atomic<double> gapSeconds = 0;     // that the voice has had
    std::atomic<double> heardSeconds = 100; // as the device last said; it may run for long before
};

/// A device of 20 ms blocks without latency.
class cFakeDevice : public SoundDevice
{
public:
    explicit cFakeDevice(cSwitches &switches) : mSwitches(switches) {}

    double GetBlockSeconds() const override { return 0.02; }

    double ReadHeardSeconds() override
    {
        const double now = SteadySeconds();
        if (!mSwitches.isStalled && mSwitches.isConnected)
            mRun += now - mLast;
        mLast = now;
        mSwitches.heardSeconds = std::floor(mRun / 0.02) * 0.02;
        return mSwitches.heardSeconds;
    }

    bool IsConnected() override { return mSwitches.isConnected; }
    std::unique_ptr<SoundVoice> CreateVoice(int rate) override;

private:
    cSwitches &mSwitches;
    double mRun = mSwitches.heardSeconds, mLast = SteadySeconds();
};

class cFakeVoice : public SoundVoice
{
public:
    cFakeVoice(cSwitches &switches, int rate) : mSwitches(switches), mRate(rate) {}

    bool HasRoom() override
    {
        const double heard = (mSwitches.heardSeconds - mProgress.startSeconds) * mRate;
        return !mSwitches.isConnected ||
               mProgress.limitFrames - heard < double((blockCount - 1) * blockFrames);
    }

    bool Queue(std::span<const int16_t> samples) override
    {
        if (mProgress.limitFrames == 0)
            mProgress.startSeconds = mSwitches.heardSeconds;
        if (!mSwitches.isConnected) // all of the queue counts as heard
            mProgress.startSeconds = mSwitches.heardSeconds - mProgress.limitFrames / mRate;
        mProgress.limitFrames += double(samples.size() / 2);
        return mSwitches.isConnected;
    }

    SoundProgress GetProgress() override
    {
        return {mProgress.startSeconds + mSwitches.gapSeconds, mProgress.limitFrames};
    }

private:
    cSwitches &mSwitches;
    double mRate;
    SoundProgress mProgress;
};

std::unique_ptr<SoundVoice> cFakeDevice::CreateVoice(int rate)
{
    return mSwitches.hasVoice ? std::make_unique<cFakeVoice>(mSwitches, rate) : nullptr;
}

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

// Asks all the time, as the show does: the position after `seconds`. It never goes back.
double Watch(SoundPlayer &player, double seconds)
{
    double last = GetSeconds(player);
    for (const double end = SteadySeconds() + seconds; SteadySeconds() < end;) {
        const double now = GetSeconds(player);
        EXPECT_GE(now, last);
        last = now;
        test::Wait(0.002);
    }
    return last;
}

// A busy machine keeps a test waiting; the show would see a stutter, and so does the test.
const double patience = 0.1;
} // namespace

TEST(SoundPlayer, PlaysToTheLastFrameAndStandsStill)
{
    SoundOutput output(nullptr);
    const auto decoder = OpenSound(test::SweepPath());
    SoundPlayer player(output, *decoder);
    const double before = Watch(player, 0.5);
    EXPECT_GT(before, 0.5 - patience);
    EXPECT_LT(before, 0.5 + patience);
    Watch(player, 1);
    EXPECT_EQ(player.GetFrames(), double(test::sweepFrames));
    Watch(player, 0.1);
    EXPECT_EQ(player.GetFrames(), double(test::sweepFrames));
}

TEST(SoundPlayer, FollowsTheDevice)
{
    const test::cTemporaryFolder folder;
    cSwitches switches;
    SoundOutput output(std::make_unique<cFakeDevice>(switches));
    const auto decoder = OpenLongSound();
    SoundPlayer player(output, *decoder);
    EXPECT_NEAR(Watch(player, 1), 1, patience);
}

TEST(SoundPlayer, StandsWhileTheDeviceIsStalledAndGoesOnWithIt)
{
    const test::cTemporaryFolder folder;
    cSwitches switches;
    SoundOutput output(std::make_unique<cFakeDevice>(switches));
    const auto decoder = OpenLongSound();
    SoundPlayer player(output, *decoder);
    Watch(player, 0.5);
    switches.isStalled = true;
    const double stalled = Watch(player, 0.2);
    EXPECT_EQ(Watch(player, 0.5), stalled);
    EXPECT_LT(stalled, 0.5 + 2 * patience);
    switches.isStalled = false;
    EXPECT_NEAR(Watch(player, 0.5), stalled + 0.5, patience);
}

// The queue ran dry, and the rest of the stream comes later: the position waits for it.
TEST(SoundPlayer, WaitsOutAGapOfTheStream)
{
    const test::cTemporaryFolder folder;
    cSwitches switches;
    SoundOutput output(std::make_unique<cFakeDevice>(switches));
    const auto decoder = OpenLongSound();
    SoundPlayer player(output, *decoder);
    const double before = Watch(player, 0.5);
    switches.gapSeconds = 0.3;
    EXPECT_LT(Watch(player, 0.2), before + patience);
    EXPECT_NEAR(Watch(player, 0.5), before + 0.4, patience);
}

TEST(SoundPlayer, RunsOnSilentlyWhenTheDeviceIsGone)
{
    EXPECT_TRUE(test::RunAlone("none", [] {
        testing::internal::CaptureStderr();
        const test::cTemporaryFolder folder;
        cSwitches switches;
        SoundOutput output(std::make_unique<cFakeDevice>(switches));
        const auto decoder = OpenLongSound();
        SoundPlayer player(output, *decoder);
        const double before = Watch(player, 0.5);
        switches.isConnected = false;
        EXPECT_NEAR(Watch(player, 1), before + 1, patience); // beyond what was queued, too
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "The sound device is gone: the show plays on silently.\n");
    }));
}

TEST(SoundPlayer, EndsWhereItShouldWhenTheDeviceIsGone)
{
    EXPECT_TRUE(test::RunAlone("none", [] {
        cSwitches switches;
        SoundOutput output(std::make_unique<cFakeDevice>(switches));
        const auto decoder = OpenSound(test::SweepPath());
        SoundPlayer player(output, *decoder);
        Watch(player, 0.3);
        switches.isConnected = false;
        Watch(player, 1.2);
        EXPECT_EQ(player.GetFrames(), double(test::sweepFrames));
    }));
}

TEST(SoundPlayer, PlaysSilentlyOnADeviceWithoutAVoice)
{
    const test::cTemporaryFolder folder;
    cSwitches switches;
    switches.hasVoice = false;
    SoundOutput output(std::make_unique<cFakeDevice>(switches));
    const auto decoder = OpenLongSound();
    SoundPlayer player(output, *decoder);
    EXPECT_NEAR(Watch(player, 0.5), 0.5, patience);
}

// The file is read while it plays: what is cut off from it now will not be heard.
TEST(SoundPlayer, DecodesLittleMoreThanIsHeard)
{
    const test::cTemporaryFolder folder;
    SoundOutput output(nullptr);
    const auto decoder = OpenLongSound(30); // 36 seconds, half a megabyte
    SoundPlayer player(output, *decoder);
    Watch(player, 0.1);
    std::filesystem::resize_file("long.mp3", 20000); // a second and a quarter
    Watch(player, 1.5);
    EXPECT_NEAR(GetSeconds(player), 1.25, 0.25);
}

TEST(SoundPlayer, StopsAtOnce)
{
    const test::cTemporaryFolder folder;
    SoundOutput output(nullptr);
    const auto decoder = OpenLongSound();
    for (int i = 0; i < 20; i++) {
        const double before = SteadySeconds();
        {
            SoundPlayer player(output, *decoder);
        }
        EXPECT_LT(SteadySeconds() - before, patience);
    }
}
