#include "sound/SoundSilence.h"

#include "sound/SoundOutput.h"

#include <algorithm>

namespace vyr
{
SoundSilence::SoundSilence(SoundOutput &output, int rate, const SoundProgress &progress)
    : mOutput(output), mRate(rate), mProgress(progress)
{}

bool SoundSilence::HasRoom()
{
    const double heardFrames = (mOutput.GetHeardSeconds() - mProgress.startSeconds) * mRate;
    return mProgress.limitFrames - heardFrames < double(blockFrames * (blockCount - 1));
}

bool SoundSilence::Queue(std::span<const int16_t> samples)
{
    // What comes too late is heard from now on, not from when it was due.
    const double earliestStart = mOutput.GetHeardSeconds() - mProgress.limitFrames / mRate;
    mProgress.startSeconds = std::max(mProgress.startSeconds, earliestStart);
    const size_t frames = samples.size() / 2;
    mProgress.limitFrames += double(frames);
    return true;
}
} // namespace vyr
