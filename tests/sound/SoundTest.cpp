#include "sound/Sound.h"

#include "sound/SoundDecoder.h"
#include "sound/SoundRunningTime.h"
#include "tests/sound/SoundTestSupport.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstring>
#include <unistd.h>

using test::cShow;
using test::ExpectWithAndWithoutDevice;
using vyr::SteadySeconds;

namespace
{
std::string LongSweepFile()
{
    test::WriteFile("long.mp3", test::LongSweep(10));
    return "long.mp3";
}

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

std::vector<int> WithoutSilenceBefore(const std::vector<int> &samples)
{
    const auto first =
        std::find_if(samples.begin(), samples.end(), [](int s) { return abs(s) > 1; });
    const auto frame = first - (first - samples.begin()) % 2;
    return {frame, samples.end()};
}

} // namespace

TEST(Sound, PlaysTheShowsCalls)
{
    ExpectWithAndWithoutDevice([] {
        const test::cTemporaryFolder folder;
        cShow show(LongSweepFile());
        show.Watch(1);
        const unsigned int position = show.GetPosition();
        EXPECT_EQ(position % 4, 0u); // whole frames
        // A device reports up to a tenth of a second of latency.
        EXPECT_NEAR(position / 176400.0, 0.95, 0.15);
        show.Stop();
    });
}

// The null device reports two blocks, 46 ms, between the mixer and the ear. A stream begins with a
// block, so it is behind the call that started it by one of them at least.
TEST(Sound, PositionIsOfWhatIsHeardNotOfWhatIsMixed)
{
    EXPECT_TRUE(test::RunAlone("null", [] {
        cShow show(test::SweepPath(), 0.5);
        const double start = SteadySeconds();
        test::Wait(0.5);
        const double position = show.GetPosition() / 176400.0;
        EXPECT_LT(position, SteadySeconds() - start - 0.012);
        show.Stop();
    }));
}

// The bars of the clock, wide enough for a machine that builds while it tests.
TEST(Sound, PositionRunsEvenlyAtTheTrueRate)
{
    ExpectWithAndWithoutDevice([] {
        const test::cTemporaryFolder folder;
        cShow show(LongSweepFile(), 0.5);
        test::Wait(0.2);
        const test::cStraightness straightness = show.Watch(4);
        EXPECT_EQ(straightness.CountStepsBack(), 0);
        EXPECT_LT(straightness.GetRms(), 0.003);
        EXPECT_NEAR(straightness.GetSlope(), 1, 0.002);
        show.Stop();
    });
}

TEST(Sound, PositionBeginsAtZeroAndEndsAtTheLastFrame)
{
    ExpectWithAndWithoutDevice([] {
        cShow show(test::SweepPath());
        EXPECT_LT(show.GetPosition(), 176400 / 20);
        EXPECT_EQ(show.Watch(1.6).CountStepsBack(), 0);
        EXPECT_EQ(show.GetPosition(), 4 * test::sweepFrames);
        test::Wait(0.2);
        EXPECT_EQ(show.GetPosition(), 4 * test::sweepFrames);
        show.Stop();
    });
}

TEST(Sound, UnitsAgree)
{
    ExpectWithAndWithoutDevice([] {
        cShow show(test::SweepPath());
        test::Wait(1.6);
        EXPECT_EQ(show.GetPosition(FMOD_TIMEUNIT_PCM), test::sweepFrames);
        EXPECT_EQ(show.GetPosition(FMOD_TIMEUNIT_MS), 1133u); // 50000 / 44.1, rounded down
        show.Stop();
    });
}

// 22050 frames a second, each counted as 4 bytes: for the show, which counts on 44100, half speed.
TEST(Sound, AFileAtAnotherRateCountsItsOwnFrames)
{
    ExpectWithAndWithoutDevice([] {
        cShow show(test::MonoSweepPath());
        test::Wait(0.2);
        EXPECT_NEAR(show.Watch(0.7).GetSlope(), 0.5, 0.05);
        test::Wait(0.7);
        EXPECT_EQ(show.GetPosition(), 4 * test::monoSweepFrames);
        show.Stop();
    });
}

// What goes out to the device: the decoded frames, all of them, in one piece, as loud as they are.
// One step of 16 bits for the rounding.
TEST(Sound, EveryFrameIsHeardOnceAndUnchanged)
{
    const test::cTemporaryFolder folder;
    EXPECT_TRUE(test::RunAlone("wave", [] {
        test::WriteFile("sound.conf", "[wave]\nfile = out.wav\n");
        setenv("ALSOFT_CONF", "sound.conf", 1);
        cShow show(test::SweepPath(), 0.2);
        test::Wait(1.7);
        show.Stop();
    }));
    const std::vector<int> sent = WithoutSilenceBefore(ReadWave("out.wav"));
    const std::vector<int> decoded = WithoutSilenceBefore(Decode(test::SweepPath()));
    ASSERT_GT(sent.size(), decoded.size());
    for (size_t i = 0; i < decoded.size(); i++)
        ASSERT_NEAR(sent[i], decoded[i], 1) << i;
    for (size_t i = decoded.size(); i < sent.size(); i++)
        ASSERT_EQ(sent[i], 0) << i;
}

// The machine's clock runs on while the program is stopped; the music does not.
TEST(Sound, AStoppedProgramGoesOnWhereItWas)
{
    ExpectWithAndWithoutDevice([] {
        const pid_t program = getpid();
        if (fork() == 0) {
            test::Wait(1);
            kill(program, SIGSTOP);
            test::Wait(1.5);
            kill(program, SIGCONT);
            _exit(0);
        }
        const test::cTemporaryFolder folder;
        const double start = SteadySeconds();
        cShow show(LongSweepFile());
        EXPECT_EQ(show.Watch(2.7).CountStepsBack(), 0);
        // A device without a listener plays what was queued in no time: up to a third of a second.
        EXPECT_NEAR(show.GetPosition() / 176400.0, SteadySeconds() - start - 1.4, 0.4);
        EXPECT_NEAR(show.Watch(0.5).GetSlope(), 1, 0.03);
        show.Stop();
    });
}
