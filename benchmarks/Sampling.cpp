// The 22 tracks of a frame, sampled by the player and, beside it, by std::upper_bound over the same
// keys with the same arithmetic. The argument is the number of keys a track.

#include "sync/track.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace
{
const int trackCount = 22;
const double rowsPerFrame = 17.6 / 60.0;

struct cTracks
{
    std::vector<std::vector<sync_key>> mKeys;
    std::vector<sync_track> mTracks;
    double mLastRow = 0.0;

    // Keys one to eight rows apart, of all four types.
    explicit cTracks(int keyCount)
    {
        std::mt19937 random(17);
        for (int i = 0; i < trackCount; i++) {
            std::vector<sync_key> keys;
            int row = 0;
            for (int k = 0; k < keyCount; k++) {
                keys.push_back({row, float(random() % 1000), int(random() % 4)});
                row += 1 + int(random() % 8);
            }
            mLastRow = std::max(mLastRow, double(row));
            mKeys.push_back(std::move(keys));
        }
        for (std::vector<sync_key> &keys : mKeys)
            mTracks.push_back({nullptr, keys.data(), int(keys.size())});
    }
};

float Interpolated(const sync_key &key, const sync_key &next, double row)
{
    const double t = (row - double(key.row)) / double(next.row - key.row);
    const double difference = double(next.value - key.value);
    const double shape = key.type == SYNC_KEY_SMOOTHSTEP  ? (t * -2.0 + 3.0) * (t * t)
                         : key.type == SYNC_KEY_QUADRATIC ? t * t
                                                          : t;
    return float(difference * shape + double(key.value));
}

// Called like the player's own function, whose caller does not see into it either.
[[gnu::noinline]] float SampleByUpperBound(const std::vector<sync_key> &keys, double row)
{
    const auto next =
        std::upper_bound(keys.begin(), keys.end(), int(std::floor(row)),
                         [](int wanted, const sync_key &key) { return wanted < key.row; });
    if (next == keys.begin())
        return keys.front().value;
    if (next == keys.end())
        return keys.back().value;
    const sync_key &key = *(next - 1);
    return key.type == SYNC_KEY_HOLD ? key.value : Interpolated(key, *next, row);
}

// One iteration is one frame of a show that plays.
template <typename Sample>
void PlayFrames(benchmark::State &state, const cTracks &tracks, Sample sample)
{
    double row = 0.0;
    for ([[maybe_unused]] auto frame : state) {
        for (size_t i = 0; i < trackCount; i++)
            benchmark::DoNotOptimize(sample(i, row));
        row = row < tracks.mLastRow ? row + rowsPerFrame : 0.0;
    }
}

void Player(benchmark::State &state)
{
    const cTracks tracks(int(state.range(0)));
    PlayFrames(state, tracks,
               [&](size_t i, double row) { return sync_get_val(&tracks.mTracks[i], row); });
}

void UpperBound(benchmark::State &state)
{
    const cTracks tracks(int(state.range(0)));
    PlayFrames(state, tracks,
               [&](size_t i, double row) { return SampleByUpperBound(tracks.mKeys[i], row); });
}

BENCHMARK(Player)->RangeMultiplier(10)->Range(10, 100000);
BENCHMARK(UpperBound)->RangeMultiplier(10)->Range(10, 100000);
} // namespace

BENCHMARK_MAIN();
