#pragma once

#include "tools/record/FrameGrid.h"
#include "tools/record/Picture.h"

#include <string>

namespace record
{
/// What is encoded: the frames of `mPiece`, which is `mRange` or a part of it, and the music of the
/// same time.
struct cEncoding
{
    cSize mSize;
    cFrameRate mRate;
    cFrameRange mRange, mPiece;
    std::string mMusic; ///< an MP3 file
};
} // namespace record
