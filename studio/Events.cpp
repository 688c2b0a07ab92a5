#include "studio/Events.h"

#include <algorithm>

namespace studio
{
// Whether `event` would be lost, or seen at a wrong place, in one frame with those that are taken.
bool cEventQueue::Conflicts(const cEvent &event, const std::vector<cEvent> &taken)
{
    return std::ranges::any_of(taken, [&event](const cEvent &other) {
        const bool isClick = other.mKind == cEvent::BUTTON || other.mKind == cEvent::WHEEL;
        switch (event.mKind) {
        case cEvent::KEY: // one at a time: what a key does may change what the next one means
            return other.mKind == cEvent::KEY || isClick || other.mKind == cEvent::TEXT;
        case cEvent::BUTTON:
            return isClick || other.mKind == cEvent::KEY;
        case cEvent::MOVE:
        case cEvent::LEAVE:
            return isClick;
        case cEvent::WHEEL:
            return other.mKind == cEvent::BUTTON;
        case cEvent::TEXT:
            return false;
        }
        return false;
    });
}

std::vector<cEvent> cEventQueue::Take()
{
    std::vector<cEvent> taken;
    while (!mEvents.empty() && !Conflicts(mEvents.front(), taken)) {
        const cEvent &event = mEvents.front();
        const bool isFurther =
            event.mKind == cEvent::MOVE && !taken.empty() && taken.back().mKind == cEvent::MOVE;
        if (isFurther)
            taken.back() = event;
        else
            taken.push_back(event);
        mEvents.pop_front();
    }
    return taken;
}
} // namespace studio
