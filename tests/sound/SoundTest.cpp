// The sound library as the show calls it, in the tests' time: on a device, and without one.

#include "sound/Sound.h"

#include "tests/sound/SoundTestDevice.h"
#include "tests/sound/SoundTestSupport.h"
#include "tests/sound/SoundTestTime.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

using test::cShow;
using test::cTime;

namespace
{
const double bytesPerSecond = 176400;
const double accuracy = 0.001; // seconds

std::string LongSweepFile()
{
    test::WriteFile("long.mp3", test::LongSweep(10));
    return "long.mp3";
}

// The position in seconds at every millisecond of the next `seconds`.
test::cStraightness Watch(cShow &show, double seconds)
{
    test::cStraightness straightness;
    for (const double end = cTime::Now() + seconds; cTime::Now() < end - 1e-9;) {
        cTime::Advance(0.001);
        straightness.Add(cTime::Now(), show.GetSeconds());
    }
    straightness.Fit();
    return straightness;
}

class Sound : public testing::TestWithParam<bool>
{
protected:
    Sound()
    {
        testing::internal::CaptureStderr(); // without a device it says so
        test::PlugIn(GetParam() ? &mSpeaker : nullptr);
    }
    ~Sound() override
    {
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(said, GetParam() ? "" : "No sound device: the show plays silently.\n");
        test::PlugIn(nullptr);
    }

    test::cTemporaryFolder mFolder;
    test::cSpeaker mSpeaker;
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Device, Sound, testing::Bool(),
                         [](const auto &given) { return given.param ? "With" : "Without"; });

TEST_P(Sound, PlaysTheShowsCalls)
{
    cShow show(LongSweepFile());
    Watch(show, 1);
    EXPECT_EQ(show.GetPosition() % 4, 0u); // whole frames
    EXPECT_NEAR(show.GetSeconds(), 1, accuracy);
    show.Stop();
}

// Where the mixer is ahead of the ear, the position is the ear's.
TEST_P(Sound, PositionIsOfWhatIsHeardNotOfWhatIsMixed)
{
    mSpeaker.mLatencySeconds = 0.05;
    cShow show(LongSweepFile());
    cTime::Advance(0.01);
    mSpeaker.mLatencySeconds = 0.1; // another device was chosen: it is heard so much later
    Watch(show, 2);
    EXPECT_NEAR(show.GetSeconds(), GetParam() ? 2.01 - 0.05 : 2.01, accuracy);
    show.Stop();
}

// The bars of the clock: even to 3 ms, at the true rate to 0.002. On a test's device it is better.
TEST_P(Sound, PositionRunsEvenlyAtTheTrueRate)
{
    cShow show(LongSweepFile());
    Watch(show, 0.2);
    const test::cStraightness straightness = Watch(show, 8);
    EXPECT_EQ(straightness.CountStepsBack(), 0);
    EXPECT_LT(straightness.GetRms(), 0.0005);
    EXPECT_LT(straightness.GetWorst(), 0.002);
    EXPECT_NEAR(straightness.GetSlope(), 1, 0.0002);
    show.Stop();
}

TEST_P(Sound, PositionBeginsAtZeroAndEndsAtTheLastFrame)
{
    cShow show(test::SweepPath());
    EXPECT_EQ(show.GetPosition(), 0u);
    EXPECT_EQ(Watch(show, 1.6).CountStepsBack(), 0);
    EXPECT_EQ(show.GetPosition(), 4 * test::sweepFrames);
    Watch(show, 10);
    EXPECT_EQ(show.GetPosition(), 4 * test::sweepFrames);
    show.Stop();
}

TEST_P(Sound, UnitsAgree)
{
    cShow show(test::SweepPath());
    Watch(show, 1.6);
    EXPECT_EQ(show.GetPosition(FMOD_TIMEUNIT_PCM), test::sweepFrames);
    EXPECT_EQ(show.GetPosition(FMOD_TIMEUNIT_MS), 1133u); // 50000 / 44.1, rounded down
    show.Stop();
}

// 22050 frames a second, each counted as 4 bytes: for the show, which counts on 44100, half speed.
TEST_P(Sound, AFileAtAnotherRateCountsItsOwnFrames)
{
    cShow show(test::MonoSweepPath());
    Watch(show, 0.2);
    EXPECT_NEAR(Watch(show, 0.7).GetSlope(), 0.5, 0.001);
    Watch(show, 0.7);
    EXPECT_EQ(show.GetPosition(), 4 * test::monoSweepFrames);
    show.Stop();
}

// The machine's clock runs on while the program is stopped; the music does not. Nothing of the
// program runs meanwhile, the device's thread neither.
TEST_P(Sound, AStoppedProgramGoesOnWhereItWas)
{
    cShow show(LongSweepFile());
    Watch(show, 1);
    const double before = show.GetSeconds();
    mSpeaker.SetStalled(true);
    cTime::AdvanceWithoutThreads(1.5);
    mSpeaker.SetStalled(false);
    // A block, and what the clock waits for it.
    EXPECT_LT(show.GetSeconds(), before + 0.02 + 0.05);
    EXPECT_EQ(Watch(show, 1).CountStepsBack(), 0);
    EXPECT_NEAR(show.GetSeconds(), 2, 0.02);
    EXPECT_NEAR(Watch(show, 1).GetSlope(), 1, 0.001);
    show.Stop();
}

TEST_P(Sound, ASystemMayBeOpenedAgain)
{
    cShow show(test::SweepPath());
    EXPECT_EQ(show.system->close(), FMOD_OK);
    testing::internal::GetCapturedStderr();
    testing::internal::CaptureStderr();
    EXPECT_EQ(show.system->init(1, 0, nullptr), FMOD_OK);
    EXPECT_EQ(
        show.system->createStream(test::SweepPath().c_str(), test::showMode, nullptr, &show.sound),
        FMOD_OK);
    EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, show.sound, false, &show.channel), FMOD_OK);
    Watch(show, 0.4);
    EXPECT_NEAR(show.GetSeconds(), 0.4, accuracy);
    show.Stop();
}

TEST_P(Sound, ASoundPlayedAgainBeginsAnew)
{
    cShow show(test::SweepPath());
    Watch(show, 0.5);
    EXPECT_NEAR(show.GetSeconds(), 0.5, accuracy);
    FMOD::Channel *again = nullptr;
    EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, show.sound, false, &again), FMOD_OK);
    EXPECT_EQ(again, show.channel);
    EXPECT_EQ(show.GetPosition(), 0u);
    Watch(show, 1.5);
    EXPECT_EQ(show.GetPosition(), 4 * test::sweepFrames);
    show.Stop();
}

TEST_P(Sound, APausedSoundStaysAtItsBeginning)
{
    cShow show(test::SweepPath());
    show.system->playSound(FMOD_CHANNEL_FREE, show.sound, true, nullptr);
    Watch(show, 0.3);
    EXPECT_EQ(show.GetPosition(), 0u);
    show.Stop();
}

TEST_P(Sound, TwoSystemsPlaySideBySide)
{
    cShow one(test::SweepPath());
    Watch(one, 0.1);
    testing::internal::GetCapturedStderr();
    testing::internal::CaptureStderr(); // the second one says the same
    cShow two(test::MonoSweepPath());
    Watch(one, 1.8);
    EXPECT_EQ(one.GetPosition(), 4 * test::sweepFrames);
    EXPECT_EQ(two.GetPosition(), 4 * test::monoSweepFrames);
    one.Stop();
    two.Stop();
}
