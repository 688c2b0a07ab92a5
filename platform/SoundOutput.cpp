#include "platform/SoundOutput.h"

#include <chrono>
#include <cstdio>
#include <utility>

namespace platform
{
namespace
{
// Several readings in one block of the device: a step is seen this late at most.
const auto watchPause = std::chrono::milliseconds(4);
} // namespace

SoundOutput::SoundOutput(std::unique_ptr<SoundDevice> device)
    : mDevice(std::move(device)), mIsSilent(!mDevice)
{
    if (mDevice)
        mWatcher = std::jthread([this](const std::stop_token &stop) { Watch(stop); });
    else
        std::fputs("No sound device: the show plays silently.\n", stderr);
}

SoundOutput::~SoundOutput() = default; // the watcher is stopped and joined

double SoundOutput::GetHeardSeconds()
{
    const double now = SteadySeconds();
    const std::lock_guard lock(mMutex);
    const double running = mRunningTime.At(now);
    return mIsSilent ? mSilentSeconds + running : mLine.At(now);
}

std::unique_ptr<SoundVoice> SoundOutput::CreateVoice(int rate)
{
    return mDevice ? mDevice->CreateVoice(rate) : nullptr;
}

// Where the device and this thread were kept waiting, the reading is younger than `heard` says: the
// clock counts on readings that come late, and on none that come early.
void SoundOutput::Watch(const std::stop_token &stop)
{
    SoundClock clock(mDevice->GetBlockSeconds());
    while (!stop.stop_requested() && mDevice->IsConnected()) {
        const double heard = mDevice->ReadHeardSeconds();
        clock.Observe(SteadySeconds(), heard);
        {
            const std::lock_guard lock(mMutex);
            mLine = clock.GetLine();
        }
        std::this_thread::sleep_for(watchPause);
    }
    if (!stop.stop_requested())
        FallSilent();
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
} // namespace platform
