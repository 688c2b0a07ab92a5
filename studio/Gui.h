#pragma once

#include "studio/Events.h"

#include <string>
#include <vector>

struct ImFont;

namespace studio
{
class cWindow;

/// Dear ImGui in the studio's window: its fonts, its look, and what it sees of hands. One at a
/// time.
class cGui
{
public:
    /// `scale` of everything, 1 to 3.
    cGui(cWindow &window, double scale);
    ~cGui();
    cGui(const cGui &) = delete;
    cGui &operator=(const cGui &) = delete;

    /// Begins a frame that sees `events`, `seconds` (above 0) after the one before.
    void Begin(const std::vector<cEvent> &events, double seconds);
    void End();    ///< the frame has made everything that is to be drawn
    void Render(); ///< draws it into the window; the caller presents it

    ImFont *Small() const { return mSmall; }
    ImFont *Bold() const { return mBold; }
    ImFont *Large() const { return mLarge; }

private:
    void LoadFonts();
    void Feed(const cEvent &event);

    cWindow &mWindow;
    const double mScale;
    ImFont *mSmall = nullptr, *mBold = nullptr, *mLarge = nullptr;
    double mX = -1e30, mY = -1e30; ///< of the pointer
    bool mButtons[3] = {};
    std::vector<bool> mKeys;
    cModifiers mModifiers;
};
} // namespace studio
