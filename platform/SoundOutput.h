#pragma once

#include "platform/SoundClock.h"
#include "platform/SoundDevice.h"
#include "platform/SoundRunningTime.h"

#include <memory>
#include <mutex>
#include <thread>

namespace platform
{
/// Where the sound goes, and the time at which it is heard there: a device with a clock that
/// follows it, or silence, whose time is the machine's. A device that is unplugged becomes silence;
/// the time runs on from where it was.
class SoundOutput
{
public:
    /// Null `device`: silence from the beginning. Silence says so in one line on standard error.
    explicit SoundOutput(std::unique_ptr<SoundDevice> device);
    ~SoundOutput();
    SoundOutput(const SoundOutput &) = delete;
    SoundOutput &operator=(const SoundOutput &) = delete;

    /// Sound seconds that have reached the ear: even, and hardly ever back by more than a few
    /// microseconds (whoever shows it keeps the largest). Any thread; as cheap as reading a clock.
    double GetHeardSeconds();

    bool IsSilent(); ///< any thread. Once it is, it stays so

    /// A voice on the device, or a silent one. `progress` is how far the stream has come: nothing,
    /// or what an earlier voice had reached, where silence takes over from the device.
    std::unique_ptr<SoundVoice> CreateVoice(int rate, const SoundProgress &progress);

private:
    void Watch(std::stop_token stop);
    void FallSilent();

    std::unique_ptr<SoundDevice> mDevice;
    std::mutex mMutex; // over what follows
    SoundRunningTime mRunningTime;
    SoundLine mLine;
    bool mIsSilent;
    double mSilentSeconds = 0; // heard time, less running time, in silence
    std::jthread mWatcher;     // last: it uses all of the above
};
} // namespace platform
