#include "tools/record/Progress.h"

#include <cmath>
#include <cstdio>
#include <unistd.h>

namespace record
{
namespace
{
const double secondsBetweenLines = 0.2;
const char *const clearLine = "\r\033[K";

double SecondsBetween(std::chrono::steady_clock::time_point from,
                      std::chrono::steady_clock::time_point to)
{
    return std::chrono::duration<double>(to - from).count();
}
} // namespace

cProgress::cProgress(const cFrameRange &range)
    : mRange(range), mIsOnTerminal(isatty(STDERR_FILENO) != 0), mStarted(tClock::now())
{}

cProgress::~cProgress()
{
    if (mIsOnTerminal)
        std::fputs(clearLine, stderr);
}

std::string cProgress::Describe(const cFrameRange &range, int64_t frame, double row, double seconds)
{
    const int64_t done = frame + 1 - range.mFirst;
    const double rate = seconds > 0.0 ? double(done) / seconds : 0.0;
    const long left = rate > 0.0 ? std::lround(double(range.Count() - done) / rate) : 0;
    char line[160];
    std::snprintf(line, sizeof line,
                  "frame %lld/%lld  row %.1f  %d %%  %.1f frames/s  %ld:%02ld left",
                  static_cast<long long>(done), static_cast<long long>(range.Count()), row,
                  int(100 * done / range.Count()), rate, left / 60, left % 60);
    return line;
}

void cProgress::Show(int64_t frame, double row)
{
    const auto now = tClock::now();
    if (!mIsOnTerminal || SecondsBetween(mShown, now) < secondsBetweenLines)
        return;
    mShown = now;
    const std::string line = Describe(mRange, frame, row, SecondsBetween(mStarted, now));
    std::fprintf(stderr, "%s%s", clearLine, line.c_str());
    std::fflush(stderr);
}
} // namespace record
