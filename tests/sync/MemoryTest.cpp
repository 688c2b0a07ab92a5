// The player when memory is short at each of its allocations: the linker sends them here.

#include "sync/data.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
int allocationsLeft = -1; // negative: as many as there are

bool IsToBeHad() { return allocationsLeft < 0 || allocationsLeft-- > 0; }

const int perTrack = 3; // the record, the list, the name

// `count` keys announced, `held` of them there, all zero.
std::string TrackFile(int count, int held)
{
    std::string bytes{char(count & 255), char(count >> 8 & 255)};
    return bytes + std::string(size_t(6 + 9 * held), '\0');
}

class Memory : public testing::Test
{
protected:
    Memory() : mDevice(sync_create_device("t")) {}
    ~Memory() override { sync_destroy_device(mDevice); }

    // The track of a file, with memory for so many allocations behind those of the track itself.
    const sync_track *LoadWith(int allocations, const std::string &bytes)
    {
        test::WriteFile("t_x.track", bytes);
        allocationsLeft = perTrack + allocations;
        const sync_track *track = sync_get_track(mDevice, "x");
        allocationsLeft = -1;
        return track;
    }

    test::cTemporaryFolder mFolder;
    sync_device *mDevice;
};
} // namespace

extern "C" void *__real_malloc(size_t size);
extern "C" void *__real_realloc(void *memory, size_t size);
extern "C" char *__real_strdup(const char *text);

extern "C" void *__wrap_malloc(size_t size) { return IsToBeHad() ? __real_malloc(size) : nullptr; }

extern "C" void *__wrap_realloc(void *memory, size_t size)
{
    return IsToBeHad() ? __real_realloc(memory, size) : nullptr;
}

extern "C" char *__wrap_strdup(const char *text)
{
    return IsToBeHad() ? __real_strdup(text) : nullptr;
}

TEST_F(Memory, ShortForADeviceGivesNone)
{
    for (int allocations : {0, 1}) {
        allocationsLeft = allocations;
        sync_device *device = sync_create_device("prefix");
        allocationsLeft = -1;
        EXPECT_EQ(device, nullptr) << allocations;
    }
}

TEST_F(Memory, ShortForATrackStopsTheProgram)
{
    for (int allocations = 0; allocations < perTrack; allocations++)
        EXPECT_DEATH(LoadWith(allocations - perTrack, TrackFile(1, 1)), "isMemoryThere|track->name")
            << allocations;
}

TEST_F(Memory, ShortForTheKeysLeavesTheCountAndTheFileOpen)
{
    const int before = test::CountOpenFiles();
    const sync_track *track = LoadWith(0, TrackFile(5, 5));
    EXPECT_EQ(track->num_keys, 5);
    EXPECT_EQ(track->keys, nullptr);
    EXPECT_EQ(test::CountOpenFiles(), before + 1);
    EXPECT_EQ(sync_get_val(track, 2.0), 0.0f);
}

// Room grows as keys are read; what was read before it ran out is given back.
TEST_F(Memory, ShortAmongTheKeysLeavesNone)
{
    EXPECT_EQ(LoadWith(1, TrackFile(3000, 3000))->keys, nullptr);
}

TEST_F(Memory, ShortForTheKeysThatAFileLacksLeavesNone)
{
    EXPECT_EQ(LoadWith(1, TrackFile(3000, 10))->keys, nullptr);
}

TEST_F(Memory, EnoughReadsThemAll)
{
    const sync_track *track = LoadWith(3, TrackFile(3000, 3000));
    ASSERT_NE(track->keys, nullptr);
    EXPECT_EQ(track->keys[2999].row, 0);
}
