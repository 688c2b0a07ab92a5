#include "sound/SoundClock.h"

#include <algorithm>
#include <cmath>

namespace vyr
{
namespace
{
// Past this a reading is not late any more: the device has stalled or leapt, and so does the time.
const double stallSeconds = 0.05;

// A device can lose or find less than that, too. Lateness comes and goes; what stays for this long
// (a dozen blocks) and by this much is a new position.
const double shiftSeconds = 0.02, shiftWatchSeconds = 0.3;

// Just after an anchor, which may have been a late reading, every earlier one is believed at once.
const double lockSeconds = 1.0;

// Pauses of the device's thread beat against its blocks, with periods from one second to ten: the
// window spans more than one, or the beat would be taken for a drift.
const double windowSeconds = 12.0;
const double earliestPart = 0.02; // of the window's readings, this part may be wrongly early

// A critically damped loop: an error of the position fades in this time, one of the rate in twice.
const double settleSeconds = 6.0, steerEverySeconds = 0.05;
const double maximumDrift = 0.01; // no crystal is that bad
} // namespace

double SoundLine::At(double now) const
{
    return std::max(floor, std::min(heard + rate * (now - time), cap));
}

void SoundClock::Observe(double now, double heard)
{
    if (mIsAnchored && heard == mLastHeard)
        return; // between two blocks
    mLastHeard = heard;
    mLine.floor = At(now);
    if (mIsAnchored && std::abs(GetEarliness({now, heard})) <= stallSeconds)
        Follow(now, heard);
    else if (!mIsAnchored || mHasStray)
        Anchor(now, heard);
    else
        mHasStray = true; // ignore one outlier; two in a row re-anchor the clock
}

// Keeps the rate: it belongs to the crystal, not to the place.
void SoundClock::Anchor(double now, double heard)
{
    mLine.time = now;
    mLine.heard = heard;
    SetCap(heard);
    mIsAnchored = true;
    mAnchorTime = mSteerTime = now;
    mCount = 0;
    Remember({now, heard});
}

void SoundClock::Follow(double now, double heard)
{
    SetCap(heard);
    Remember({now, heard});
    ForgetBefore(now - windowSeconds);
    const double shift = FindShift(now);
    if (shift != 0) {
        mLine.heard += shift;
        ForgetBefore(now - shiftWatchSeconds);
    } else if (now - mAnchorTime < lockSeconds) {
        mLine.heard += std::max(0.0, GetEarliness({now, heard}));
        mSteerTime = now;
    } else if (now - mSteerTime >= steerEverySeconds) {
        Steer(now);
    }
}

void SoundClock::SetCap(double heard)
{
    mLine.cap = heard + mBlockSeconds + stallSeconds;
    mHasStray = false;
}

void SoundClock::Steer(double now)
{
    const double turn = FindEarliness() * (now - mSteerTime) / settleSeconds;
    const double drift = mLine.rate - 1 + turn / (4 * settleSeconds);
    mLine.heard += mLine.rate * (now - mLine.time) + turn;
    mLine.time = mSteerTime = now;
    mLine.rate = 1 + std::clamp(drift, -maximumDrift, maximumDrift);
}

// How far the line has to move when all readings of late agree that it is wrong; else 0.
double SoundClock::FindShift(double now) const
{
    if (now - mAnchorTime < shiftWatchSeconds)
        return 0;
    double least = stallSeconds, most = -stallSeconds;
    for (size_t i = mCount; i-- > 0 && GetReading(i).time >= now - shiftWatchSeconds;) {
        least = std::min(least, GetEarliness(GetReading(i)));
        most = std::max(most, GetEarliness(GetReading(i)));
    }
    return most < -shiftSeconds || least > shiftSeconds ? most : 0;
}

// How early the earliest readings of the window are, the very first ones left out.
double SoundClock::FindEarliness() const
{
    std::array<double, capacity> earliness;
    for (size_t i = 0; i < mCount; i++)
        earliness[i] = GetEarliness(GetReading(i));
    const auto end = earliness.begin() + std::ptrdiff_t(mCount);
    const auto chosen = end - 1 - std::ptrdiff_t(double(mCount) * earliestPart);
    std::nth_element(earliness.begin(), chosen, end);
    return *chosen;
}

double SoundClock::GetEarliness(const Reading &reading) const
{
    return reading.heard - (mLine.heard + mLine.rate * (reading.time - mLine.time));
}

const SoundClock::Reading &SoundClock::GetReading(size_t index) const
{
    return mReadings[(mFirst + index) % capacity];
}

void SoundClock::Remember(const Reading &reading)
{
    if (mCount == capacity) {
        mFirst = (mFirst + 1) % capacity;
        mCount--;
    }
    mReadings[(mFirst + mCount) % capacity] = reading;
    mCount++;
}

void SoundClock::ForgetBefore(double time)
{
    while (mCount > 0 && GetReading(0).time < time) {
        mFirst = (mFirst + 1) % capacity;
        mCount--;
    }
}
} // namespace vyr
