#include "platform/Sound.h"

#include "platform/SoundDecoder.h"
#include "platform/SoundRunningTime.h"
#include "tests/platform/SoundTestSupport.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <unistd.h>

using platform::SteadySeconds;
using test::ExpectWithAndWithoutDevice;

namespace
{
const FMOD_MODE showMode = 0x40C8;

/// The calls of the show, in its order.
struct cShow
{
    FMOD::System *system = nullptr;
    FMOD::Sound *sound = nullptr;
    FMOD::Channel *channel = nullptr;

    explicit cShow(const std::string &path, double loadingSeconds = 0)
    {
        unsigned int version = 0;
        EXPECT_EQ(FMOD_System_Create(&system), FMOD_OK);
        EXPECT_EQ(system->getVersion(&version), FMOD_OK);
        EXPECT_GE(version, 0x44206u);
        EXPECT_EQ(system->init(1, 0, nullptr), FMOD_OK);
        EXPECT_EQ(system->createStream(path.c_str(), showMode, nullptr, &sound), FMOD_OK);
        test::Wait(loadingSeconds);
        EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, sound, false, &channel), FMOD_OK);
    }

    void Stop()
    {
        EXPECT_EQ(sound->release(), FMOD_OK);
        EXPECT_EQ(system->close(), FMOD_OK);
        EXPECT_EQ(system->release(), FMOD_OK);
    }

    unsigned int GetPosition(FMOD_TIMEUNIT unit = FMOD_TIMEUNIT_PCMBYTES)
    {
        unsigned int position = 0;
        EXPECT_EQ(system->update(), FMOD_OK);
        EXPECT_EQ(channel->getPosition(&position, unit), FMOD_OK);
        return position;
    }

    // The position in seconds at every millisecond of the next `seconds`.
    test::cStraightness Watch(double seconds)
    {
        test::cStraightness straightness;
        for (const double end = SteadySeconds() + seconds; SteadySeconds() < end;) {
            const double before = SteadySeconds();
            const double position = GetPosition() / 176400.0;
            straightness.Add((before + SteadySeconds()) / 2, position);
            test::Wait(0.001);
        }
        straightness.Fit();
        return straightness;
    }
};

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
    std::unique_ptr<platform::SoundDecoder> decoder;
    EXPECT_EQ(platform::SoundDecoder::Open(path.c_str(), decoder), FMOD_OK);
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

int CountThreads()
{
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return int(std::distance(begin(threads), end(threads)));
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

TEST(Sound, FilesThatCannotPlayAreToldAtOnce)
{
    ExpectWithAndWithoutDevice([] {
        const test::cTemporaryFolder folder;
        FMOD::System *system = nullptr;
        FMOD::Sound *sound = nullptr;
        FMOD_System_Create(&system);
        system->init(1, FMOD_INIT_NORMAL, nullptr);
        EXPECT_EQ(system->createStream("no.mp3", showMode, nullptr, &sound),
                  FMOD_ERR_FILE_NOTFOUND);
        EXPECT_EQ(system->createStream(".", showMode, nullptr, &sound), FMOD_ERR_FILE_BAD);
        test::WriteFile("empty.mp3", "");
        EXPECT_EQ(system->createStream("empty.mp3", showMode, nullptr, &sound), FMOD_ERR_FORMAT);
        EXPECT_EQ(sound, nullptr);
        EXPECT_EQ(system->release(), FMOD_OK);
    });
}

TEST(Sound, CallsBeforeInitAreUninitialised)
{
    FMOD::System *system = nullptr;
    FMOD::Sound *sound = nullptr;
    ASSERT_EQ(FMOD_System_Create(&system), FMOD_OK);
    EXPECT_EQ(system->createStream("a.mp3", showMode, nullptr, &sound), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, sound, false, nullptr), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->update(), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->close(), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->release(), FMOD_OK);
}

