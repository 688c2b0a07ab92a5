#include "tools/support/Music.h"

#include <ebur128.h>
#include <mpg123.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace tools
{
namespace
{
struct cDeleteDecoder
{
    void operator()(mpg123_handle *decoder) const { mpg123_delete(decoder); }
};
using tDecoder = std::unique_ptr<mpg123_handle, cDeleteDecoder>;

// A decoder that gives floats at the file's own rate and prints nothing of its own.
tDecoder OpenDecoder(const std::filesystem::path &path, cMusicFormat &format, std::string &error)
{
    tDecoder decoder(mpg123_new(nullptr, nullptr));
    if (!decoder) {
        error = "no MP3 decoder";
        return nullptr;
    }
    mpg123_param(decoder.get(), MPG123_ADD_FLAGS, MPG123_FORCE_FLOAT | MPG123_QUIET, 0.0);
    // Text of any kind holds something like a frame somewhere: a song starts soon, or is none.
    mpg123_param(decoder.get(), MPG123_RESYNC_LIMIT, 65536, 0.0);
    int encoding = 0;
    if (mpg123_open(decoder.get(), path.c_str()) == MPG123_OK &&
        mpg123_getformat(decoder.get(), &format.mRate, &format.mChannels, &encoding) == MPG123_OK)
        return decoder;
    error = std::string("can't be decoded: ") + mpg123_strerror(decoder.get());
    return nullptr;
}

// Samples of full scale and more, which stand where a louder wave was cut off.
class cClipCounter
{
public:
    void Take(int channel, float sample)
    {
        int &run = mRuns[size_t(channel) % mRuns.size()];
        const bool isFull = std::fabs(sample) >= fullScale;
        run = isFull ? run + 1 : 0;
        if (run == 2)
            mCount++;
    }
    long long Count() const { return mCount; }

private:
    static constexpr float fullScale = 32767.0f / 32768.0f;
    std::vector<int> mRuns = std::vector<int>(8);
    long long mCount = 0;
};

struct cDeleteLoudness
{
    void operator()(ebur128_state *state) const { ebur128_destroy(&state); }
};

// Takes the blocks and keeps what is measured of them.
class cMeter
{
public:
    cMeter(bool curves, bool truePeak, cMusicMeasure &measure)
        : mCurves(curves), mTruePeak(truePeak), mMeasure(measure)
    {}

    void Take(const cMusicFormat &format, const float *samples, size_t frames)
    {
        if (!mLoudness)
            Start(format);
        while (frames > 0) {
            const size_t count = std::min(frames, mStepFrames - mFilled);
            TakePart(samples, count);
            samples += count * size_t(format.mChannels);
            frames -= count;
        }
    }

    void Finish()
    {
        if (!mLoudness)
            return;
        if (mFilled > 0)
            EndStep();
        ebur128_loudness_global(mLoudness.get(), &mMeasure.mIntegrated);
        ebur128_loudness_range(mLoudness.get(), &mMeasure.mRange);
        mMeasure.mSeconds = double(mFrames) / double(mMeasure.mFormat.mRate);
        mMeasure.mTruePeak = 20.0 * std::log10(HighestTruePeak());
        mMeasure.mClippedRuns = mClips.Count();
    }

private:
    void Start(const cMusicFormat &format)
    {
        mMeasure.mFormat = format;
        const int modes = EBUR128_MODE_I | EBUR128_MODE_LRA | EBUR128_MODE_S |
                          (mTruePeak ? EBUR128_MODE_TRUE_PEAK : 0);
        mLoudness.reset(ebur128_init(unsigned(format.mChannels),
                                     static_cast<unsigned long>(format.mRate), modes));
        mStepFrames = std::max<size_t>(size_t(double(format.mRate) * mMeasure.mStep), 1);
    }

    // Within one step.
    void TakePart(const float *samples, size_t frames)
    {
        const auto channels = size_t(mMeasure.mFormat.mChannels);
        ebur128_add_frames_float(mLoudness.get(), samples, frames);
        for (size_t i = 0; i < frames * channels; i++) {
            mClips.Take(int(i % channels), samples[i]);
            mLow = std::min(mLow, samples[i]);
            mHigh = std::max(mHigh, samples[i]);
        }
        mFrames += static_cast<long long>(frames);
        mFilled += frames;
        if (mFilled == mStepFrames)
            EndStep();
    }

    void EndStep()
    {
        mMeasure.mSamplePeak = std::max({mMeasure.mSamplePeak, double(-mLow), double(mHigh)});
        if (mCurves)
            AppendToCurves();
        mLow = mHigh = 0.0f;
        mFilled = 0;
    }

    void AppendToCurves()
    {
        double momentary = 0.0, shortTerm = 0.0;
        ebur128_loudness_momentary(mLoudness.get(), &momentary);
        ebur128_loudness_shortterm(mLoudness.get(), &shortTerm);
        mMeasure.mLow.push_back(mLow);
        mMeasure.mHigh.push_back(mHigh);
        mMeasure.mMomentary.push_back(momentary);
        mMeasure.mShortTerm.push_back(shortTerm);
    }

    double HighestTruePeak() const
    {
        double highest = 0.0;
        for (int channel = 0; mTruePeak && channel < mMeasure.mFormat.mChannels; channel++) {
            double peak = 0.0;
            ebur128_true_peak(mLoudness.get(), unsigned(channel), &peak);
            highest = std::max(highest, peak);
        }
        return highest;
    }

    const bool mCurves, mTruePeak;
    cMusicMeasure &mMeasure;
    std::unique_ptr<ebur128_state, cDeleteLoudness> mLoudness;
    cClipCounter mClips;
    size_t mStepFrames = 1, mFilled = 0;
    long long mFrames = 0;
    float mLow = 0.0f, mHigh = 0.0f;
};
} // namespace

bool DecodeMusic(const std::filesystem::path &path, const tTakeBlock &take, std::string &error)
{
    cMusicFormat format;
    const tDecoder decoder = OpenDecoder(path, format, error);
    if (!decoder)
        return false;
    std::vector<float> block(8192 * size_t(format.mChannels));
    const size_t frameBytes = sizeof(float) * size_t(format.mChannels);
    for (;;) {
        size_t bytes = 0;
        const int status =
            mpg123_read(decoder.get(), reinterpret_cast<unsigned char *>(block.data()),
                        block.size() * sizeof(float), &bytes);
        if (bytes > 0)
            take(format, block.data(), bytes / frameBytes);
        if (status == MPG123_DONE)
            return true;
        if (status == MPG123_OK)
            continue;
        error = status == MPG123_NEW_FORMAT
                    ? "changes its format on the way"
                    : std::string("can't be decoded: ") + mpg123_strerror(decoder.get());
        return false;
    }
}

bool MeasureMusic(const std::filesystem::path &path, bool curves, bool truePeak,
                  cMusicMeasure &measure, std::string &error)
{
    cMeter meter(curves, truePeak, measure);
    const bool isGood = DecodeMusic(
        path,
        [&](const cMusicFormat &format, const float *samples, size_t frames) {
            meter.Take(format, samples, frames);
        },
        error);
    meter.Finish();
    return isGood;
}
} // namespace tools
