#include "tools/record/Encoder.h"

#include "tools/record/Arguments.h"
#include "tools/record/Failure.h"
#include "tools/record/Yuv.h"

#include <cstdio>
#include <set>

namespace record
{
namespace
{
// Of 0 to 51, smaller is finer: at 18 dark gradients and grain come through.
const char *const quantiser = "18";
// The number of threads shows in the result, so it is the same on every machine.
const char *const encoderThreads = "4";

// Which the encoder rounds to its nearest frame again.
std::string TimeOfFrame(int64_t frame, const cFrameRate &rate)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", rate.Seconds(frame));
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

// Ultrafast takes under half of superfast's time, which is time that drawing has then; at one
// quantiser the picture is as good and the file a sixth larger.
tArguments GetPictureOutput(const cEncoding &encoding)
{
    const cFrameRate &rate = encoding.mRate;
    const int64_t framesPerSecond = (rate.mNumerator + rate.mDenominator - 1) / rate.mDenominator;
    return Words("-color_range tv -colorspace bt709 -color_primaries bt709 -color_trc bt709 "
                 "-c:v libx264 -preset ultrafast -bf 0 -sc_threshold 0") +
           tArguments{"-qp",
                      quantiser,
                      "-threads",
                      encoderThreads,
                      "-g",
                      std::to_string(framesPerSecond),
                      "-force_key_frames",
                      GetKeyFrameTimes(encoding)};
}

tArguments GetArguments(const cEncoding &encoding, const std::string &path)
{
    return StrictFfmpeg() + GetPictureInput(encoding) + GetPictureOutput(encoding) +
           tArguments{"-f", "mp4", path};
}
} // namespace

cEncoder::cEncoder(const cEncoding &encoding, const std::string &path)
    : mProgram(GetArguments(encoding, path), true)
{}

void cEncoder::Take(const cDrawnFrame &frame)
{
    ConvertToYuv(frame.mPicture, mPlanes);
    if (mProgram.Write(mPlanes.data(), mPlanes.size()))
        return;
    mProgram.Finish(); // throws, with its own words
    throw cFailure("ffmpeg: ended before the last frame");
}

void cEncoder::Finish() { mProgram.Finish(); }
} // namespace record
