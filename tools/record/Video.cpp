#include "tools/record/Video.h"

namespace record
{
namespace
{
// What ffmpeg does to bring encoded pictures, sound and captions together in `path`. The table of
// contents comes first, so that a player on a network starts at once; times of edits are in samples
// of the sound, not in milliseconds.
tArguments Combine(const tArguments &pictures, const cMusic &music, const cCaptions *captions,
                   const tArguments &limit, const std::string &path)
{
    tArguments inputs = pictures + music.GetInputOptions();
    tArguments outputs = Words("-map 0:v -map 1:a -c copy");
    if (captions) {
        inputs = inputs + captions->GetInputOptions();
        outputs = outputs + Words("-map 2:s -c:s mov_text");
    }
    return StrictFfmpeg() + inputs + outputs + limit +
           Words("-movflags +faststart -movie_timescale 44100 -f mp4") + tArguments{path};
}
} // namespace

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
    const tArguments pictures = Words("-f mp4 -i") + tArguments{mPictures.GetTemporaryPath()};
    tArguments limit;
    if (end < mEncoding.mPiece.mEnd) { // the sound ends where the picture does
        const int64_t frames = end - mEncoding.mPiece.mFirst;
        limit = {"-t", std::to_string(mEncoding.mRate.Seconds(frames))};
    }
    return Combine(pictures, mMusic, mCaptions, limit, mOutput.GetTemporaryPath());
}

void JoinVideo(const std::string &path, const cEncoding &encoding, const cCaptions *captions,
               const std::string &list)
{
    cOutputFile output(path);
    cMusic music(encoding);
    music.Finish();
    const tArguments pictures = Words("-f concat -safe 0 -i") + tArguments{list};
    RunProgram(Combine(pictures, music, captions, {}, output.GetTemporaryPath()));
    output.Commit();
}
} // namespace record
