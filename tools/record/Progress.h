#pragma once

#include "tools/record/FrameGrid.h"

#include <chrono>
#include <string>

namespace record
{
/// One line on the terminal that says how far a recording is; nothing at all where standard error
/// is no terminal.
class cProgress
{
public:
    explicit cProgress(const cFrameRange &range);
    ~cProgress(); ///< clears the line

    void Show(int64_t frame, double row); ///< `frame` has just been drawn

    /// "frame 1234/12355  row 362.1  10 %  45.3 frames/s  4:05 left", after `seconds` of work.
    static std::string Describe(const cFrameRange &range, int64_t frame, double row,
                                double seconds);

private:
    using tClock = std::chrono::steady_clock;

    cFrameRange mRange;
    bool mIsOnTerminal;
    tClock::time_point mStarted, mShown;
};
} // namespace record
