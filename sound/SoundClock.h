#pragma once

#include <array>
#include <cstddef>

namespace vyr
{
/// A piece of the sound's time: what to make of the machine's time until the next reading arrives.
/// All members are seconds. Copy it out of a lock and ask it as often as you like.
struct SoundLine
{
    double time = 0, heard = 0; ///< at machine time `time`, sound time `heard` reaches the ear
    double rate = 1;            ///< sound seconds in one machine second
    double floor = 0;           ///< handed out already: never less
    double cap = 0;             ///< past this the device has stalled, and the time stands still

    double At(double now) const;
};

/// Makes an even time out of the readings of a sound device, which come in steps of one mixer block
/// (20 ms and more), late, and on a crystal that differs from the machine's.
///
/// A device's step can be seen late (a busy machine, the pause between two readings) but hardly
/// early, so the time follows the readings that came earliest, over some seconds, and very slowly:
/// what a viewer sees is the machine's even clock, kept from drifting away from the sound.
/// A device that stops or loses sound is followed at once. The time never goes back: when the
/// device is late, the time waits for it.
///
/// Pure arithmetic, no thread, no device: `now` is any steady clock in seconds.
class SoundClock
{
public:
    /// `blockSeconds`: the size of the device's steps.
    explicit SoundClock(double blockSeconds) : mBlockSeconds(blockSeconds) {}

    /// Takes a reading: at `now` the device said that `heard` seconds of it have reached the ear.
    /// Readings come in order of `now`; many of them between two steps cost nothing.
    void Observe(double now, double heard);

    /// Sound seconds at `now`, 0 and more. `GetLine` gives the same answers.
    double At(double now) const { return mLine.At(now); }
    const SoundLine &GetLine() const { return mLine; }

private:
    struct Reading
    {
        double time = 0, heard = 0;
    };
    static constexpr size_t capacity = 1024;

    void Anchor(double now, double heard);
    void Follow(double now, double heard);
    void SetCap(double heard);
    void Remember(const Reading &reading);
    void ForgetBefore(double time);
    void Steer(double now);
    double FindShift(double now) const;
    double FindEarliness() const;
    double GetEarliness(const Reading &reading) const;
    const Reading &GetReading(size_t index) const;

    double mBlockSeconds;
    SoundLine mLine;
    bool mIsAnchored = false;
    bool mHasStray = false; // the last reading was too far away to be true
    double mAnchorTime = 0, mSteerTime = 0, mLastHeard = 0;
    std::array<Reading, capacity> mReadings; // a ring
    size_t mFirst = 0, mCount = 0;
};
} // namespace vyr
