#pragma once

#include "benchmarks/Stage.h"
#include "benchmarks/Timing.h"

#include <chrono>
#include <cstdio>
#include <vector>

namespace bench
{
struct cFrameTime
{
    double mRow, mMilliseconds, mProcessorMilliseconds; ///< the last of all threads together
};

template <typename Draw>
cFrameTime TimeFrame(double row, Draw draw)
{
    const auto start = std::chrono::steady_clock::now();
    const double processorSeconds = ProcessorSeconds([&] { draw(row); });
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    return {row, took.count(), processorSeconds * 1e3};
}

/// Calls `draw` for `count` rows spread over the show, once to make all ready and once more for the
/// times, and prints "ROW MILLISECONDS PROCESSOR-MILLISECONDS" for each.
template <typename Draw>
void PrintFrameTimes(int count, Draw draw)
{
    for (int i = 0; i < count; i++)
        draw(RowOf(i, count));
    std::vector<cFrameTime> times;
    for (int i = 0; i < count; i++)
        times.push_back(TimeFrame(RowOf(i, count), draw));
    for (const cFrameTime &time : times)
        std::printf("%.2f %.4f %.4f\n", time.mRow, time.mMilliseconds, time.mProcessorMilliseconds);
}

/// Writes a picture's bytes, three a pixel, for another program to compare; nothing where it can't.
inline void WritePixels(const char *path, const std::vector<unsigned char> &pixels)
{
    if (FILE *file = std::fopen(path, "wb")) {
        std::fwrite(pixels.data(), 1, pixels.size(), file);
        std::fclose(file);
    }
}
} // namespace bench
