#pragma once

#include "show/ShowFolder.h"
#include "tools/record/Arguments.h"
#include "tools/record/FrameGrid.h"
#include "tools/record/TemporaryFile.h"

#include <string>

namespace record
{
/// The words that the show sings, as captions of a recording: each while its image is on the
/// screen.
class cCaptions
{
public:
    /// Reads the words from `lyricsPath`, a line each, "NUMBER TEXT", and keeps those of the frames
    /// `piece`. Throws cFailure for a file that is not so, or lacks words that the show has.
    cCaptions(const std::string &lyricsPath, const vyr::cShowFolder &show, const cFrameGrid &grid,
              const cFrameRange &piece);

    /// ffmpeg's options for these captions as an input.
    tArguments GetInputOptions() const;

private:
    cTemporaryFile mFile;
};
} // namespace record
