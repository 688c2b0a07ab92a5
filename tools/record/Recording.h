#pragma once

#include "show/ShowFolder.h"
#include "tools/record/Options.h"

namespace record
{
/// How a recording ended; also the exit status of the program.
enum eOutcome : int
{
    DONE = 0,
    FAILED = 1,
    MISUSED = 2,
    FLASHES = 3,
    INTERRUPTED = 130
};

/// Draws the frames that `options` choose into a video, a manifest and a flash report, whichever
/// were asked for. The working directory is the folder of `show`. Throws cFailure.
eOutcome Record(const cOptions &options, vyr::cShowFolder &show);

/// Prints what `Record` would write into the first line of a manifest: what pieces have to have in
/// common, to be joined.
eOutcome Describe(const cOptions &options, vyr::cShowFolder &show);

/// Makes the video of all frames of `options` out of the pictures of `options.mPictures`. Draws
/// nothing, and needs no OpenGL.
eOutcome Join(const cOptions &options, vyr::cShowFolder &show);

/// Draws one picture, of row `options.mStill`.
eOutcome RecordStill(const cOptions &options, vyr::cShowFolder &show);
} // namespace record
