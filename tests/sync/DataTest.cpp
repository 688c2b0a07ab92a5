#include "sync/data.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace
{
std::string Bytes(std::initializer_list<int> bytes)
{
    std::string text;
    for (int byte : bytes)
        text.push_back(char(byte));
    return text;
}

// Row 5, value 2.5 (0x40200000), hold.
const std::string fiveTwoAndAHalf = Bytes({5, 0, 0, 0, 0, 0, 0x20, 0x40, 0});

std::string Header(unsigned count)
{
    std::string text =
        Bytes({int(count & 255), int(count >> 8 & 255), int(count >> 16 & 255), int(count >> 24)});
    return text + "\xAB\xCD\xEF\x01"; // four bytes that nobody reads
}

// A device with the prefix "t" in a folder of its own.
class Device : public testing::Test
{
protected:
    Device() : mDevice(sync_create_device("t")) {}
    ~Device() override { sync_destroy_device(mDevice); }

    const sync_track *Load(const std::string &bytes)
    {
        test::WriteFile("t_x.track", bytes);
        return sync_get_track(mDevice, "x");
    }

    test::cTemporaryFolder mFolder;
    sync_device *mDevice;
};

void ExpectKey(const sync_key &key, int row, float value, int type)
{
    EXPECT_EQ(key.row, row);
    EXPECT_EQ(key.value, value);
    EXPECT_EQ(key.type, type);
}

TEST_F(Device, KeepsItsOwnCopyOfThePrefix)
{
    char prefix[] = "abc";
    sync_device *device = sync_create_device(prefix);
    prefix[0] = 'z';
    EXPECT_STREQ(device->base, "abc");
    EXPECT_EQ(device->data.num_tracks, 0u);
    sync_destroy_device(device);
}

TEST_F(Device, ReadsAKey)
{
    const sync_track *track = Load(Header(1) + fiveTwoAndAHalf);
    EXPECT_STREQ(track->name, "x");
    ASSERT_EQ(track->num_keys, 1);
    ExpectKey(track->keys[0], 5, 2.5f, SYNC_KEY_HOLD);
}

TEST_F(Device, ReadsTheColonAsPartOfTheFileName)
{
    test::WriteFile("t_tunnel:pos.track", Header(1) + fiveTwoAndAHalf);
    EXPECT_EQ(sync_get_track(mDevice, "tunnel:pos")->num_keys, 1);
}

TEST_F(Device, IgnoresWhatFollowsTheLastKey)
{
    const sync_track *track = Load(Header(1) + fiveTwoAndAHalf + "more");
    EXPECT_EQ(track->num_keys, 1);
}

TEST_F(Device, MissingFileGivesAnEmptyTrack)
{
    const sync_track *track = sync_get_track(mDevice, "nowhere");
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(track->num_keys, 0);
    EXPECT_EQ(track->keys, nullptr);
    EXPECT_EQ(sync_get_val(track, 5.0), 0.0f);
}

TEST_F(Device, FileOfNoKeysGivesAnEmptyTrack) { EXPECT_EQ(Load(Header(0))->num_keys, 0); }

TEST_F(Device, EmptyFileGivesAnEmptyTrack) { EXPECT_EQ(Load("")->num_keys, 0); }

TEST_F(Device, TypeByteIsWidenedWithItsSign)
{
    const sync_track *track = Load(Header(1) + Bytes({0, 0, 0, 0, 0, 0, 0, 0, 0xFF}));
    EXPECT_EQ(track->keys[0].type, -1);
}

TEST_F(Device, RowAndValueAreLittleEndianAndSigned)
{
    const sync_track *track =
        Load(Header(1) + Bytes({0xFE, 0xFF, 0xFF, 0xFF, 0, 0, 0x80, 0xBF, 3}));
    ExpectKey(track->keys[0], -2, -1.0f, SYNC_KEY_QUADRATIC);
}

TEST_F(Device, CutOffFileKeepsItsCountAndItsMissingKeysAreZero)
{
    const sync_track *track = Load(Header(4) + fiveTwoAndAHalf + Bytes({7, 0, 0, 0}));
    ASSERT_EQ(track->num_keys, 4);
    ExpectKey(track->keys[0], 5, 2.5f, 0);
    ExpectKey(track->keys[1], 7, 0.0f, 0); // cut off behind its row
    ExpectKey(track->keys[2], 0, 0.0f, 0);
    ExpectKey(track->keys[3], 0, 0.0f, 0);
}

TEST_F(Device, KeyCutOffBeforeItsTypeHasTypeZero)
{
    const sync_track *track = Load(Header(1) + fiveTwoAndAHalf.substr(0, 8));
    ASSERT_EQ(track->num_keys, 1);
    ExpectKey(track->keys[0], 5, 2.5f, 0);
}

TEST_F(Device, NoiseForACountAsksForNoMemory)
{
    const sync_track *track = Load(Header(0x7FFFFFFF) + fiveTwoAndAHalf);
    EXPECT_EQ(track->num_keys, 0x7FFFFFFF);
    EXPECT_EQ(track->keys, nullptr);
    EXPECT_EQ(sync_get_val(track, 5.0), 0.0f);
}

// A million missing keys are those of a damaged file; one more, and the count is noise.
TEST_F(Device, MoreThanTwoToTheTwentyMissingKeysAreNone)
{
    const unsigned limit = 1u << 20;
    const int before = test::CountOpenFiles();
    const sync_track *damaged = Load(Header(1 + limit) + fiveTwoAndAHalf);
    ASSERT_NE(damaged->keys, nullptr);
    EXPECT_EQ(damaged->num_keys, int(1 + limit));
    ExpectKey(damaged->keys[limit], 0, 0.0f, 0);
    EXPECT_EQ(test::CountOpenFiles(), before);

    test::WriteFile("t_noise.track", Header(2 + limit) + fiveTwoAndAHalf);
    const sync_track *noise = sync_get_track(mDevice, "noise");
    EXPECT_EQ(noise->keys, nullptr);
    EXPECT_EQ(noise->num_keys, int(2 + limit));
    EXPECT_EQ(sync_get_val(noise, 5.0), 0.0f);
    EXPECT_EQ(test::CountOpenFiles(), before + 1);
}

TEST_F(Device, NegativeCountIsKeptAndTheFileStaysOpen)
{
    const int before = test::CountOpenFiles();
    const sync_track *track = Load(Header(0x80000000u));
    EXPECT_EQ(track->num_keys, int(0x80000000u));
    EXPECT_EQ(track->keys, nullptr);
    EXPECT_EQ(test::CountOpenFiles(), before + 1);
}

TEST_F(Device, GoodFileIsClosed)
{
    const int before = test::CountOpenFiles();
    Load(Header(1) + fiveTwoAndAHalf);
    EXPECT_EQ(test::CountOpenFiles(), before);
}

TEST_F(Device, ManyKeysAreReadInOrder)
{
    std::string bytes = Header(5000);
    for (int i = 0; i < 5000; i++)
        bytes += Bytes({i & 255, i >> 8, 0, 0, 0, 0, 0, 0, i & 3});
    const sync_track *track = Load(bytes);
    ASSERT_EQ(track->num_keys, 5000);
    for (int i = 0; i < 5000; i++)
        ExpectKey(track->keys[i], i, 0.0f, i & 3);
}

// The operations of a device whose files are counted and always hold one key.
int openedFiles = 0, closedFiles = 0;
size_t readAt = 0;
std::string lastPath, lastMode;

void *CountedOpen(const char *path, const char *mode)
{
    lastPath = path;
    lastMode = mode;
    openedFiles++;
    readAt = 0;
    return &openedFiles;
}

size_t CountedRead(void *destination, size_t size, size_t count, void *)
{
    static const std::string file = Header(1) + fiveTwoAndAHalf.substr(0, 8) + '\3';
    if (readAt + size * count > file.size())
        return 0;
    std::memcpy(destination, file.data() + readAt, size * count);
    readAt += size * count;
    return count;
}

int CountedClose(void *)
{
    closedFiles++;
    return 0;
}

TEST_F(Device, ReadsThroughTheOperationsItWasGivenAndOncePerName)
{
    sync_io_cb io{CountedOpen, CountedRead, CountedClose};
    sync_set_io_cb(mDevice, &io);
    io = {}; // the three pointers were copied
    const sync_track *track = sync_get_track(mDevice, "some:name");
    EXPECT_EQ(lastPath, "t_some:name.track");
    EXPECT_EQ(lastMode, "rb");
    EXPECT_EQ(track->num_keys, 1);
    EXPECT_EQ(sync_get_track(mDevice, "some:name"), track);
    EXPECT_EQ(openedFiles, 1);
    EXPECT_EQ(closedFiles, 1);
}

// Some count bytes instead of items.
size_t ReadAndCountBytes(void *destination, size_t size, size_t count, void *handle)
{
    return size * CountedRead(destination, size, count, handle);
}

size_t ReadAndAnswerTheLargestNumber(void *destination, size_t size, size_t count, void *handle)
{
    return CountedRead(destination, size, count, handle) == 0 ? 0 : size_t(-1);
}

TEST_F(Device, AnyAnswerOfAReadButZeroIsARead)
{
    for (const auto read : {ReadAndCountBytes, ReadAndAnswerTheLargestNumber}) {
        sync_io_cb io{CountedOpen, read, CountedClose};
        sync_set_io_cb(mDevice, &io);
        const sync_track *track =
            sync_get_track(mDevice, read == ReadAndCountBytes ? "bytes" : "largest");
        ASSERT_EQ(track->num_keys, 1);
        ExpectKey(track->keys[0], 5, 2.5f, SYNC_KEY_QUADRATIC);
    }
}

TEST_F(Device, NamesDifferByCase)
{
    const sync_track *lower = sync_get_track(mDevice, "a");
    const sync_track *upper = sync_get_track(mDevice, "A");
    EXPECT_NE(lower, upper);
    EXPECT_EQ(mDevice->data.num_tracks, 2u);
    EXPECT_EQ(sync_find_track(&mDevice->data, "a"), 0);
    EXPECT_EQ(sync_find_track(&mDevice->data, "A"), 1);
    EXPECT_EQ(sync_find_track(&mDevice->data, "b"), -1);
}

TEST_F(Device, CreatedTrackIsEmptyAndLast)
{
    sync_get_track(mDevice, "a");
    EXPECT_EQ(sync_create_track(&mDevice->data, "b"), 1);
    EXPECT_STREQ(mDevice->data.tracks[1]->name, "b");
    EXPECT_EQ(mDevice->data.tracks[1]->num_keys, 0);
}

using DeviceDeath = Device;

TEST_F(DeviceDeath, CreatingATrackTwiceStopsTheProgram)
{
    sync_create_track(&mDevice->data, "a");
    EXPECT_DEATH(sync_create_track(&mDevice->data, "a"),
                 "\\(sync_find_track\\(d, name\\) < 0\\), function sync_create_track, "
                 "file sync/data, line 21");
}

// Prefix "t", "_", the name, ".track" and the zero fill the 1024 bytes with a name of 1015.
TEST_F(DeviceDeath, PathThatExceedsItsBufferStopsTheProgram)
{
    const std::string longest(1015, 'n');
    EXPECT_EQ(sync_get_track(mDevice, longest.c_str())->num_keys, 0);
    EXPECT_DEATH(sync_get_track(mDevice, (longest + "n").c_str()), "sync/data");
}
} // namespace
