#pragma once

#include "sound/SoundDevice.h"

#include <mutex>
#include <vector>

namespace test
{
/// What stands at the end of a sound device's cable: it plays by the tests' time, in blocks, and a
/// test does to it what happens to such things. It had played for a while before.
class cSpeaker
{
public:
    double mBlockSeconds = 0.02;
    double mLatencySeconds = 0; ///< from a block's end in the device to the ear
    double mRate = 1;           ///< seconds of its crystal in one of the machine's
    bool mHasVoice = true;

    void SetStalled(bool isStalled); ///< plays nothing, and goes on where it was
    void Unplug();                   ///< for ever
    void LoseTime(double seconds);   ///< the stream arrives so much later from now on

    bool IsConnected();
    double ReadHeardSeconds(); ///< as the device says it: whole blocks, less the latency
    double GetLostSeconds();
    std::vector<int16_t> &GetQueued() { return mQueued; } ///< all samples that it was given

private:
    void Run();

    std::mutex mMutex;
    double mPlayed = 100, mLast = -1;
    bool mIsStalled = false, mIsConnected = true;
    double mLostSeconds = 0;
    std::vector<int16_t> mQueued;
};

/// A device that plays through `speaker`, which outlives it.
std::unique_ptr<vyr::SoundDevice> MakeDevice(cSpeaker &speaker);

/// What `OpenSoundDevice` opens from now on, in this program; null: there is no device.
void PlugIn(cSpeaker *speaker);
} // namespace test
