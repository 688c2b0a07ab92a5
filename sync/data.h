#pragma once

#include "sync/track.h"

#include <cstddef>

/// The three operations by which a device reads its files; the standard library's by default.
struct sync_io_cb
{
    void *(*open)(const char *path, const char *mode); ///< a handle, or null when there is no file
    /// As fread. The device reads one item of 1, 4 or 8 bytes at a time: 0 means the end of the
    /// file, any other result means that the item was read (contract).
    size_t (*read)(void *destination, size_t size, size_t count, void *handle);
    int (*close)(void *handle); ///< as fclose; the result is ignored
};

/// The tracks of one device, in the order in which they were asked for. An index never changes.
struct sync_data
{
    sync_track **tracks;
    size_t num_tracks;
};

/// A family of track files under one prefix. Owns its tracks.
struct sync_device
{
    char *base; ///< prefix of the file names
    sync_data data;
    sync_io_cb io_cb;
};

/// A device whose track files are named PREFIX_NAME.track; null when memory is short.
/// The caller owns it and destroys it with `sync_destroy_device`.
sync_device *sync_create_device(const char *prefix);

/// Frees the device with all its tracks. Its track pointers are invalid afterwards.
void sync_destroy_device(sync_device *device);

/// Files are read through `io_cb` from now on (the three pointers are copied).
void sync_set_io_cb(sync_device *device, sync_io_cb *io_cb);

/// The track called `name` (case matters), read from its file the first time it is asked for.
/// Never null: a missing file gives a track without keys, and a file that is cut short keeps its
/// stated number of keys, the missing ones all zero. Where more than 2^20 keys are missing the
/// count is noise: the track keeps it in `num_keys`, has null for `keys`, is 0 everywhere, and the
/// file stays open. The same holds where memory for the keys is short, and for a negative count,
/// except that sampling a track with a negative count is an assertion. The device keeps the track.
/// Not re-entrant, across devices too: the path is built in one static buffer. A path of more than
/// 1023 characters stops the program.
///
/// Layout of the file, little-endian, unpadded: 4 bytes number of keys, 4 bytes unused, then 9
/// bytes a key: row (signed 32-bit), value (32-bit float), type (signed byte). What follows is
/// ignored.
const sync_track *sync_get_track(sync_device *device, const char *name);

/// Index of the track called `name`, or -1.
int sync_find_track(const sync_data *data, const char *name);

/// Appends an empty track and returns its index. A name that exists already is an assertion.
int sync_create_track(sync_data *data, const char *name);

/// Frees all tracks and the list of them.
void sync_data_deinit(sync_data *data);
