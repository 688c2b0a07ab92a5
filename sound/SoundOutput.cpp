#include "sound/SoundOutput.h"

#include "sound/SoundTime.h"

#include <chrono>
#include <cstdio>
#include <utility>

namespace vyr
{
namespace
{
// Several readings in one block of the device: a step is seen this late at most.
const auto watchPause = std::chrono::milliseconds(4);

// Of a block and the time for which the clock runs on without a reading, about half.
const double lateSeconds = 0.03;
} // namespace

SoundOutput::SoundOutput(std::unique_ptr<SoundDevice> device)
    : mDevice(std::move(device)), mClock(mDevice ? mDevice->GetBlockSeconds() : 0),
      mIsSilent(!mDevice)
{
    if (!mDevice) {
        std::fputs("No sound device: the show plays silently.\n", stderr);
        return;
    }
    // Not left to the watcher, which may be late on a busy machine: a sound that begins before the
    // device's time is known would begin at 0, and leap with the first reading.
    Observe();
    mWatcher = std::jthread([this](const std::stop_token &stop) { Watch(stop); });
}

SoundOutput::~SoundOutput() = default; // the watcher is stopped and joined

double SoundOutput::GetHeardSeconds()
{
    if (IsWatcherLate(SteadySeconds()))
        Observe();
    const double now = SteadySeconds();
    const std::lock_guard lock(mMutex);
    const double running = mRunningTime.At(now);
    return mIsSilent ? mSilentSeconds + running : mLine.At(now);
}

std::unique_ptr<SoundVoice> SoundOutput::CreateVoice(int rate)
{
    return mDevice ? mDevice->CreateVoice(rate) : nullptr;
}

void SoundOutput::Watch(const std::stop_token &stop)
{
    while (!stop.stop_requested() && mDevice->IsConnected()) {
        Observe();
        PauseUnlessStopped(stop, watchPause);
    }
    if (!stop.stop_requested())
        FallSilent();
}

// A busy machine may keep the watcher from its work while the device plays on. The time would stand
// still after a while, so the thread that asks then reads the device itself.
bool SoundOutput::IsWatcherLate(double now)
{
    const std::lock_guard lock(mMutex);
    return !mIsSilent && now - mObservedTime > lateSeconds;
}

// Where the device and this thread were kept waiting, the reading is younger than `heard` says: the
// clock counts on readings that come late, and on none that come early.
void SoundOutput::Observe()
{
    const std::unique_lock reading(mReadingMutex, std::try_to_lock);
    if (!reading)
        return; // another thread is at it; nobody waits for the device because of that
    const double heard = mDevice->ReadHeardSeconds();
    const double now = SteadySeconds();
    mClock.Observe(now, heard);
    const std::lock_guard lock(mMutex);
    mLine = mClock.GetLine();
    mObservedTime = now;
}

void SoundOutput::FallSilent()
{
    const double now = SteadySeconds();
    {
        const std::lock_guard lock(mMutex);
        mSilentSeconds = mLine.At(now) - mRunningTime.At(now);
        mIsSilent = true;
    }
    std::fputs("The sound device is gone: the show plays on silently.\n", stderr);
}
} // namespace vyr
