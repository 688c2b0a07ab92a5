#pragma once

#include <string>

namespace test
{
/// The display that the test runs on, as its user: finds a window and sends it what a keyboard or a
/// window manager would.
class cScreen
{
public:
    cScreen();
    ~cScreen();
    cScreen(const cScreen &) = delete;
    cScreen &operator=(const cScreen &) = delete;

    /// Waits for a window with this title; false when none appears within `seconds`.
    bool WaitForWindow(const std::string &title, double seconds = 60.0);

    // Of the window found last:
    int Width() const;
    int Height() const;
    void PressEscape() const;
    void ReleaseEscape() const;
    void RequestClose() const;
    void Unmap() const; ///< as a window manager does to a window that is minimised
    void Map() const;
    void MoveTo(int x, int y) const;
    void Cover(double seconds) const; ///< lays a window over all of it, and takes it away again
    /// The colour of one pixel of the window, 0xRRGGBB.
    unsigned long Pixel(int x, int y) const;

private:
    void SendKey(int type) const;

    void *mDisplay;
    unsigned long mWindow = 0;
};
} // namespace test
