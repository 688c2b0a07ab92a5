#include "sync/track.h"

#include "platform/Assert.h"
#include "platform/Truncate.h"

#include <cmath>

namespace
{
// A track that announces more keys than could be held has none in memory: all of them count as
// zero.
int FindAmongZeroKeys(const sync_track &track, int row)
{
    if (row == 0)
        return track.num_keys / 2;
    return row < 0 ? ~0 : ~track.num_keys;
}

// Rows are subtracted modulo 2^32, so that keys out of order can't overflow.
int RowsBetween(const sync_key &from, const sync_key &to)
{
    return static_cast<int>(static_cast<unsigned>(to.row) - static_cast<unsigned>(from.row));
}

// The order of the operations is part of the result: each is rounded.
double Shape(int type, double t)
{
    switch (type) {
    case SYNC_KEY_SMOOTHSTEP:
        return (t * -2.0 + 3.0) * (t * t);
    case SYNC_KEY_QUADRATIC:
        return t * t;
    default:
        return t;
    }
}

float Interpolate(const sync_key &key, const sync_key &next, double row)
{
    const double t = (row - double(key.row)) / double(RowsBetween(key, next));
    const float difference = next.value - key.value;
    return float(double(difference) * Shape(key.type, t) + double(key.value));
}
} // namespace

int sync_find_key(const sync_track *track, int row)
{
    const sync_key *keys = track->keys;
    if (!keys && track->num_keys > 0)
        return FindAmongZeroKeys(*track, row);
    int lo = 0, count = track->num_keys; // what is left of the keys: `count` of them from `lo` on
    while (count > 0) {
        const int half = count / 2, mi = lo + half, hi = lo + count;
        VYR_ASSERT_AT("sync/track", 76, mi != hi);
        if (keys[mi].row < row) {
            lo = mi + 1;
            count -= half + 1;
        } else if (keys[mi].row == row) {
            return mi;
        } else {
            count = half;
        }
    }
    // A negative key count never enters the loop: it is a file that nobody meant.
    const int hi = lo + count;
    VYR_ASSERT_AT("sync/track", 85, lo == hi);
    return ~lo;
}

// Called 22 times a frame: everything it calls is drawn into it.
[[gnu::flatten]] float sync_get_val(const sync_track *track, double row)
{
    if (track->num_keys == 0)
        return 0.0f;
    int i = sync_find_key(track, platform::TruncateToInt(std::floor(row)));
    if (!track->keys)
        return 0.0f;
    if (i < 0)
        i = -i - 2; // the key before the insertion point
    if (i < 0)
        return track->keys[0].value;
    if (i > track->num_keys - 2)
        return track->keys[track->num_keys - 1].value;

    // An exact hit goes on here too: row 10.25 lies a quarter of a row behind a key at 10.
    const sync_key &key = track->keys[i];
    if (static_cast<unsigned>(key.type) > 3)
        VYR_ASSERT_AT("sync/track", 64, 0);
    if (key.type == SYNC_KEY_HOLD)
        return key.value;
    return Interpolate(key, track->keys[i + 1], row);
}
