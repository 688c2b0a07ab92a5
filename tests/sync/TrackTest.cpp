#include "sync/track.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <vector>

namespace
{
// A track over keys that the test holds.
struct cTestTrack
{
    std::vector<sync_key> mKeys;
    sync_track mTrack{nullptr, mKeys.data(), int(mKeys.size())};

    explicit cTestTrack(std::vector<sync_key> keys) : mKeys(std::move(keys)) {}
    cTestTrack(const cTestTrack &) = delete;

    float At(double row) const { return sync_get_val(&mTrack, row); }
    int Find(int row) const { return sync_find_key(&mTrack, row); }
};

// 1 at row 0, 3 at row 10.
cTestTrack OneToThree(int type) { return cTestTrack({{0, 1.0f, type}, {10, 3.0f, SYNC_KEY_HOLD}}); }

TEST(Track, WithoutKeysIsZeroEverywhere)
{
    const cTestTrack empty({});
    EXPECT_EQ(empty.At(-100.0), 0.0f);
    EXPECT_EQ(empty.At(0.0), 0.0f);
    EXPECT_EQ(empty.At(3624.0), 0.0f);
}

TEST(Track, LinearKeyMovesEvenlyToTheNext)
{
    const cTestTrack track = OneToThree(SYNC_KEY_LINEAR);
    EXPECT_EQ(track.At(-5.0), 1.0f); // before the first key
    EXPECT_EQ(track.At(0.0), 1.0f);
    EXPECT_EQ(track.At(5.0), 2.0f);
    EXPECT_EQ(track.At(9.9), 2.98f); // rounded once, from double
    EXPECT_EQ(track.At(10.0), 3.0f);
    EXPECT_EQ(track.At(1e6), 3.0f);
}

TEST(Track, SmoothstepEasesInAndOut)
{
    const cTestTrack track = OneToThree(SYNC_KEY_SMOOTHSTEP);
    EXPECT_EQ(track.At(5.0), 2.0f);
    EXPECT_EQ(track.At(2.5), 1.3125f); // 1 + 2 * (1/16) * (5/2)
}

TEST(Track, QuadraticEasesIn)
{
    const cTestTrack track = OneToThree(SYNC_KEY_QUADRATIC);
    EXPECT_EQ(track.At(5.0), 1.5f);
}

TEST(Track, HoldJumpsAtTheNextKeyExactly)
{
    const cTestTrack track = OneToThree(SYNC_KEY_HOLD);
    EXPECT_EQ(track.At(9.999), 1.0f);
    EXPECT_EQ(track.At(10.0), 3.0f);
}

// A hold does no arithmetic: an infinite next value would make inf * 0 = NaN.
TEST(Track, HoldReturnsTheKeyItself)
{
    const float infinity = std::numeric_limits<float>::infinity();
    const cTestTrack track({{0, 1.0f, SYNC_KEY_HOLD}, {10, infinity, SYNC_KEY_HOLD}});
    EXPECT_EQ(track.At(5.0), 1.0f);
}

TEST(Track, SingleKeyIsItsValueEverywhere)
{
    const cTestTrack track({{5, 2.5f, SYNC_KEY_LINEAR}});
    EXPECT_EQ(track.At(-1.0), 2.5f);
    EXPECT_EQ(track.At(5.0), 2.5f);
    EXPECT_EQ(track.At(9.0), 2.5f);
}

// Row 10.25 on a key at 10 is a quarter of a row on its way, not at the key.
TEST(Track, ExactHitInterpolatesTheFractionOfTheRow)
{
    const cTestTrack track({{0, 0.0f, SYNC_KEY_HOLD}, {10, 0.0f, SYNC_KEY_LINEAR}, {20, 1.0f, 0}});
    EXPECT_EQ(track.At(10.25), 0.025f);
}

TEST(Track, NegativeRowsFloorTowardMinusInfinity)
{
    const cTestTrack track({{-2, 0.0f, 1}, {-1, 10.0f, 1}, {0, 20.0f, 1}, {1, 50.0f, 0}});
    EXPECT_EQ(track.At(-0.5), 15.0f); // between -1 and 0; from 0 and 1 it would be 5
    EXPECT_EQ(track.At(-1.5), 5.0f);
}

// The difference of two values is formed in single precision, the rest in double.
TEST(Track, DifferenceIsRoundedToSingleFirst)
{
    const float a = 0.1f, b = 16777216.0f;
    const cTestTrack track({{0, a, SYNC_KEY_LINEAR}, {3, b, SYNC_KEY_HOLD}});
    const float difference = b - a;
    EXPECT_EQ(track.At(1.0), float(double(difference) * (1.0 / 3.0) + double(a)));
}

TEST(Track, FindGivesTheIndexOrTheComplementOfTheInsertionPoint)
{
    const cTestTrack track({{0, 0, 0}, {4, 0, 0}, {9, 0, 0}});
    EXPECT_EQ(track.Find(0), 0);
    EXPECT_EQ(track.Find(4), 1);
    EXPECT_EQ(track.Find(9), 2);
    EXPECT_EQ(track.Find(-1), ~0);
    EXPECT_EQ(track.Find(1), ~1);
    EXPECT_EQ(track.Find(8), ~2);
    EXPECT_EQ(track.Find(10), ~3);
}

TEST(Track, OfKeysOnOneRowTheBisectionsFirstIsFound)
{
    const cTestTrack track({{0, 0, 0}, {5, 1, 0}, {5, 2, 0}, {5, 3, 0}, {9, 4, 0}});
    EXPECT_EQ(track.Find(5), 2); // (0 + 5) / 2
}

// Plainly as the search is defined, whatever order the keys are in.
int FindStepByStep(const std::vector<sync_key> &keys, int row)
{
    int lo = 0, hi = int(keys.size());
    while (lo < hi) {
        const int mi = (lo + hi) / 2;
        if (keys[size_t(mi)].row == row)
            return mi;
        if (keys[size_t(mi)].row < row)
            lo = mi + 1;
        else
            hi = mi;
    }
    return ~lo;
}

// All tracks of up to six keys with rows from 0 to 3: in order or not, with many on one row.
TEST(Track, FindTakesTheStepsOfTheBisectionInAnyOrderOfKeys)
{
    for (size_t count = 1; count <= 6; count++)
        for (int order = 0; order < 1 << 2 * count; order++) {
            std::vector<sync_key> keys;
            for (size_t i = 0; i < count; i++)
                keys.push_back({order >> 2 * i & 3, float(i), SYNC_KEY_HOLD});
            const cTestTrack track(keys);
            for (int row = -1; row <= 4; row++)
                ASSERT_EQ(track.Find(row), FindStepByStep(keys, row)) << order << " at " << row;
        }
}

TEST(Track, FindGoesToTheEndsOfTheIntegers)
{
    const cTestTrack track({{INT_MIN, 0, 0}, {INT_MIN, 0, 0}, {0, 0, 0}, {INT_MAX, 0, 0}});
    EXPECT_EQ(track.Find(INT_MIN), 1); // of two, the one that the bisection meets
    EXPECT_EQ(track.Find(INT_MAX), 3);
    EXPECT_EQ(track.Find(INT_MAX - 1), ~3);
}

TEST(Track, RowsBeyondTheIntegersCountAsTheSmallest)
{
    const cTestTrack track = OneToThree(SYNC_KEY_LINEAR);
    EXPECT_EQ(track.At(1e300), 1.0f);
    EXPECT_EQ(track.At(std::nan("")), 1.0f);
}

// The difference of these rows does not fit into 32 bits; it wraps instead of being undefined.
TEST(Track, DistantRowsWrap)
{
    const cTestTrack track({{INT_MIN, 0.0f, SYNC_KEY_LINEAR}, {INT_MAX, 1.0f, SYNC_KEY_HOLD}});
    EXPECT_EQ(track.At(double(INT_MIN)), 0.0f);
    EXPECT_EQ(track.At(0.0), float((0.0 - double(INT_MIN)) / -1.0));
}

// The file announced more keys than memory holds: all of them count as zero.
TEST(Track, AnnouncedKeysWithoutMemoryAreZero)
{
    const sync_track track{nullptr, nullptr, 2000000000};
    EXPECT_EQ(sync_get_val(&track, 5.0), 0.0f);
    EXPECT_EQ(sync_find_key(&track, -1), ~0);
    EXPECT_EQ(sync_find_key(&track, 0), 1000000000); // the bisection's first
    EXPECT_EQ(sync_find_key(&track, 1), ~2000000000);
    const sync_track empty{nullptr, nullptr, 0};
    EXPECT_EQ(sync_find_key(&empty, 0), ~0);
}

TEST(TrackDeath, TypeOutsideTheFourStopsTheProgramWhenSampled)
{
    const cTestTrack track({{0, 1.0f, 4}, {10, 3.0f, -1}, {20, 3.0f, 7}});
    const char *message = "\\(0\\), function sync_get_val, file sync/track, line 64";
    EXPECT_DEATH(track.At(5.0), message);
    EXPECT_DEATH(track.At(15.0), message);
    EXPECT_EQ(track.At(20.0), 3.0f); // as the last key it is never looked at
    EXPECT_EQ(track.At(-1.0), 1.0f);
}

TEST(TrackDeath, NegativeKeyCountStopsTheProgramWhenSampled)
{
    const sync_track track{nullptr, nullptr, -1};
    const char *message = "\\(lo == hi\\), function sync_find_key, file sync/track, line 85";
    EXPECT_DEATH(sync_get_val(&track, 0.0), message);
}
} // namespace
