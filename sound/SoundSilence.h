#pragma once

#include "sound/SoundDevice.h"

namespace vyr
{
class SoundOutput;

/// A voice that nobody hears: it takes the stream at its rate by the output's time, so that the
/// show runs, ends and stands still as it would with sound.
class SoundSilence : public SoundVoice
{
public:
    /// `progress`: frames that are queued already, and when the stream began.
    SoundSilence(SoundOutput &output, int rate, const SoundProgress &progress);

    bool HasRoom() override;
    bool Queue(std::span<const int16_t> samples) override;
    SoundProgress GetProgress() override { return mProgress; }

private:
    SoundOutput &mOutput;
    double mRate;
    SoundProgress mProgress;
};
} // namespace vyr
