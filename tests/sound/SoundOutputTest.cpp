#include "sound/SoundOutput.h"

#include "sound/SoundSilence.h"
#include "tests/sound/SoundTestDevice.h"
#include "tests/sound/SoundTestTime.h"

#include <gtest/gtest.h>

#include <vector>

using test::cTime;
using vyr::SoundOutput;
using vyr::SoundProgress;
using vyr::SoundSilence;
using vyr::SoundVoice;

namespace
{
const double rounding = 1e-9; // seconds

std::string SaidBy(std::unique_ptr<vyr::SoundDevice> device)
{
    testing::internal::CaptureStderr();
    {
        const SoundOutput output(std::move(device));
    }
    return testing::internal::GetCapturedStderr();
}

// Every 2 ms, as a show does.
void AskFor(SoundOutput &output, double seconds, void (*advance)(double) = cTime::Advance)
{
    for (const double end = cTime::Now() + seconds; cTime::Now() < end - rounding;) {
        output.GetHeardSeconds();
        advance(0.002);
    }
}
} // namespace

TEST(SoundOutput, SilenceRunsAtTheTrueRate)
{
    SoundOutput output(nullptr);
    const double before = output.GetHeardSeconds();
    AskFor(output, 0.5);
    EXPECT_NEAR(output.GetHeardSeconds(), before + 0.5, rounding);
    AskFor(output, 100);
    EXPECT_NEAR(output.GetHeardSeconds(), before + 100.5, rounding);
}

TEST(SoundOutput, SilenceIsToldInOneLine)
{
    EXPECT_EQ(SaidBy(nullptr), "No sound device: the show plays silently.\n");
}

TEST(SoundOutput, ADeviceIsNotTalkedAbout)
{
    test::cSpeaker speaker;
    EXPECT_EQ(SaidBy(test::MakeDevice(speaker)), "");
}

namespace
{
/// A device that had played for 100 s before it was opened, and takes a while to say so.
class cSlowDevice : public vyr::SoundDevice
{
public:
    double GetBlockSeconds() const override { return 0.02; }
    double ReadHeardSeconds() override
    {
        if (mReadings++ == 0)
            cTime::AdvanceWithoutThreads(0.05);
        return 100 + cTime::Now() - mStart;
    }
    bool IsConnected() override { return true; }
    std::unique_ptr<SoundVoice> CreateVoice(int) override { return nullptr; }

private:
    double mStart = cTime::Now();
    int mReadings = 0; // the first one is the constructor's
};
} // namespace

// Who asks at once would else begin at 0, and leap when the device is asked first.
TEST(SoundOutput, KnowsTheDevicesTimeFromTheBeginning)
{
    SoundOutput output(std::make_unique<cSlowDevice>());
    EXPECT_NEAR(output.GetHeardSeconds(), 100.05, rounding);
}

// Whoever asks looks for himself, where the thread that watches the device does not get to run.
TEST(SoundOutput, RunsOnWhenItsOwnThreadIsLate)
{
    test::cSpeaker speaker;
    SoundOutput output(test::MakeDevice(speaker));
    AskFor(output, 1);
    const double before = output.GetHeardSeconds();
    AskFor(output, 0.3, cTime::AdvanceWithoutThreads);
    EXPECT_NEAR(output.GetHeardSeconds(), before + 0.3, 0.001);
}

// 8 blocks of 2048 frames, the last of them begun: 7 and a little.
TEST(SoundSilence, TakesAThirdOfASecondAhead)
{
    SoundOutput output(nullptr);
    SoundSilence voice(output, 44100, {output.GetHeardSeconds(), 0});
    const std::vector<int16_t> block(2 * SoundVoice::blockFrames);
    size_t count = 0;
    for (; voice.HasRoom() && count < 100; count++)
        EXPECT_TRUE(voice.Queue(block));
    EXPECT_EQ(count, SoundVoice::blockCount - 1);
    EXPECT_GT(double(count * SoundVoice::blockFrames) / 44100, 0.32);
}

// What comes after a gap is heard after the gap: the position stood still in it.
TEST(SoundSilence, ABlockThatComesTooLateIsHeardFromThenOn)
{
    SoundOutput output(nullptr);
    SoundSilence voice(output, 10000, {output.GetHeardSeconds(), 0});
    const std::vector<int16_t> block(2 * 100); // a hundredth of a second
    voice.Queue(block);
    EXPECT_EQ(voice.GetProgress().limitFrames, 100);
    AskFor(output, 0.2);
    const double now = output.GetHeardSeconds();
    voice.Queue(block);
    const SoundProgress progress = voice.GetProgress();
    EXPECT_EQ(progress.limitFrames, 200);
    EXPECT_NEAR(progress.startSeconds + 100 / 10000.0, now, rounding);
}
