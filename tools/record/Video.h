#pragma once

#include "tools/record/Captions.h"
#include "tools/record/Encoder.h"
#include "tools/record/Music.h"
#include "tools/record/OutputFile.h"

#include <optional>

namespace record
{
/// A video as it grows. Pictures and sound are encoded at the same time, each by a program of its
/// own, and come together in the file when both are done.
class cVideo : public cFrameSink
{
public:
    /// Begins `path`. `captions` may be null. Throws cFailure.
    cVideo(const std::string &path, const cEncoding &encoding, const cCaptions *captions);
    void Take(const cDrawnFrame &frame) override;
    /// Completes the file with the frames taken, which end at `end`. Throws cFailure.
    void Finish(int64_t end);

private:
    tArguments GetArguments(int64_t end) const;

    cEncoding mEncoding;
    const cCaptions *mCaptions;
    cOutputFile mOutput;
    cOutputFile mPictures; // beside it, as large: a folder of temporary files may be too small
    cMusic mMusic;
    cEncoder mEncoder;
};

/// Makes `path` of pictures that are encoded already, those of the videos that `list` names, with
/// the sound and the captions of the whole. `list` is one as ffmpeg's concat demuxer reads it.
/// `captions` may be null. Throws cFailure.
void JoinVideo(const std::string &path, const cEncoding &encoding, const cCaptions *captions,
               const std::string &list);
} // namespace record
