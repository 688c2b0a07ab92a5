#pragma once

/// How a value moves from one key to the next.
enum sync_key_type : int
{
    SYNC_KEY_HOLD = 0,       ///< stays at the key's value: a step at the next key
    SYNC_KEY_LINEAR = 1,     ///< value + d * t
    SYNC_KEY_SMOOTHSTEP = 2, ///< value + d * t^2 * (3 - 2t)
    SYNC_KEY_QUADRATIC = 3   ///< value + d * t^2
};

/// One key of a track.
struct sync_key
{
    int row;     ///< rows since the music's start
    float value; ///< what the track is at `row`
    int type; ///< a sync_key_type; other numbers are kept as read and stop the program when sampled
};

/// A named curve: keys in ascending order of row. Owned by its device (see sync/data.h).
/// `keys` is null in a track without keys, and where the file's count was no count of keys
/// (negative, or over 2^20 more than the file holds) or the memory for them could not be allocated:
/// `num_keys` is the count all the same.
struct sync_track
{
    char *name;
    sync_key *keys;
    int num_keys;
};

/// Index of the key at `row`, or -i - 1 when no key lies there, i being the number of keys before
/// `row`. Of several keys on one row, the one that the binary search meets first. Where `keys` is
/// null, all `num_keys` of them count as lying on row 0; a negative `num_keys` is an assertion.
int sync_find_key(const sync_track *track, int row);

/// Value of `track` at `row` (rows, fractional). Before the first key: the first value; at and
/// after the last: the last. A track without keys, or with null for `keys`, is 0 everywhere; one
/// with a negative number of keys is an assertion. A key between which and the next one `row` lies
/// must have one of the four types: any other is an assertion. Rows outside the signed 32-bit range
/// count as the smallest row. Any number of threads may sample one loaded track.
float sync_get_val(const sync_track *track, double row);
