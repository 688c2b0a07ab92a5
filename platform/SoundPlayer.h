#pragma once

#include "platform/SoundDecoder.h"
#include "platform/SoundOutput.h"

#include <mutex>
#include <thread>
#include <vector>

namespace platform
{
/// Plays a stream from where its decoder is: a thread of its own decodes a little ahead of the ear,
/// and keeps doing so on a silent output. Output and decoder have to outlive it.
class SoundPlayer
{
public:
    SoundPlayer(SoundOutput &output, SoundDecoder &decoder);
    ~SoundPlayer(); ///< stops the sound
    SoundPlayer(const SoundPlayer &) = delete;
    SoundPlayer &operator=(const SoundPlayer &) = delete;

    /// How many frames have been heard, with their fraction. Never goes back; stands still where
    /// the stream has ended or the sound waits for data. By one thread.
    double GetFrames();

    int GetRate() const { return mRate; }

private:
    void Run(std::stop_token stop);
    void Fill(SoundVoice &voice, const std::stop_token &stop);
    bool QueueBlock(SoundVoice &voice);
    void Publish(const SoundProgress &progress);
    SoundProgress GetStart(double queuedFrames);
    double GetHeardFrames();

    SoundOutput &mOutput;
    SoundDecoder &mDecoder;
    const int mRate;
    double mReachedFrames = 0; // of whoever asks

    std::vector<int16_t> mBlock; // these are the thread's
    double mQueuedFrames = 0;
    bool mHasEnded = false;

    std::mutex mMutex; // over the progress
    SoundProgress mProgress;
    std::jthread mThread; // last: it uses all of the above
};
} // namespace platform
