#pragma once

/// The one window with its OpenGL context, its Escape key and its timer. All calls belong to the
/// main thread. They go to one of two window systems: the screen's (GLFW), or an off-screen one
/// that gives the same context and draws into memory.
namespace vyr::platform
{
struct Size
{
    int width = 0, height = 0; // pixels
};

/// The functions of a window system. Both systems report a failure in one line on standard error.
struct WindowSystem
{
    bool (*start)();                                      ///< may be called again while it runs
    Size (*getDisplaySize)();                             ///< 0 by 0 where there is no display
    bool (*open)(int width, int height, bool fullscreen); ///< makes the context current
    void (*setSwapInterval)(int frames);
    void (*setTitle)(const char *title);
    void (*swapBuffers)(); ///< processes the window's events too
    bool (*isEscapeHeld)();
    double (*getTime)(); ///< seconds since `start`
    void (*stop)();      ///< closes the window; no effect when it does not run
};

const WindowSystem &ScreenWindowSystem();
/// A context without a display (EGL). `open` takes any size that the driver can draw; Escape is
/// never held. It needs neither an X server nor a graphics card, and draws on the first card that
/// there is unless LIBGL_ALWAYS_SOFTWARE is set.
const WindowSystem &OffscreenWindowSystem();

/// Chooses the window system; call it before `StartWindowSystem`. Default: the screen's.
void UseWindowSystem(const WindowSystem &system);

bool StartWindowSystem();
Size GetDisplaySize();

/// Opens the window: 8 bits each of red, green, blue and alpha, 16 bits of depth, no stencil, and a
/// context that has the fixed-function pipeline. A full-screen window hides the mouse pointer.
bool OpenWindow(int width, int height, bool fullscreen);
bool IsWindowOpen(); ///< after an `OpenWindow` that returned true; else there is no OpenGL context
void SetSwapInterval(int frames);
void SetWindowTitle(const char *title);
void SwapBuffers();

/// Whether Escape is down now: a loop that does not draw sees the key too.
bool IsEscapeHeld();
double GetTime();
void StopWindowSystem();
} // namespace vyr::platform
