#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace vyr
{
/// Which frames are heard when: frame f at `startSeconds` + f / rate of the output's heard time,
/// for all frames before `limitFrames`. What comes after them is not known yet.
struct SoundProgress
{
    double startSeconds = 0;
    double limitFrames = 0;
};

/// One stream of stereo frames on its way to the ear. Made, used and destroyed by one thread.
class SoundVoice
{
public:
    /// As much as is queued ahead: a third of a second and more, to ride out a busy machine.
    static constexpr size_t blockFrames = 2048, blockCount = 8;

    virtual ~SoundVoice() = default;

    /// Whether one more block fits. True for a device that is gone; `Queue` then returns false.
    virtual bool HasRoom() = 0;

    /// Adds a block of at most `blockFrames` frames (two values each). The first one starts the
    /// sound; one that comes after the queue ran dry continues it. False: the device does not play,
    /// and never will again.
    virtual bool Queue(std::span<const int16_t> samples) = 0;

    virtual SoundProgress GetProgress() = 0;
};

/// The sound device as an interface, so that a test can implement it. So can a measurement: a
/// device that forwards all calls to the one of `OpenSoundDevice` and logs what `ReadHeardSeconds`
/// returns has the library's own steps to compare with the even positions of the SoundPlayer.
class SoundDevice
{
public:
    virtual ~SoundDevice() = default;

    virtual double GetBlockSeconds() const = 0; ///< the steps in which its time moves

    /// How much of the device's sound has reached the ear by now, in seconds. Any thread.
    virtual double ReadHeardSeconds() = 0;

    virtual bool
    IsConnected() = 0; ///< false: it was unplugged, and will not sound again. Any thread

    /// A voice for `rate` frames a second; null when the device has none. By the voice's thread.
    virtual std::unique_ptr<SoundVoice> CreateVoice(int rate) = 0;
};

/// The machine's sound device, by OpenAL; null when there is none. Says nothing.
std::unique_ptr<SoundDevice> OpenSoundDevice();
} // namespace vyr
