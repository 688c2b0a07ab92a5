#include "sound/SoundOutput.h"

#include "sound/SoundSilence.h"
#include "tests/sound/SoundTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using vyr::SoundOutput;
using vyr::SoundProgress;
using vyr::SoundSilence;
using vyr::SoundVoice;
using vyr::SteadySeconds;

TEST(SoundOutput, SilenceRunsAtTheTrueRate)
{
    SoundOutput output(nullptr);
    const double before = SteadySeconds(), heardBefore = output.GetHeardSeconds();
    while (SteadySeconds() < before + 0.5) {
        output.GetHeardSeconds();
        test::Wait(0.002);
    }
    EXPECT_NEAR(output.GetHeardSeconds() - heardBefore, SteadySeconds() - before, 0.02);
}

TEST(SoundOutput, SilenceIsToldInOneLine)
{
    EXPECT_TRUE(test::RunAlone("none", [] {
        testing::internal::CaptureStderr();
        const SoundOutput output(vyr::OpenSoundDevice());
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "No sound device: the show plays silently.\n");
    }));
}

// The back ends of the library have much to say about a machine without a sound card.
TEST(SoundOutput, NobodyElseTalks)
{
    EXPECT_TRUE(test::RunAlone("alsa,pulse", [] {
        testing::internal::CaptureStderr();
        {
            const SoundOutput output(vyr::OpenSoundDevice());
        }
        const std::string said = testing::internal::GetCapturedStderr();
        const bool isSilent = said == "No sound device: the show plays silently.\n";
        EXPECT_TRUE(said.empty() || isSilent) << said;
    }));
}

TEST(SoundOutput, ADeviceIsNotTalkedAbout)
{
    EXPECT_TRUE(test::RunAlone("null", [] {
        testing::internal::CaptureStderr();
        {
            const SoundOutput output(vyr::OpenSoundDevice());
        }
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }));
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
        test::Wait(0.05);
        return 100 + SteadySeconds() - mStart;
    }
    bool IsConnected() override { return true; }
    std::unique_ptr<SoundVoice> CreateVoice(int) override { return nullptr; }

private:
    double mStart = SteadySeconds();
};
} // namespace

// Who asks at once would else begin at 0, and leap when the device is asked first.
TEST(SoundOutput, KnowsTheDevicesTimeFromTheBeginning)
{
    SoundOutput output(std::make_unique<cSlowDevice>());
    EXPECT_GE(output.GetHeardSeconds(), 100);
    EXPECT_LT(output.GetHeardSeconds(), 101);
}

namespace
{
/// A device of 20 ms blocks that keeps the thread that watches it waiting, between its readings.
class cDeviceWithALateWatcher : public vyr::SoundDevice
{
public:
    double GetBlockSeconds() const override { return 0.02; }
    double ReadHeardSeconds() override
    {
        return std::floor((SteadySeconds() - mStart) / 0.02) * 0.02;
    }
    bool IsConnected() override
    {
        test::Wait(0.3);
        return true;
    }
    std::unique_ptr<SoundVoice> CreateVoice(int) override { return nullptr; }

private:
    double mStart = SteadySeconds();
};
} // namespace

TEST(SoundOutput, RunsOnWhenItsOwnThreadIsLate)
{
    SoundOutput output(std::make_unique<cDeviceWithALateWatcher>());
    const double before = SteadySeconds(), heardBefore = output.GetHeardSeconds();
    while (SteadySeconds() < before + 0.28) {
        output.GetHeardSeconds();
        test::Wait(0.002);
    }
    EXPECT_NEAR(output.GetHeardSeconds() - heardBefore, SteadySeconds() - before, 0.05);
}

TEST(SoundSilence, TakesAThirdOfASecondAhead)
{
    SoundOutput output(nullptr);
    SoundSilence voice(output, 44100, {output.GetHeardSeconds(), 0});
    const std::vector<int16_t> block(2 * SoundVoice::blockFrames);
    size_t count = 0;
    for (; voice.HasRoom() && count < 100; count++)
        EXPECT_TRUE(voice.Queue(block));
    EXPECT_NEAR(double(count * SoundVoice::blockFrames) / 44100, 0.35, 0.05);
}

// What comes after a gap is heard after the gap: the position stood still in it.
TEST(SoundSilence, ABlockThatComesTooLateIsHeardFromThenOn)
{
    SoundOutput output(nullptr);
    SoundSilence voice(output, 10000, {output.GetHeardSeconds(), 0});
    const std::vector<int16_t> block(2 * 100); // a hundredth of a second
    voice.Queue(block);
    EXPECT_EQ(voice.GetProgress().limitFrames, 100);
    for (const double end = SteadySeconds() + 0.2; SteadySeconds() < end; test::Wait(0.002))
        output.GetHeardSeconds();
    const double now = output.GetHeardSeconds();
    voice.Queue(block);
    const SoundProgress progress = voice.GetProgress();
    EXPECT_EQ(progress.limitFrames, 200);
    EXPECT_GE(progress.startSeconds + 100 / 10000.0, now);
}

// Two blocks are heard to their end, and a third comes a quarter of a second after them.
TEST(SoundOpenAL, ABlockThatComesTooLateIsHeardFromThenOnAndTheOthersNotAgain)
{
    EXPECT_TRUE(test::RunAlone("null", [] {
        const auto device = vyr::OpenSoundDevice();
        ASSERT_TRUE(device);
        const auto voice = device->CreateVoice(44100);
        ASSERT_TRUE(voice);
        const std::vector<int16_t> block(2 * 2048);
        EXPECT_TRUE(voice->Queue(block));
        EXPECT_TRUE(voice->Queue(block));
        const SoundProgress before = voice->GetProgress();
        test::Wait(0.35);
        EXPECT_TRUE(voice->Queue(block));
        test::Wait(0.025); // the mixer has begun it, and not ended it
        const SoundProgress after = voice->GetProgress();
        EXPECT_EQ(before.limitFrames, 2 * 2048);
        EXPECT_EQ(after.limitFrames, 3 * 2048);
        EXPECT_NEAR(after.startSeconds - before.startSeconds, 0.35 - 4096 / 44100.0, 0.05);
    }));
}
