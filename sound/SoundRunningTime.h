#pragma once

namespace vyr
{
/// Seconds that the program has run, on a steady clock: a program that was stopped and continued
/// (the machine's clock runs on meanwhile) continues where it was. It takes silence for being
/// stopped, so somebody has to ask it all the time while it matters.
class SoundRunningTime
{
public:
    /// Nobody asked for this long: the program was stopped. A busy machine keeps a thread waiting
    /// for less.
    static constexpr double stoppedSeconds = 0.2;

    /// `now` is a steady clock in seconds. 0 at the first call, and it never goes back.
    double At(double now);

private:
    bool mHasStarted = false;
    double mLatest = 0, mLost = 0;
};
} // namespace vyr
