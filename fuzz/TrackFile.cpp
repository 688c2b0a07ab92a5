// Track files, through a device whose files lie in memory, and the sampling of what was read.
//
// Promises: the count and every key are those of the bytes; what is missing is zero; the file is
// closed unless its count is no count; reading ends within the file's length; a track written again
// reads the same; a sampled value lies between the two keys around it.

#include "fuzz/Fuzz.h"
#include "sync/data.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <vector>

namespace
{
struct cMemoryFile
{
    const uint8_t *mData = nullptr;
    size_t mSize = 0, mPosition = 0, mReads = 0;
    bool mIsOpen = false;
};
cMemoryFile file;

void *Open(const char *, const char *)
{
    file.mIsOpen = true;
    file.mPosition = file.mReads = 0;
    return &file;
}

// As fread: what there is of an item is copied, but only whole items count.
size_t Read(void *destination, size_t size, size_t count, void *)
{
    const size_t bytes = std::min(size * count, file.mSize - file.mPosition);
    if (bytes > 0)
        std::memcpy(destination, file.mData + file.mPosition, bytes);
    file.mPosition += bytes;
    file.mReads++;
    return bytes / size;
}

int Close(void *)
{
    FUZZ_EXPECT(file.mIsOpen);
    file.mIsOpen = false;
    return 0;
}

const sync_track *Load(sync_device *device, const char *name, const uint8_t *data, size_t size)
{
    file = {data, size, 0, 0, false};
    return sync_get_track(device, name);
}

// The little-endian number at `offset`; bytes behind the end of the file count as zero.
uint32_t NumberAt(const uint8_t *data, size_t size, size_t offset)
{
    uint32_t number = 0;
    for (size_t i = 0; i < 4 && offset + i < size; i++)
        number |= uint32_t(data[offset + i]) << 8 * i;
    return number;
}

void ExpectKeysOfFile(const sync_track &track, const uint8_t *data, size_t size)
{
    const size_t held = size < 8 ? 0 : (size - 8) / 9;
    const size_t count = std::min(size_t(track.num_keys), held);
    for (size_t i = 0; i < count; i++) {
        const sync_key &key = track.keys[i];
        FUZZ_EXPECT(uint32_t(key.row) == NumberAt(data, size, 8 + 9 * i));
        FUZZ_EXPECT(std::bit_cast<uint32_t>(key.value) == NumberAt(data, size, 12 + 9 * i));
        FUZZ_EXPECT(key.type == int(int8_t(data[16 + 9 * i])));
    }
    // one key may be there in part; those behind it are zero
    for (size_t i = held + 1; i < size_t(track.num_keys); i++)
        FUZZ_EXPECT(track.keys[i].row == 0 && track.keys[i].type == 0 &&
                    std::bit_cast<uint32_t>(track.keys[i].value) == 0);
}

void ExpectWhatTheFileSays(const sync_track &track, const uint8_t *data, size_t size)
{
    FUZZ_EXPECT(track.num_keys == int(NumberAt(data, size, 0)));
    FUZZ_EXPECT(file.mReads <= 3 * (size / 9 + 2)); // three a key
    const bool isHeld = track.num_keys == 0 || track.keys;
    FUZZ_EXPECT(file.mIsOpen == !isHeld);
    if (track.keys)
        ExpectKeysOfFile(track, data, size);
}

// Sampling
// -----------------------------------------------------------------------------------------

// What a show's track is: ascending, of the four types, and of values that can be subtracted.
bool IsLegal(const sync_track &track)
{
    for (int i = 0; i < track.num_keys; i++) {
        const sync_key &key = track.keys[i];
        if (unsigned(key.type) > 3 || !(std::fabs(key.value) < 1e30f))
            return false;
        if (i > 0 && (track.keys[i - 1].row >= key.row ||
                      int64_t(key.row) - track.keys[i - 1].row > INT32_MAX))
            return false;
    }
    return true;
}

bool HasOnlyKnownTypes(const sync_track &track)
{
    return std::all_of(track.keys, track.keys + track.num_keys,
                       [](const sync_key &key) { return unsigned(key.type) <= 3; });
}

void ExpectBetween(float value, const sync_key &key, const sync_key &next)
{
    const float low = std::min(key.value, next.value), high = std::max(key.value, next.value);
    // The difference of the two is rounded to a float before it is scaled.
    const float rounding = 2 * FLT_EPSILON * std::max(std::fabs(low), std::fabs(high));
    if (key.type == SYNC_KEY_HOLD)
        FUZZ_EXPECT(value == key.value);
    else
        FUZZ_EXPECT(value >= low - rounding && value <= high + rounding);
}

void SampleFrom(const sync_track &track, int i)
{
    const sync_key &key = track.keys[i], &next = track.keys[i + 1];
    const double length = double(next.row) - double(key.row);
    FUZZ_EXPECT(sync_find_key(&track, key.row) == i);
    FUZZ_EXPECT(sync_get_val(&track, key.row) == key.value);
    for (double part : {0.25, 0.5, 0.9999})
        ExpectBetween(sync_get_val(&track, key.row + length * part), key, next);
    if (length > 1)
        FUZZ_EXPECT(sync_find_key(&track, key.row + 1) == -(i + 1) - 1);
}

void SampleLegal(const sync_track &track)
{
    const sync_key &first = track.keys[0], &last = track.keys[track.num_keys - 1];
    // A row below the smallest counts as the smallest, which is then not before the first key.
    FUZZ_EXPECT(sync_get_val(&track, double(first.row) - 0.5) == first.value ||
                first.row == INT32_MIN);
    FUZZ_EXPECT(sync_get_val(&track, double(last.row)) == last.value);
    FUZZ_EXPECT(sync_get_val(&track, double(last.row) + 0.5) == last.value ||
                last.row == INT32_MAX);
    const int step = 1 + track.num_keys / 16; // sixteen of them show as much as all
    for (int i = 0; i + 1 < track.num_keys; i += step)
        SampleFrom(track, i);
}

void Sample(const sync_track &track)
{
    if (track.num_keys == 0)
        FUZZ_EXPECT(sync_get_val(&track, 3.5) == 0.0f);
    if (track.num_keys <= 0 || !track.keys || !HasOnlyKnownTypes(track))
        return; // sampling stops the program where a type or a count is none
    if (IsLegal(track))
        SampleLegal(track);
    for (double row : {-1e300, -1.0, 0.0, 17.6, 3623.99, 2147483647.5, 1e300})
        sync_get_val(&track, row); // whatever the keys are: some value, and an end
    sync_get_val(&track, std::nan(""));
}

// Written again
// ------------------------------------------------------------------------------------

uint8_t *Append(uint8_t *end, uint32_t number)
{
    for (int shift = 0; shift < 32; shift += 8)
        *end++ = uint8_t(number >> shift);
    return end;
}

std::vector<uint8_t> Write(const sync_track &track)
{
    std::vector<uint8_t> bytes(8 + 9 * size_t(track.num_keys));
    uint8_t *end = Append(bytes.data(), uint32_t(track.num_keys));
    end = Append(end, 0xDEADBEEF);
    for (int i = 0; i < track.num_keys; i++) {
        end = Append(end, uint32_t(track.keys[i].row));
        end = Append(end, std::bit_cast<uint32_t>(track.keys[i].value));
        *end++ = uint8_t(track.keys[i].type);
    }
    return bytes;
}

void ExpectTheSameWhenWrittenAgain(sync_device *device, const sync_track &track)
{
    if (track.num_keys < 0 || track.num_keys > 512 || (track.num_keys > 0 && !track.keys))
        return;
    const std::vector<uint8_t> bytes = Write(track);
    const sync_track *again = Load(device, "again", bytes.data(), bytes.size());
    FUZZ_EXPECT(again->num_keys == track.num_keys);
    if (track.num_keys > 0)
        FUZZ_EXPECT(
            std::memcmp(again->keys, track.keys, size_t(track.num_keys) * sizeof(sync_key)) == 0);
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // A short file that announces up to a million keys gets them, as zeros: slow to do often.
    const uint32_t count = NumberAt(data, size, 0);
    if (count > size / 9 + 256 && count < size / 9 + 1'100'000 && size % 256 != 255)
        return 0;
    sync_io_cb io{Open, Read, Close};
    sync_device *device = sync_create_device("f");
    sync_set_io_cb(device, &io);
    const sync_track *track = Load(device, "x", data, size);
    ExpectWhatTheFileSays(*track, data, size);
    Sample(*track);
    ExpectTheSameWhenWrittenAgain(device, *track);
    sync_destroy_device(device);
    return 0;
}
