#pragma once

#include <string>
#include <vector>

namespace bench
{
/// One look at the music and at the machine's clock.
struct cPass
{
    double mTime = 0.0;   ///< seconds since the beginning, by the machine
    double mMusic = 0.0;  ///< seconds of it that were heard
    double mRaw = 0.0;    ///< the same as the sound library has it, from some beginning
    bool mIsSure = false; ///< false: kept waiting, so that the two don't belong together
};

/// The straight line nearest to all sure passes while the music moves; seconds.
struct cLine
{
    double mOffset = 0.0, mSlope = 1.0; ///< music = offset + slope * time
    double mDrift = 0.0;                ///< by the slope, over the whole run; no sign
    double mRms = 0.0, mWorst = 0.0;    ///< distances of the passes

    double ErrorOf(const cPass &pass) const { return pass.mMusic - mOffset - mSlope * pass.mTime; }
};

cLine FitLine(const std::vector<cPass> &passes);

std::vector<cPass> Between(const std::vector<cPass> &passes, double from, double to);
double FindWorst(const std::vector<cPass> &passes, const cLine &line);
int CountStepsBack(const std::vector<cPass> &passes);

/// How far the music of a 60th of a second is from a 60th of a second, for that `part` of frames.
/// A frame that the machine draws late has moved on by as much: that is no error.
double FrameError(const std::vector<cPass> &passes, double part);

/// How far the library's own number fell behind the line at worst, steps included; seconds.
double FindDeviceLag(const std::vector<cPass> &passes);

/// A line for each of at most 20,000 passes: seconds, milliseconds of the music ahead of the line,
/// milliseconds of the library's own number ahead of it.
void WriteErrors(const std::string &path, const std::vector<cPass> &passes);
} // namespace bench
