#pragma once

#include "tools/record/ChildProcess.h"
#include "tools/record/Encoding.h"
#include "tools/record/FrameWriter.h"

#include <string>
#include <vector>

namespace record
{
/// Turns frames into an MP4 file of pictures alone by the ffmpeg program: H.264, as every player
/// has it.
///
/// Pieces of a range that were encoded apart equal the whole, bit for bit, where a group of
/// pictures of the whole begins where the piece does. So every encoding begins one at the borders
/// of all pieces up to `kExactParts` to a range, and no choice of the encoder depends on what it
/// saw before a group: a constant quantiser, no B frames, a fixed number of threads.
class cEncoder : public cFrameSink
{
public:
    static constexpr int64_t kExactParts = 16;

    /// Starts ffmpeg, which writes to `path`. Throws cFailure when it can't be started.
    cEncoder(const cEncoding &encoding, const std::string &path);
    void Take(const cDrawnFrame &frame) override;
    /// Completes the file. Throws cFailure.
    void Finish();

private:
    cChildProcess mProgram;
    std::vector<uint8_t> mPlanes;
};
} // namespace record
