#pragma once

#include "tools/record/FrameGrid.h"
#include "tools/record/Stage.h"

#include <optional>
#include <string>

namespace record
{
/// What the command line asks for, checked as far as it can be without looking at the machine.
/// Paths are absolute where they name results, since the working directory becomes the show's.
struct cOptions
{
    std::string mShow; ///< empty: look for it
    std::string mOutput, mManifest, mFlashReport;
    std::string mLyrics; ///< words for captions; empty for none
    cSize mSize;
    cFrameRate mRate;
    int64_t mFrom = 0, mTo = EndOfShow(); ///< millionths of a row
    int64_t mPart = 1, mParts = 1;
    std::optional<int64_t> mStill; ///< millionths of a row
    bool mIsSheet = false;
    double mEveryBars = 4.0;
    int mColumns = 6;
};

/// Reads the command line. Nothing comes back when it only asked for help or the version, which
/// have been printed. Throws cUsageError.
std::optional<cOptions> ReadCommandLine(int argc, char **argv);
} // namespace record
