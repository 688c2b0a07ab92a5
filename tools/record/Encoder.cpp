#include "tools/record/Encoder.h"

#include "tools/record/Failure.h"
#include "tools/record/OutputFile.h"
#include "tools/record/Yuv.h"

#include <cstdio>
#include <iterator>
#include <set>
#include <sstream>

namespace record
{
namespace
{
using tArguments = std::vector<std::string>;

// Of 0 to 51, smaller is finer: at 18 dark gradients and grain come through.
const char *const quantiser = "18";
// The number of threads shows in the result, so it is the same on every machine.
const char *const encoderThreads = "4";

const char *const ffmpegQuietly = "ffmpeg -hide_banner -nostdin -loglevel error -y";
// The table of contents first, so that a player on a network starts at once; times of edits in
// samples of the sound, not in milliseconds.
const char *const mp4File = "-movflags +faststart -movie_timescale 44100 -f mp4";

tArguments operator+(tArguments arguments, const tArguments &more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

tArguments Words(const char *text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

// Which the encoder rounds to its nearest frame again.
std::string TimeOfFrame(int64_t frame, const cFrameRate &rate)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", cFrameGrid(rate).Seconds(frame));
    return text;
}

// Where any division of the range into equal pieces has a border.
std::set<int64_t> FindBorders(const cFrameRange &range)
{
    std::set<int64_t> borders;
    for (int64_t parts = 2; parts <= cEncoder::kExactParts; parts++)
        for (int64_t part = 1; part < parts; part++)
            borders.insert(range.Part(part, parts).mEnd);
    return borders;
}

std::string GetKeyFrameTimes(const cEncoding &encoding)
{
    std::string times = "0";
    for (int64_t border : FindBorders(encoding.mRange))
        if (border > encoding.mPiece.mFirst && border < encoding.mPiece.mEnd)
            times.append(",").append(TimeOfFrame(border - encoding.mPiece.mFirst, encoding.mRate));
    return times;
}

tArguments GetPictureInput(const cEncoding &encoding)
{
    const cSize &size = encoding.mSize;
    return Words("-f rawvideo -pix_fmt yuv420p -s ") +
           tArguments{std::to_string(size.mWidth) + "x" + std::to_string(size.mHeight)} +
           Words("-framerate") + tArguments{encoding.mRate.ToText()} + Words("-i pipe:0");
}

// Superfast makes no larger files than slower presets at the same quantiser, in half their time.
tArguments GetPictureOutput(const cEncoding &encoding)
{
    const cFrameRate &rate = encoding.mRate;
    const int64_t framesPerSecond = (rate.mNumerator + rate.mDenominator - 1) / rate.mDenominator;
    return Words("-map 0:v -color_range tv -colorspace bt709 -color_primaries bt709 "
                 "-color_trc bt709 -c:v libx264 -preset superfast -bf 0 -sc_threshold 0") +
           tArguments{"-qp",
                      quantiser,
                      "-threads",
                      encoderThreads,
                      "-g",
                      std::to_string(framesPerSecond),
                      "-force_key_frames",
                      GetKeyFrameTimes(encoding)};
}

tArguments GetArguments(const cEncoding &encoding)
{
    const bool hasCaptions = !encoding.mCaptions.empty();
    return Words(ffmpegQuietly) + GetPictureInput(encoding) + encoding.mSound + encoding.mCaptions +
           GetPictureOutput(encoding) + Words("-map 1:a -c:a copy") +
           Words(hasCaptions ? "-map 2:s -c:s mov_text" : "") + Words(mp4File) +
           tArguments{encoding.mPath};
}
} // namespace

cEncoder::cEncoder(const cEncoding &encoding) : mProgram(GetArguments(encoding), true) {}

void cEncoder::Take(const cDrawnFrame &frame)
{
    ConvertToYuv(frame.mPicture, mPlanes);
    if (mProgram.Write(mPlanes.data(), mPlanes.size()))
        return;
    mProgram.Finish(); // throws, with its own words
    throw cFailure("ffmpeg: ended before the last frame");
}

void cEncoder::Finish() { mProgram.Finish(); }

void CutSound(const std::string &path, double seconds)
{
    cOutputFile cut(path);
    RunProgram(Words(ffmpegQuietly) +
               tArguments{"-f", "mp4", "-i", path, "-t", std::to_string(seconds)} +
               Words("-map 0 -c copy") + Words(mp4File) + tArguments{cut.GetTemporaryPath()});
    cut.Commit();
}
} // namespace record
