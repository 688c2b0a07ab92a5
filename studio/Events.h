#pragma once

#include <deque>
#include <vector>

namespace studio
{
/// Keys by what is written on them, so that a shortcut is right on any keyboard layout: letters,
/// digits and signs are their upper-case ASCII code, all others the numbers of GLFW.
using tKey = int;

struct cModifiers
{
    bool mCtrl = false, mShift = false, mAlt = false;

    bool operator==(const cModifiers &) const = default;
};

struct cEvent
{
    enum eKind
    {
        KEY,    ///< mKey, mIsDown; repeats come as further presses
        TEXT,   ///< mCharacter, a Unicode code point
        MOVE,   ///< mX, mY: pixels of the window
        BUTTON, ///< mKey: 0 left, 1 right, 2 middle; mIsDown
        WHEEL,  ///< mX, mY: steps
        LEAVE   ///< the pointer has left the window
    };
    eKind mKind = MOVE;
    tKey mKey = 0;
    tKey mPlace = 0; ///< what is written there on the keyboard of the United States
    bool mIsDown = false;
    cModifiers mModifiers;
    unsigned int mCharacter = 0;
    double mX = 0.0, mY = 0.0;
};

/// What hands do, in its order, dealt out to frames so that none of it is lost: what a page sees in
/// one frame never holds a key or button that goes down and up again, nor a move after a click.
class cEventQueue
{
public:
    void Add(const cEvent &event) { mEvents.push_back(event); }
    bool IsEmpty() const { return mEvents.empty(); }

    /// The next frame's events. Moves are joined; the rest waits for the frames after.
    std::vector<cEvent> Take();

private:
    static bool Conflicts(const cEvent &event, const std::vector<cEvent> &taken);

    std::deque<cEvent> mEvents;
};
} // namespace studio
