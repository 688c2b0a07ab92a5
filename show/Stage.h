#pragma once

namespace vyr
{
class cRenderer;
namespace platform
{
struct WindowSystem;
}

/// Where a show is drawn: the renderer, the texture manager and the targets of the post effects,
/// over a window or over a context without one. Positions are in design units of 1280 by 720,
/// whatever the size. One at a time, on the main thread.
class cStage
{
public:
    enum eSurface
    {
        FULLSCREEN, ///< the main display, in its own size; no size is asked for
        WINDOW,
        OFFSCREEN ///< no display is needed; Escape is never held
    };

    /// A size in pixels. On failure IsOpen is false, and the window system has reported the reason
    /// in one line on standard error.
    cStage(eSurface surface, int width, int height);
    /// Over a window system of the caller's own, which decides what is opened. A size in pixels.
    cStage(const platform::WindowSystem &system, int width, int height);
    ~cStage(); ///< destroys everything, the context and all that was loaded into it too
    cStage(const cStage &) = delete;
    cStage &operator=(const cStage &) = delete;

    bool IsOpen() const { return mIsOpen; }
    cRenderer &GetRenderer() const;

private:
    void Open(int width, int height, bool isFullscreen);

    bool mIsOpen = false;
};
} // namespace vyr
