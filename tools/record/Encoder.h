#pragma once

#include "tools/record/ChildProcess.h"
#include "tools/record/FrameGrid.h"
#include "tools/record/FrameWriter.h"
#include "tools/record/Stage.h"

#include <string>
#include <vector>

namespace record
{
/// What is encoded: the frames of `mPiece`, which is `mRange` or a part of it.
struct cEncoding
{
    cSize mSize;
    cFrameRate mRate;
    cFrameRange mRange, mPiece;
    std::vector<std::string> mSound;    ///< ffmpeg's options for the sound as an input
    std::vector<std::string> mCaptions; ///< and for the captions; empty for none
    std::string mPath;
};

/// Turns frames into an MP4 file by the ffmpeg program: H.264 and AAC, as every player has them.
///
/// Pieces of a range that were encoded apart equal the whole, bit for bit, where a group of
/// pictures of the whole begins where the piece does. So every encoding begins one at the borders
/// of all pieces up to `kExactParts` to a range, and no choice of the encoder depends on what it
/// saw before a group: a constant quantiser, no B frames, a fixed number of threads.
class cEncoder : public cFrameSink
{
public:
    static constexpr int64_t kExactParts = 16;

    /// Starts ffmpeg. Throws cFailure when it can't be started.
    explicit cEncoder(const cEncoding &encoding);
    void Take(const cDrawnFrame &frame) override;
    /// Completes the file. Throws cFailure.
    void Finish();

private:
    cChildProcess mProgram;
    std::vector<uint8_t> mPlanes;
};

/// Cuts the file's sound where its picture ends, after `seconds`. Throws cFailure.
void CutSound(const std::string &path, double seconds);
} // namespace record
