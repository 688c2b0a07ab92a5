#pragma once

#include "sound/SoundClock.h"
#include "sound/SoundDevice.h"
#include "sound/SoundRunningTime.h"

#include <memory>
#include <mutex>
#include <thread>

namespace vyr
{
/// Where the sound goes, and the time at which it is heard there: a device with a clock that
/// follows it, or silence, whose time is the machine's. A device that is unplugged becomes silence;
/// the time runs on from where it was.
class SoundOutput
{
public:
    /// Asks the device for its time, and follows it from then on. Null `device`: silence from the
    /// beginning. Silence says so in one line on standard error.
    explicit SoundOutput(std::unique_ptr<SoundDevice> device);
    SoundOutput() : mClock(0), mIsSilent(true) {} ///< silence that was asked for: says nothing
    ~SoundOutput();
    SoundOutput(const SoundOutput &) = delete;
    SoundOutput &operator=(const SoundOutput &) = delete;

    /// Sound seconds that have reached the ear: even, and hardly ever back by more than a few
    /// microseconds (a caller that shows it keeps the largest). Any thread; as cheap as reading a
    /// clock.
    double GetHeardSeconds();

    /// A voice on the device; null in silence, and when the device has none. By the voice's thread.
    std::unique_ptr<SoundVoice> CreateVoice(int rate);

private:
    void Watch(const std::stop_token &stop);
    void Observe();
    bool IsWatcherLate(double now);
    void FallSilent();

    std::unique_ptr<SoundDevice> mDevice;
    std::mutex mReadingMutex; // over the clock; its holder asks the device
    SoundClock mClock;

    std::mutex mMutex; // over what follows
    double mObservedTime = 0;
    SoundRunningTime mRunningTime;
    SoundLine mLine;
    bool mIsSilent;
    double mSilentSeconds = 0; // heard time, less running time, in silence
    std::jthread mWatcher;     // last: it uses all of the above
};
} // namespace vyr
