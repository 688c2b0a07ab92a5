#include "sound/Sound.h"

#include "tests/sound/SoundTestDevice.h"
#include "tests/sound/SoundTestSupport.h"
#include "tests/support/TestFiles.h"
#include "tests/support/Wait.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

using test::cShow;

namespace
{
int CountThreads()
{
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return int(std::distance(begin(threads), end(threads)));
}

// Every rule holds with sound and without.
void ExpectWithAndWithoutDevice(const std::function<void()> &body)
{
    test::cSpeaker speaker;
    for (test::cSpeaker *plugged : {&speaker, static_cast<test::cSpeaker *>(nullptr)}) {
        SCOPED_TRACE(plugged ? "with a device" : "without a device");
        test::PlugIn(plugged);
        testing::internal::CaptureStderr(); // without a device it says so
        body();
        testing::internal::GetCapturedStderr();
    }
}
} // namespace

TEST(SoundCalls, FilesThatCannotPlayAreToldAtOnce)
{
    ExpectWithAndWithoutDevice([] {
        const test::cTemporaryFolder folder;
        FMOD::System *system = nullptr;
        FMOD::Sound *sound = nullptr;
        FMOD_System_Create(&system);
        system->init(1, FMOD_INIT_NORMAL, nullptr);
        EXPECT_EQ(system->createStream("no.mp3", test::showMode, nullptr, &sound),
                  FMOD_ERR_FILE_NOTFOUND);
        EXPECT_EQ(system->createStream(".", test::showMode, nullptr, &sound), FMOD_ERR_FILE_BAD);
        test::WriteFile("empty.mp3", "");
        EXPECT_EQ(system->createStream("empty.mp3", test::showMode, nullptr, &sound),
                  FMOD_ERR_FORMAT);
        EXPECT_EQ(sound, nullptr);
        EXPECT_EQ(system->release(), FMOD_OK);
    });
}

TEST(SoundCalls, CallsBeforeInitAreUninitialised)
{
    FMOD::System *system = nullptr;
    FMOD::Sound *sound = nullptr;
    ASSERT_EQ(FMOD_System_Create(&system), FMOD_OK);
    EXPECT_EQ(system->createStream("a.mp3", test::showMode, nullptr, &sound),
              FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, sound, false, nullptr), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->update(), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->close(), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->release(), FMOD_OK);
}

TEST(SoundCalls, CallsWithNothingAreInvalid)
{
    EXPECT_EQ(FMOD_System_Create(nullptr), FMOD_ERR_INVALID_PARAM);
    ExpectWithAndWithoutDevice([] {
        cShow show(test::SweepPath());
        FMOD::Sound *sound = nullptr;
        EXPECT_EQ(show.system->getVersion(nullptr), FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(show.system->createStream(nullptr, test::showMode, nullptr, &sound),
                  FMOD_ERR_INVALID_PARAM);
        EXPECT_EQ(show.system->createStream("a", test::showMode, nullptr, nullptr),
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
    });
}

TEST(SoundCalls, InitTakesWhatTheShowNeedsAndNothingElse)
{
    ExpectWithAndWithoutDevice([] {
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
    });
}

TEST(SoundCalls, ReleasedHandlesAreInvalid)
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

TEST(SoundCalls, EverythingMayBeReleasedWhileItPlaysInAnyOrder)
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
            // a thread is gone a moment after it could be joined
            EXPECT_TRUE(test::WaitUntil([&] { return CountThreads() == threads; }));
        }
    });
}

TEST(SoundCalls, OneChannelPlaysOneSound)
{
    ExpectWithAndWithoutDevice([] {
        cShow show(test::SweepPath());
        FMOD::Sound *other = nullptr;
        show.system->createStream(test::MonoSweepPath().c_str(), test::showMode, nullptr, &other);
        EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, other, false, nullptr),
                  FMOD_ERR_CHANNEL_ALLOC);
        EXPECT_EQ(show.sound->release(), FMOD_OK);
        EXPECT_EQ(show.system->playSound(FMOD_CHANNEL_FREE, other, false, nullptr), FMOD_OK);
        EXPECT_EQ(show.system->release(), FMOD_OK);
    });
}
