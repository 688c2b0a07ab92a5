#include "tools/record/Encoder.h"

#include "tools/record/Failure.h"
#include "tools/record/Yuv.h"

#include <cstdio>
#include <set>

namespace record
{
namespace
{
using tArguments = std::vector<std::string>;

// Sums of 8-bit steps: 18 keeps gradients and grain, and one less is a tenth larger for no gain
// that is seen.
const char *const quantiser = "18";
const char *const encoderThreads = "4";

void Add(tArguments &arguments, const tArguments &more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
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
    return {"-f",         "rawvideo",
            "-pix_fmt",   "yuv420p",
            "-s",         std::to_string(size.mWidth) + "x" + std::to_string(size.mHeight),
            "-framerate", encoding.mRate.ToText(),
            "-i",         "pipe:0"};
}

tArguments GetPictureOutput(const cEncoding &encoding)
{
    const cFrameRate &rate = encoding.mRate;
    const int64_t framesPerSecond = (rate.mNumerator + rate.mDenominator - 1) / rate.mDenominator;
    return {"-map",
            "0:v",
            "-color_range",
            "tv",
            "-colorspace",
            "bt709",
            "-color_primaries",
            "bt709",
            "-color_trc",
            "bt709",
            "-c:v",
            "libx264",
            "-preset",
            "superfast",
            "-qp",
            quantiser,
            "-bf",
            "0",
            "-sc_threshold",
            "0",
            "-threads",
            encoderThreads,
            "-g",
            std::to_string(framesPerSecond),
            "-force_key_frames",
            GetKeyFrameTimes(encoding)};
}

tArguments GetArguments(const cEncoding &encoding)
{
    tArguments arguments = {"ffmpeg", "-hide_banner", "-nostdin", "-loglevel", "error", "-y"};
    Add(arguments, GetPictureInput(encoding));
    Add(arguments, encoding.mSound);
    Add(arguments, encoding.mCaptions);
    Add(arguments, GetPictureOutput(encoding));
    Add(arguments, {"-map", "1:a", "-c:a", "copy"});
    if (!encoding.mCaptions.empty())
        Add(arguments, {"-map", "2:s", "-c:s", "mov_text"});
    // the table of contents first, so that a player on a network starts at once
    Add(arguments,
        {"-movflags", "+faststart", "-movie_timescale", "44100", "-f", "mp4", encoding.mPath});
    return arguments;
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
    const std::string cut = path + ".cut";
    RunProgram({"ffmpeg",
                "-hide_banner",
                "-nostdin",
                "-loglevel",
                "error",
                "-y",
                "-f",
                "mp4",
                "-i",
                path,
                "-t",
                std::to_string(seconds),
                "-map",
                "0",
                "-c",
                "copy",
                "-movflags",
                "+faststart",
                "-movie_timescale",
                "44100",
                "-f",
                "mp4",
                cut});
    if (std::rename(cut.c_str(), path.c_str()) != 0)
        throw cFailure(path + ": can't be replaced");
}
} // namespace record
