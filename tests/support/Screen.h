#pragma once

#include "tests/support/Process.h"

#include <string>

namespace test
{
/// The display that the test runs on, as its user: finds a window and sends it what a keyboard or a
/// task bar would.
class cScreen
{
public:
    cScreen();
    ~cScreen();
    cScreen(const cScreen &) = delete;
    cScreen &operator=(const cScreen &) = delete;

    /// Waits for a window with this title; false when none appears within `seconds`.
    bool WaitForWindow(const std::string &title, double seconds = hangSeconds);
    /// The same; false too when `program` ends without one.
    bool WaitForWindow(const std::string &title, cProcess &program);

    // Of the window found last:
    int Width() const;
    int Height() const;
    void PressEscape() const;
    void ReleaseEscape() const;
    /// A key by its name ("z", "space", "Right"), down and up again, with Ctrl held or not.
    void Tap(const char *key, bool isCtrlHeld = false) const;
    void MovePointer(int x, int y) const; ///< to a pixel of the window
    void PressButton() const;             ///< the left one, where the pointer is
    void ReleaseButton() const;
    void RequestClose() const;
    /// Asks the window's program for a sign of life, as a window manager does. True when it
    /// answers: then it has seen all that was sent to it before. False when the window is gone.
    bool AnswersPing() const;
    bool HidesPointer() const;        ///< moves the mouse pointer over the window and looks at it
    bool IsShown() const;             ///< not minimised, and on the desktop that is shown
    void Cover(double seconds) const; ///< lays a window over all of it, and takes it away again
    /// The colour of one pixel of the window, 0xRRGGBB.
    unsigned long Pixel(int x, int y) const;

    /// Waits for a window manager to look after the display; false when none does.
    bool WaitForWindowManager() const;
    // Through it, as the user's task bar does:
    void Minimise() const;
    void Activate() const; ///< shows it again, in front, with the keyboard
    void SendToDesktop(int number) const;

private:
    void SendKey(int type, unsigned long key, unsigned int state) const;
    void SendButton(int type) const;
    void SendProtocol(const char *name) const;
    void AskWindowManager(const char *what, long first, long second) const;

    void *mDisplay;
    unsigned long mWindow = 0;
};
} // namespace test
