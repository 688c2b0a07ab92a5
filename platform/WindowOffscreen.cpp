#include "platform/Window.h"

#include <epoxy/egl.h>

#include <chrono>
#include <cstdio>

namespace platform
{
namespace
{
using Clock = std::chrono::steady_clock;

EGLDisplay display = EGL_NO_DISPLAY;
EGLSurface surface = EGL_NO_SURFACE;
EGLContext context = EGL_NO_CONTEXT;
Clock::time_point started;

bool Fail(const char *what)
{
    std::fprintf(stderr, "off-screen context: %s (EGL error 0x%x)\n", what,
                 unsigned(eglGetError()));
    return false;
}

// A display of the driver's own, which needs no window server, before the system's default one.
EGLDisplay FindDisplay()
{
    const char *extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    if (extensions && epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless"))
        return eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
    return eglGetDisplay(EGL_DEFAULT_DISPLAY);
}

bool Start()
{
    if (display != EGL_NO_DISPLAY)
        return true;
    display = FindDisplay();
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) {
        display = EGL_NO_DISPLAY;
        return Fail("no EGL display");
    }
    started = Clock::now();
    return true;
}

Size GetNoDisplaySize() { return {}; }

bool ChooseConfig(EGLConfig &config)
{
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_ALPHA_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             16,
                             EGL_NONE};
    EGLint found = 0;
    return eglChooseConfig(display, wanted, &config, 1, &found) && found == 1;
}

bool Open(int width, int height, bool)
{
    EGLConfig config = nullptr;
    if (!eglBindAPI(EGL_OPENGL_API) || !ChooseConfig(config))
        return Fail("no OpenGL with an off-screen buffer");
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    surface = eglCreatePbufferSurface(display, config, size);
    if (surface == EGL_NO_SURFACE)
        return Fail("no buffer of this size");
    context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    if (context == EGL_NO_CONTEXT || !eglMakeCurrent(display, surface, surface, context))
        return Fail("no context");
    return true;
}

void SetNoSwapInterval(int) {}

void SetNoTitle(const char *) {}

void Swap() { eglSwapBuffers(display, surface); }

bool IsNeverDown() { return false; }

double GetSecondsSinceStart()
{
    return std::chrono::duration<double>(Clock::now() - started).count();
}

void Stop()
{
    if (display == EGL_NO_DISPLAY)
        return;
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context != EGL_NO_CONTEXT)
        eglDestroyContext(display, context);
    if (surface != EGL_NO_SURFACE)
        eglDestroySurface(display, surface);
    eglTerminate(display);
    display = EGL_NO_DISPLAY;
    surface = EGL_NO_SURFACE;
    context = EGL_NO_CONTEXT;
}
} // namespace

const WindowSystem &OffscreenWindowSystem()
{
    static const WindowSystem system = {
        Start,       GetNoDisplaySize,     Open, SetNoSwapInterval, SetNoTitle, Swap,
        IsNeverDown, GetSecondsSinceStart, Stop};
    return system;
}
} // namespace platform
