#pragma once

#include "show/Show.h"
#include "tools/record/FrameGrid.h"
#include "tools/record/Picture.h"

#include <optional>
#include <string>

namespace record
{
/// What is to be made, checked as far as it can be without looking at the machine. Paths are
/// absolute where they name results, since the working directory becomes the show's.
struct cOptions
{
    std::string mOutput, mManifest, mFlashReport, mCosts;
    std::string mLyrics;   ///< words for captions; empty for none
    std::string mPictures; ///< a list of videos to take the pictures from; empty: they are drawn
    cSize mSize;
    cFrameRate mRate;
    int64_t mFrom = 0, mTo = 0; ///< millionths of a row
    int64_t mPart = 1, mParts = 1;
    std::optional<cFrameRange> mFrames; ///< a piece by its frames, in place of mPart
    std::optional<int64_t> mStill;      ///< millionths of a row
    bool mIsSheet = false;
    bool mIsDescription = false; ///< nothing is drawn, only said what would be
    double mEveryBars = 4.0;
    int mColumns = 6;
};

/// The frames to draw, out of all that lie between --from and --to.
cFrameRange FindPiece(const cOptions &options, const cFrameRange &range);

/// The command line, checked as far as it can be without the show that it is about: rows and bars
/// are still as they were typed.
struct cCommandLine
{
    std::string mShow; ///< the show's folder, as it was typed; empty: look for it
    cOptions mOptions;
    std::optional<std::string> mFrom, mTo, mStill, mEvery;
};

/// Reads the command line. Nothing comes back when it only asked for help or the version, which
/// have been printed. Throws cUsageError.
std::optional<cCommandLine> ReadCommandLine(int argc, char **argv);

/// What `commandLine` asks for of this show. Throws cUsageError.
cOptions ReadOptions(const cCommandLine &commandLine, const vyr::cShowDescription &show);
} // namespace record
