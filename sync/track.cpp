#include "sync/track.h"

#include "base/Assert.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

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

// For types 1 to 3. The order of the operations is part of the result: each is rounded. All shapes
// are worked out and one is picked, because a branch on the type would be guessed wrong often.
float Interpolate(const sync_key &key, const sync_key &next, double row)
{
    const double t = (row - double(key.row)) / double(RowsBetween(key, next));
    const double shapes[3] = {t, (t * -2.0 + 3.0) * (t * t), t * t};
    const float difference = next.value - key.value;
    return float(double(difference) * shapes[key.type - 1] + double(key.value));
}

// Where the binary search for a row ends: just after the key that it met on the row, else just
// after the last key before the row, or at the first key where there is none.
struct cPlace
{
    const sync_key *mNext;
    bool mFound;
};

// Binary search that never exits early: a hit is remembered and every later probe goes left, so the
// search ends just after the hit. The sequence of branches is then the same for all rows from one
// key to the next, and the processor predicts it from frame to frame; an early exit would be
// mispredicted every few rows. `count` is at least 1.
cPlace Bisect(const sync_key *keys, size_t count, int row)
{
    const std::int64_t beforeAllRows = std::numeric_limits<std::int64_t>::min();
    std::int64_t wanted = row;
    do {
        const size_t half = count / 2;
        const sync_key *mi = keys + half;
        const std::int64_t at = mi->row;
        if (at <= wanted) {
            keys = mi + 1;
            count -= half + 1;
            wanted = at == wanted ? beforeAllRows : wanted;
        } else {
            count = half;
        }
    } while (count > 0);
    return {keys, wanted != row};
}

float SampleWithoutKeys(const sync_track *track)
{
    if (track->num_keys < 0)
        sync_find_key(track, 0); // stops the program
    return 0.0f;
}

// `row` toward minus infinity; one that does not fit into an integer counts as the smallest.
int FloorToInt(double row)
{
    if (!(std::fabs(row) < 2147483648.0)) [[unlikely]]
        return std::numeric_limits<int>::min();
    const int truncated = int(row);
    return truncated - (double(truncated) > row);
}
} // namespace

int sync_find_key(const sync_track *track, int row)
{
    const sync_key *keys = track->keys;
    if (track->num_keys == 0)
        return ~0;
    if (!keys && track->num_keys > 0)
        return FindAmongZeroKeys(*track, row);
    // A negative key count is a file that nobody meant.
    const int lo = 0, hi = std::min(track->num_keys, 0);
    VYR_ASSERT_AT("sync/track", 85, lo == hi);
    const cPlace place = Bisect(keys, size_t(track->num_keys), row);
    const int next = int(place.mNext - keys);
    return place.mFound ? next - 1 : ~next;
}

// Called 22 times a frame: everything it calls is drawn into it.
[[gnu::flatten]] float sync_get_val(const sync_track *track, double row)
{
    const sync_key *keys = track->keys;
    if (track->num_keys <= 0 || !keys) [[unlikely]]
        return SampleWithoutKeys(track);
    const sync_key *next = Bisect(keys, size_t(track->num_keys), FloorToInt(row)).mNext;
    const sync_key *last = keys + (track->num_keys - 1);
    if (next == keys)
        return keys->value;
    if (next > last)
        return last->value;

    // An exact hit goes on here too: row 10.25 lies a quarter of a row after a key at 10.
    const sync_key &key = *(next - 1);
    const unsigned type = static_cast<unsigned>(key.type);
    if (type - 1 < 3) // not a hold
        return Interpolate(key, *next, row);
    if (type != SYNC_KEY_HOLD)
        VYR_ASSERT_AT("sync/track", 64, 0);
    return key.value;
}
