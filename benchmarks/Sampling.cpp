// The 22 tracks of a frame, sampled by the player and, beside it, by std::upper_bound over the same
// keys with the same arithmetic, while the show plays from its first row to its last and over
// again.

#include "benchmarks/Report.h"
#include "benchmarks/Timing.h"
#include "sync/track.h"

#include <cmath>
#include <random>

namespace
{
const int trackCount = 22;
const double rowsPerFrame = 17.6 / 60.0;
const int pairCount = 101; // short ones: what else the machine does meets both alike
const int framesPerMeasure = 4000;

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

// Processor seconds of a frame; `row` is where the show stands, and is moved on.
template <typename Sample>
double TimeFrames(const cTracks &tracks, double &row, Sample sample)
{
    float sum = 0.0f;
    const double seconds = bench::ProcessorSeconds([&] {
        for (int frame = 0; frame < framesPerMeasure; frame++) {
            for (size_t i = 0; i < trackCount; i++)
                sum += sample(i, row);
            row = row < tracks.mLastRow ? row + rowsPerFrame : 0.0;
        }
    });
    // never so, but the compiler can't know that the samples aren't wanted
    return std::isnan(sum) ? 0.0 : seconds / framesPerMeasure;
}

std::vector<bench::cPair> MeasureTracks(int keyCount)
{
    const cTracks tracks(keyCount);
    double playerRow = 0.0, peerRow = 0.0;
    return bench::MeasurePairs(
        pairCount,
        [&] {
            return 1e9 * TimeFrames(tracks, playerRow, [&](size_t i, double row) {
                       return sync_get_val(&tracks.mTracks[i], row);
                   });
        },
        [&] {
            return 1e9 * TimeFrames(tracks, peerRow, [&](size_t i, double row) {
                       return SampleByUpperBound(tracks.mKeys[i], row);
                   });
        });
}
} // namespace

int main()
{
    for (int keyCount : {10, 100, 1000, 10000, 100000}) {
        const std::string what = "22 tracks of " + std::to_string(keyCount) + " keys sampled";
        bench::PrintRow({what, "std::upper_bound", "ns", "<=1"}, MeasureTracks(keyCount));
    }
}