TEST(Sound, CallsWithNothingAreInvalid)
{
    EXPECT_EQ(FMOD_System_Create(nullptr), FMOD_ERR_INVALID_PARAM);
    EXPECT_TRUE(test::RunAlone("none", [] {
        cShow show(test::SweepPath());
        FMOD::Sound *sound = nullptr;
        EXPECT_EQ(show.system->getVersion(nullptr), FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(show.system->createStream(nullptr, showMode, nullptr, &sound),
                  FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(show.system->createStream("a", showMode, nullptr, nullptr),
                  FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, nullptr, false, nullptr),
                  FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(show.system->playSound(FMOD_CHANNELINDEX(7), show.sound, false, nullptr),
                  FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(show.channel->getPosition(nullptr, FMOD_TIMEUNIT_PCM), FMOD_ERR_INVALID_PARAM);
        unsigned int position = 42;
        EXPECT_EQ(show.channel->getPosition(&position, 3), FMOD_ERR_FORMAT);
        EXPECT_EQ(position, 42u); // a failed read leaves the last position
        show.Stop();
    }));
}

TEST(Sound, InitTakesWhatTheShowNeedsAndNothingElse)
{
    EXPECT_TRUE(test::RunAlone("none", [] {
        FMOD::System *system = nullptr;
        FMOD_System_Create(&system);
        EXPECT_EQ(system->init(0, FMOD_INIT_NORMAL, nullptr), FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(system->init(-1, FMOD_INIT_NORMAL, nullptr), FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(system->init(5000, FMOD_INIT_NORMAL, nullptr), FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(system->init(1, 1, nullptr), FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(system->init(1, FMOD_INIT_NORMAL, nullptr), FMOD_OK);
        EXPECT_EQ(system->init(1, FMOD_INIT_NORMAL, nullptr), FMOD_ERR_INITIALIZED);
        FMOD::Sound *sound = nullptr;
        const FMOD_MODE loop = 2;
        EXPECT_EQ(system->createStream("a.mp3", loop, nullptr, &sound), FMOD_ERR_UNSUPPORTED);
        EXPECT_EQ(system->release(), FMOD_OK);
    }));
}

TEST(Sound, ReleasedHandlesAreInvalid)
{
    ExpectWithAndWithoutDevice([] {
        cShow show(test::SweepPath());
        FMOD::Channel *channel = nullptr;
        unsigned int position = 7;
        EXPECT_EQ(show.sound->release(), FMOD_OK);
        EXPECT_EQ(show.sound->release(), FMOD_ERR_INVALID_HANDLE);
        EXPECT_EQ(show.channel->getPosition(&position, 4), FMOD_ERR_INVALID_HANDLE);
        EXPECT_EQ(position, 7u);
        EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, show.sound, false, &channel),
                  FMOD_ERR_INVALID_HANDLE);
        EXPECT_EQ(show.system->close(), FMOD_OK);
        EXPECT_EQ(show.system->close(), FMOD_ERR_UNINITIALIZED);
        EXPECT_EQ(show.system->release(), FMOD_OK);
        EXPECT_EQ(show.system->release(), FMOD_ERR_INVALID_HANDLE);
        EXPECT_EQ(show.system->update(), FMOD_ERR_INVALID_HANDLE);
        EXPECT_EQ(show.system->init(1, 0, nullptr), FMOD_ERR_INVALID_HANDLE);
        EXPECT_EQ(show.system->getVersion(&position), FMOD_ERR_INVALID_HANDLE);
    });
}

TEST(Sound, EverythingMayBeReleasedWhileItPlaysInAnyOrder)
{
    ExpectWithAndWithoutDevice([] {
        const int threads = CountThreads();
        const auto closeFirst = [](cShow &show) { show.system->close(); };
        const auto releaseFirst = [](cShow &show) { show.system->release(); };
        const auto soundFirst = [](cShow &show) { show.Stop(); };
        const std::vector<std::function<void(cShow &)>> ends = {closeFirst, releaseFirst,
                                                                soundFirst};
        for (const auto &end : ends) {
            cShow show(test::SweepPath());
            end(show);
            unsigned int position = 0;
            EXPECT_EQ(show.sound->release(), FMOD_ERR_INVALID_HANDLE);
            EXPECT_EQ(show.channel->getPosition(&position, 4), FMOD_ERR_INVALID_HANDLE);
            EXPECT_EQ(CountThreads(), threads);
        }
    });
}

TEST(Sound, ASystemMayBeOpenedAgain)
{
    ExpectWithAndWithoutDevice([] {
        cShow show(test::SweepPath());
        EXPECT_EQ(show.system->close(), FMOD_OK);
        EXPECT_EQ(show.system->init(1, 0, nullptr), FMOD_OK);
        EXPECT_EQ(
            show.system->createStream(test::SweepPath().c_str(), showMode, nullptr, &show.sound),
            FMOD_OK);
        EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, show.sound, false, &show.channel),
                  FMOD_OK);
        show.Watch(0.4);
        EXPECT_GT(show.GetPosition(), 0u);
        show.Stop();
    });
}

TEST(Sound, ASoundPlayedAgainBeginsAnew)
{
    ExpectWithAndWithoutDevice([] {
        cShow show(test::SweepPath());
        test::Wait(0.5);
        EXPECT_GT(show.GetPosition(), 176400u / 5);
        FMOD::Channel *again = nullptr;
        EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, show.sound, false, &again), FMOD_OK);
        EXPECT_EQ(again, show.channel);
        EXPECT_LT(show.GetPosition(), 176400u / 10);
        test::Wait(1.5);
        EXPECT_EQ(show.GetPosition(), 4 * test::sweepFrames);
        show.Stop();
    });
}

TEST(Sound, APausedSoundStaysAtItsBeginning)
{
    ExpectWithAndWithoutDevice([] {
        cShow show(test::SweepPath());
        show.system->playSound(FMOD_CHANNEL_FREE, show.sound, true, nullptr);
        test::Wait(0.3);
        EXPECT_EQ(show.GetPosition(), 0u);
        show.Stop();
    });
}

TEST(Sound, OneChannelPlaysOneSound)
{
    ExpectWithAndWithoutDevice([] {
        cShow show(test::SweepPath());
        FMOD::Sound *other = nullptr;
        show.system->createStream(test::MonoSweepPath().c_str(), showMode, nullptr, &other);
        EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, other, false, nullptr),
                  FMOD_ERR_CHANNEL_ALLOC);
        EXPECT_EQ(show.sound->release(), FMOD_OK);
        EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, other, false, nullptr), FMOD_OK);
        EXPECT_EQ(show.system->release(), FMOD_OK);
    });
}

TEST(Sound, TwoSystemsPlaySideBySide)
{
    ExpectWithAndWithoutDevice([] {
        cShow one(test::SweepPath()), two(test::MonoSweepPath());
        test::Wait(1.8);
        EXPECT_EQ(one.GetPosition(), 4 * test::sweepFrames);
        EXPECT_EQ(two.GetPosition(), 4 * test::monoSweepFrames);
        one.Stop();
        two.Stop();
    });
}

// A show that fails while it starts returns from main and releases nothing.
TEST(Sound, AProgramMayEndWhileItPlays)
{
    ExpectWithAndWithoutDevice([] {
        testing::internal::CaptureStderr();
        const cShow show(test::SweepPath());
        test::Wait(0.1);
        testing::internal::GetCapturedStderr();
    });
}
