#pragma once

#include "tools/record/ChildProcess.h"
#include "tools/record/Encoding.h"
#include "tools/record/TemporaryFile.h"

#include <optional>

namespace record
{
/// The sound of a recording: the show's music from the range's first frame to its end, as AAC in a
/// temporary file, and which packets of it belong to a piece.
///
/// AAC comes in packets of 1024 samples, which rarely end where a frame does. All pieces of a range
/// encode the same sound from the range's beginning and take whole packets of it: a packet belongs
/// to the piece in which it ends. Joined, the pieces have every packet once, and the sound has no
/// seams. A piece's own sound may end up to 23 ms before its picture.
class cMusic
{
public:
    /// Starts to encode the music as far as the piece of `encoding` needs it. Music that ends
    /// earlier is followed by silence. Throws cFailure.
    explicit cMusic(const cEncoding &encoding);

    void Check() { mEncoder->Check(); }   ///< throws cFailure when the encoder has failed
    void Finish() { mEncoder->Finish(); } ///< waits for the whole of it; throws the same
    /// ffmpeg's options for this sound as an input, once it is whole.
    tArguments GetInputOptions() const;

private:
    tArguments GetArguments(const std::string &music, int64_t firstSample,
                            int64_t sampleCount) const;

    cTemporaryFile mFile;
    int64_t mBegin, mEnd; // of the piece, in samples from the range's first
    bool mIsLast;         // whether the piece ends with the range
    std::optional<cChildProcess> mEncoder;
};
} // namespace record
