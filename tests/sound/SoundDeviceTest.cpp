// The real device, OpenAL's, in real time: on its driver that nobody hears, on the one that writes
// a file, on none. What is asked here does not depend on how fast or how free the machine is; how
// even the position is in real time is measured by ./bench.

#include "sound/SoundDevice.h"
#include "sound/SoundDecoder.h"
#include "sound/SoundOutput.h"
#include "sound/SoundTime.h"
#include "tests/sound/SoundTestSupport.h"
#include "tests/support/TestFiles.h"
#include "tests/support/Wait.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

using test::cShow;
using test::WaitUntil;
using vyr::SoundOutput;
using vyr::SoundProgress;
using vyr::SteadySeconds;

namespace
{
// Runs `body` in a process of its own, with OpenAL's `drivers` (it reads them once a process):
// "null" for a device that nobody hears, "none" for no device. Use EXPECT in it.
void RunAlone(const std::string &drivers, const std::function<void()> &body)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        alarm(unsigned(test::hangSeconds));
        setenv("ALSOFT_DRIVERS", drivers.c_str(), 1);
        body();
        std::exit(testing::Test::HasFailure() ? 1
                                              : 0); // as a program ends, with all that this does
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "with the driver " << drivers;
}

std::string SaidByOpening()
{
    testing::internal::CaptureStderr();
    {
        const SoundOutput output(vyr::OpenSoundDevice());
    }
    return testing::internal::GetCapturedStderr();
}

const char silence[] = "No sound device: the show plays silently.\n";
} // namespace

TEST(SoundDevice, IsNotTalkedAbout)
{
    RunAlone("null", [] { EXPECT_EQ(SaidByOpening(), ""); });
}

TEST(SoundDevice, ThatIsNoneIsToldInOneLine)
{
    RunAlone("none", [] { EXPECT_EQ(SaidByOpening(), silence); });
}

// The back ends of the library have much to say about a machine without a sound card.
TEST(SoundDevice, IsTheOnlyOneWhoTalks)
{
    RunAlone("alsa,pulse", [] {
        const std::string said = SaidByOpening();
        EXPECT_TRUE(said.empty() || said == silence) << said;
    });
}

// The null device reports two blocks, 46 ms, between the mixer and the ear. A stream begins with a
// block, so it is behind the call that started it by one of them at least.
TEST(SoundDevice, PositionIsOfWhatIsHeardNotOfWhatIsMixed)
{
    RunAlone("null", [] {
        const double start = SteadySeconds();
        cShow show(test::SweepPath());
        for (double position = 0; position < 0.5;) {
            position = show.GetSeconds();
            EXPECT_LT(position, std::max(1e-9, SteadySeconds() - start - 0.012));
        }
        show.Stop();
    });
}

// The one test of real time, with bounds for any machine.
TEST(SoundDevice, PlaysInRealTime)
{
    for (const char *driver : {"null", "none"})
        RunAlone(driver, [] {
            const test::cTemporaryFolder folder;
            test::WriteFile("long.mp3", test::LongSweep(10));
            cShow show("long.mp3");
            ASSERT_TRUE(WaitUntil([&] { return show.GetPosition() > 0; }));
            const double start = SteadySeconds() - show.GetSeconds();
            ASSERT_TRUE(WaitUntil([&] { return SteadySeconds() - start > 1; }));
            const double position = show.GetSeconds();
            EXPECT_NEAR(position, SteadySeconds() - start, 0.5);
            show.Stop();
        });
}

// A show that fails while it starts returns from main and releases nothing.
TEST(SoundDevice, AProgramMayEndWhileItPlays)
{
    for (const char *driver : {"null", "none"})
        RunAlone(driver, [] {
            cShow show(test::SweepPath());
            EXPECT_TRUE(WaitUntil([&] { return show.GetPosition() > 0; }));
        });
}

// Two blocks are heard to their end, and a third comes later. The device's own clock tells when.
TEST(SoundDevice, ABlockThatComesTooLateIsHeardFromThenOnAndTheOthersNotAgain)
{
    RunAlone("null", [] {
        const auto device = vyr::OpenSoundDevice();
        ASSERT_TRUE(device);
        const auto voice = device->CreateVoice(44100);
        ASSERT_TRUE(voice);
        const std::vector<int16_t> block(2 * 2048);
        EXPECT_TRUE(voice->Queue(block));
        EXPECT_TRUE(voice->Queue(block));
        const double blocks = 2 * 2048 / 44100.0;
        const double end = voice->GetProgress().startSeconds + blocks;
        ASSERT_TRUE(WaitUntil([&] { return device->ReadHeardSeconds() > end + 0.2; }));
        const double before = device->ReadHeardSeconds();
        EXPECT_TRUE(voice->Queue(block));
        const SoundProgress progress = voice->GetProgress();
        EXPECT_EQ(progress.limitFrames, 3 * 2048);
        EXPECT_GE(progress.startSeconds + blocks, before);
        // The mixer is ahead of what is heard by a few blocks.
        EXPECT_LT(progress.startSeconds + blocks, device->ReadHeardSeconds() + 0.2);
    });
}

namespace
{
// The samples, left and right in turn, of the library's own recording: 32-bit numbers up to 1.
std::vector<int> ReadWave(const std::string &path)
{
    const std::string wave = test::ReadFile(path);
    const size_t start = wave.find("data") + 8;
    std::vector<int> samples;
    for (size_t i = start; i + 4 <= wave.size(); i += 4) {
        float sample = 0;
        std::memcpy(&sample, wave.data() + i, 4);
        samples.push_back(int(std::lround(sample * 32768)));
    }
    return samples;
}

std::vector<int> Decode(const std::string &path)
{
    std::unique_ptr<vyr::SoundDecoder> decoder;
    EXPECT_EQ(vyr::SoundDecoder::Open(path.c_str(), decoder), FMOD_OK);
    std::vector<int16_t> samples(2 * 60000);
    samples.resize(2 * decoder->Read(samples.data(), 60000));
    return {samples.begin(), samples.end()};
}

// What is left of `sent` without the frames that come before the music, after it, and in a gap that
// a busy machine makes: silence where the music goes on after it. One step of 16 bits for the
// rounding.
size_t CountHeard(const std::vector<int> &sent, const std::vector<int> &decoded)
{
    size_t heard = 0;
    for (size_t i = 0; i + 1 < sent.size(); i += 2) {
        const bool isNext = heard + 1 < decoded.size() && std::abs(sent[i] - decoded[heard]) <= 1 &&
                            std::abs(sent[i + 1] - decoded[heard + 1]) <= 1;
        heard += isNext ? 2 : 0;
        if (!isNext && (sent[i] != 0 || sent[i + 1] != 0))
            return heard;
    }
    return heard;
}
} // namespace

// What goes out to the device: the decoded frames, all of them, in their order, as loud as they
// are.
TEST(SoundDevice, HearsEveryFrameOnceAndUnchanged)
{
    const test::cTemporaryFolder folder;
    RunAlone("wave", [] {
        test::WriteFile("sound.conf", "[wave]\nfile = out.wav\n");
        setenv("ALSOFT_CONF", "sound.conf", 1);
        cShow show(test::SweepPath());
        EXPECT_TRUE(WaitUntil([&] { return show.GetPosition() == 4 * test::sweepFrames; }));
        show.Stop();
    });
    const std::vector<int> decoded = Decode(test::SweepPath());
    EXPECT_EQ(CountHeard(ReadWave("out.wav"), decoded), decoded.size());
}
