#include "tools/record/Video.h"

namespace record
{
cVideo::cVideo(const std::string &path, const cEncoding &encoding, const cCaptions *captions)
    : mEncoding(encoding), mCaptions(captions), mOutput(path), mPictures(path + ".pictures"),
      mMusic(encoding), mEncoder(encoding, mPictures.GetTemporaryPath())
{}

void cVideo::Take(const cDrawnFrame &frame)
{
    mMusic.Check(); // that it can't be read is better known now than when all is drawn
    mEncoder.Take(frame);
}

void cVideo::Finish(int64_t end)
{
    mEncoder.Finish();
    mMusic.Finish();
    RunProgram(GetArguments(end));
    mOutput.Commit();
}

tArguments cVideo::GetArguments(int64_t end) const
{
    tArguments inputs = Words("-f mp4 -i") + tArguments{mPictures.GetTemporaryPath()};
    inputs = inputs + mMusic.GetInputOptions();
    tArguments outputs = Words("-map 0:v -map 1:a -c copy");
    if (mCaptions) {
        inputs = inputs + mCaptions->GetInputOptions();
        outputs = outputs + Words("-map 2:s -c:s mov_text");
    }
    if (end < mEncoding.mPiece.mEnd) { // the sound ends where the picture does
        const int64_t frames = end - mEncoding.mPiece.mFirst;
        const double seconds = mEncoding.mRate.Seconds(frames);
        outputs = outputs + tArguments{"-t", std::to_string(seconds)};
    }
    // The table of contents first, so that a player on a network starts at once; times of edits in
    // samples of the sound, not in milliseconds.
    return StrictFfmpeg() + inputs + outputs +
           Words("-movflags +faststart -movie_timescale 44100 -f mp4") +
           tArguments{mOutput.GetTemporaryPath()};
}
} // namespace record
