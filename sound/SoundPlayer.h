#pragma once

#include "sound/SoundOutput.h"
#include "sound/SoundStream.h"

#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace vyr
{
/// Plays a stream from where it is: a thread of its own reads a little ahead of the ear, and keeps
/// doing so on a silent output. Output and stream have to outlive it.
class SoundPlayer
{
public:
    SoundPlayer(SoundOutput &output, SoundStream &stream);
    ~SoundPlayer(); ///< stops the sound
    SoundPlayer(const SoundPlayer &) = delete;
    SoundPlayer &operator=(const SoundPlayer &) = delete;

    /// How many frames have been heard, with their fraction. Never goes back; stands still where
    /// the stream has ended or the sound waits for data. By one thread.
    double GetFrames();

    /// Whether the stream has ended and its last frame has been heard.
    bool HasPlayedOut();

    int GetRate() const { return mRate; }

private:
    void Run(const std::stop_token &stop);
    void Fill(const std::stop_token &stop);
    void QueueBlock();
    std::unique_ptr<SoundVoice> CreateSilence();
    void Publish();
    double GetHeardFrames();

    SoundOutput &mOutput;
    SoundStream &mStream;
    const int mRate;
    double mReachedFrames = 0; // the thread's that calls GetFrames

    std::unique_ptr<SoundVoice> mVoice; // this and what follows are the thread's
    std::vector<int16_t> mBlock;
    double mQueuedFrames = 0;
    bool mHasEnded = false;

    std::mutex mMutex; // over the progress
    SoundProgress mProgress;
    bool mIsComplete = false; // the progress counts every frame that there is
    std::jthread mThread;     // last: it uses all of the above
};
} // namespace vyr
