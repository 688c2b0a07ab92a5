#include "sync/data.h"

#include "base/Assert.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
// A file cut short keeps its stated number of keys, as zeros. Past this many missing keys the count
// is no longer that of a damaged file but noise: it is treated as a failed allocation.
const int maximumMissingKeys = 1 << 20;

void *OpenFile(const char *path, const char *mode) { return std::fopen(path, mode); }

size_t ReadFile(void *destination, size_t size, size_t count, void *handle)
{
    return std::fread(destination, size, count, static_cast<FILE *>(handle));
}

int CloseFile(void *handle) { return std::fclose(static_cast<FILE *>(handle)); }

// Appends at most 1023 characters of `text`; a path that outgrows its buffer stops the program.
void AppendToPath(char (&path)[1024], const char *text)
{
    const size_t length = std::strlen(path);
    const size_t added = strnlen(text, 1023);
    const bool isPathWithinBuffer = length + added < sizeof path;
    VYR_ASSERT("sync/data", isPathWithinBuffer);
    std::memcpy(path + length, text, added);
    path[length + added] = '\0';
}

const char *sync_track_path(const char *base, const char *name)
{
    static char path[1024]; // contract: one buffer, so loading is not re-entrant
    path[0] = '\0';
    AppendToPath(path, base);
    AppendToPath(path, "_");
    AppendToPath(path, name);
    AppendToPath(path, ".track");
    return path;
}

uint32_t FromLittleEndian(const unsigned char *bytes)
{
    return uint32_t(bytes[0]) | uint32_t(bytes[1]) << 8 | uint32_t(bytes[2]) << 16 |
           uint32_t(bytes[3]) << 24;
}

// Reads one key; what the file no longer holds is left as it was. False once the file has ended.
bool ReadKey(const sync_io_cb &io, void *file, sync_key &key)
{
    unsigned char bytes[4] = {};
    if (io.read(bytes, 4, 1, file) == 0)
        return false;
    key.row = static_cast<int>(FromLittleEndian(bytes));
    if (io.read(bytes, 4, 1, file) == 0)
        return false;
    key.value = std::bit_cast<float>(FromLittleEndian(bytes));
    signed char type = 0;
    if (io.read(&type, 1, 1, file) == 0)
        return false;
    key.type = type;
    return true;
}

// Makes room for `count` keys, those from `used` on zero. False, and the old room kept, when memory
// is short.
bool GrowKeys(sync_track &track, int used, int count)
{
    void *grown = std::realloc(track.keys, size_t(count) * sizeof(sync_key));
    if (!grown)
        return false;
    track.keys = static_cast<sync_key *>(grown);
    std::fill(track.keys + used, track.keys + count, sync_key{});
    return true;
}

void DropKeys(sync_track &track)
{
    std::free(track.keys);
    track.keys = nullptr;
}

// Reads the keys of `track`, whose stated count may be any positive number: the memory asked for
// follows what the file turns out to hold. False when memory was short.
bool ReadKeys(const sync_io_cb &io, void *file, sync_track &track)
{
    int capacity = 0;
    for (int i = 0; i < track.num_keys; i++) {
        if (i == capacity) {
            const int room = std::min(std::max(capacity, 1024), track.num_keys - capacity);
            if (!GrowKeys(track, capacity, capacity + room))
                return false;
            capacity += room;
        }
        if (!ReadKey(io, file, track.keys[i]))
            return track.num_keys - i <= maximumMissingKeys &&
                   GrowKeys(track, capacity, track.num_keys);
    }
    return true;
}

void ReadTrack(const sync_io_cb &io, void *file, sync_track &track)
{
    unsigned char count[8] = {}; // eight bytes in the file, of which the first four are the count
    io.read(count, 8, 1, file);
    track.num_keys = static_cast<int>(FromLittleEndian(count));
    if (track.num_keys < 0)
        return; // contract: the file stays open, and the first sample stops the program
    if (!ReadKeys(io, file, track)) {
        DropKeys(track); // contract: the count and the open file stay
        return;
    }
    io.close(file);
}
} // namespace

sync_device *sync_create_device(const char *prefix)
{
    auto *device = static_cast<sync_device *>(std::malloc(sizeof(sync_device)));
    if (!device)
        return nullptr;
    device->base = strdup(prefix);
    if (!device->base) {
        std::free(device);
        return nullptr;
    }
    device->data = {nullptr, 0};
    device->io_cb = {OpenFile, ReadFile, CloseFile};
    return device;
}

void sync_destroy_device(sync_device *device)
{
    std::free(device->base);
    sync_data_deinit(&device->data);
    std::free(device);
}

void sync_set_io_cb(sync_device *device, sync_io_cb *io_cb) { device->io_cb = *io_cb; }

const sync_track *sync_get_track(sync_device *device, const char *name)
{
    const int found = sync_find_track(&device->data, name);
    if (found >= 0)
        return device->data.tracks[found];

    const int created = sync_create_track(&device->data, name);
    sync_track *track = device->data.tracks[created];
    void *file = device->io_cb.open(sync_track_path(device->base, name), "rb");
    if (file)
        ReadTrack(device->io_cb, file, *track);
    return track;
}

int sync_find_track(const sync_data *data, const char *name)
{
    for (int i = 0; i < static_cast<int>(data->num_tracks); i++)
        if (std::strcmp(data->tracks[i]->name, name) == 0)
            return i;
    return -1;
}

int sync_create_track(sync_data *data, const char *name)
{
    const sync_data *d = data;
    VYR_ASSERT_AT("sync/data", 21, sync_find_track(d, name) < 0);
    auto *track = static_cast<sync_track *>(std::malloc(sizeof(sync_track)));
    auto **tracks = static_cast<sync_track **>(
        std::realloc(data->tracks, (data->num_tracks + 1) * sizeof(sync_track *)));
    // A track is never null, so without memory for one the program ends here.
    const bool isMemoryThere = track && tracks;
    VYR_ASSERT("sync/data", isMemoryThere);
    *track = {strdup(name), nullptr, 0};
    VYR_ASSERT("sync/data", track->name);
    data->tracks = tracks;
    data->tracks[data->num_tracks++] = track;
    return static_cast<int>(data->num_tracks) - 1;
}

void sync_data_deinit(sync_data *data)
{
    for (size_t i = 0; i < data->num_tracks; i++) {
        std::free(data->tracks[i]->name);
        std::free(data->tracks[i]->keys);
        std::free(data->tracks[i]);
    }
    std::free(data->tracks);
}
