#include "sound/SoundRunningTime.h"

#include <algorithm>

namespace vyr
{
double SoundRunningTime::At(double now)
{
    if (!mHasStarted || now - mLatest > stoppedSeconds)
        mLost += mHasStarted ? now - mLatest : now;
    mHasStarted = true;
    // Two threads may have read their clocks in the other order than they come here.
    mLatest = std::max(mLatest, now);
    return mLatest - mLost;
}
} // namespace vyr
