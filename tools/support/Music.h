#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tools
{
/// How a piece of music is stored.
struct cMusicFormat
{
    long mRate = 0; ///< frames a second
    int mChannels = 0;
};

/// Decodes the MP3 at `path` as it is, without resampling, block by block: `take` gets each block
/// of interleaved samples (full scale is 1) and its number of frames. False with one line in
/// `error` when it can't be opened or decoded; the blocks before the damage have been taken then.
using tTakeBlock = std::function<void(const cMusicFormat &, const float *samples, size_t frames)>;
bool DecodeMusic(const std::filesystem::path &path, const tTakeBlock &take, std::string &error);

/// What a piece of music measures.
struct cMusicMeasure
{
    cMusicFormat mFormat;
    double mSeconds = 0.0;
    double mIntegrated = 0.0;   ///< loudness of the whole, LUFS; -infinity when silent
    double mRange = 0.0;        ///< loudness range, LU
    double mTruePeak = 0.0;     ///< dBTP, of the loudest channel
    double mSamplePeak = 0.0;   ///< of full scale 1
    long long mClippedRuns = 0; ///< places where two samples or more in a row are at full scale

    /// Curves for plots, mStep seconds apart.
    double mStep = 0.1;
    std::vector<float> mLow, mHigh; ///< lowest and highest sample of each step
    std::vector<double> mMomentary; ///< loudness of the 400 ms before the step's end, LUFS
    std::vector<double> mShortTerm; ///< loudness of the 3 s before the step's end, LUFS
};

/// Measures the MP3 at `path`; as DecodeMusic when it fails. `curves` asks for the curves,
/// `truePeak` for the true peak, each of which takes its time.
bool MeasureMusic(const std::filesystem::path &path, bool curves, bool truePeak,
                  cMusicMeasure &measure, std::string &error);
} // namespace tools
