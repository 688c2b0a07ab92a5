#pragma once

#include "sound/SoundDevice.h"

#include <array>

struct ALCdevice_struct;
struct ALCcontext_struct;

namespace vyr
{
/// The machine's sound device. Its time is the mixer's, less the latency that the device reports.
class SoundOpenAL : public SoundDevice
{
public:
    SoundOpenAL(ALCdevice_struct *device, ALCcontext_struct *context); ///< takes both
    ~SoundOpenAL() override;
    SoundOpenAL(const SoundOpenAL &) = delete;
    SoundOpenAL &operator=(const SoundOpenAL &) = delete;

    double GetBlockSeconds() const override;
    double ReadHeardSeconds() override;
    bool IsConnected() override;
    std::unique_ptr<SoundVoice> CreateVoice(int rate) override;

private:
    ALCdevice_struct *mDevice;
    ALCcontext_struct *mContext;
};

/// A streaming source. Its thread's current context is the voice's while it lives.
class SoundOpenALVoice : public SoundVoice
{
public:
    SoundOpenALVoice(ALCcontext_struct *context, int rate);
    ~SoundOpenALVoice() override;
    SoundOpenALVoice(const SoundOpenALVoice &) = delete;
    SoundOpenALVoice &operator=(const SoundOpenALVoice &) = delete;

    bool IsMade() const { return mSource != 0; } ///< false: the device had no source for it

    bool HasRoom() override;
    bool Queue(std::span<const int16_t> samples) override;
    SoundProgress GetProgress() override;

private:
    struct Place
    {
        double offsetFrames, clockSeconds; // into the queue; of the mixer. Both at one moment
    };
    void ChooseResampler();
    void DropHeard(int count);
    bool Start();
    bool IsPlaying() const;
    Place ReadPlace() const;
    int GetInteger(int parameter) const;

    int mRate;
    unsigned int mSource = 0;
    std::array<unsigned int, blockCount> mBuffers = {};
    std::array<unsigned int, blockCount> mFree = {}; // those of the buffers that are not queued
    size_t mFreeCount = 0;
    double mDroppedFrames = 0; // frames of the stream before the first one in the queue
    SoundProgress mProgress;
};
} // namespace vyr
