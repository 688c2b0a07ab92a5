#include "platform/Window.h"

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace vyr::platform
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

bool HasClientExtension(const char *name)
{
    const char *extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    return extensions && epoxy_has_egl_extension(EGL_NO_DISPLAY, name);
}

bool IsSoftware(EGLDeviceEXT device)
{
    const char *extensions = eglQueryDeviceStringEXT(device, EGL_EXTENSIONS);
    return extensions && std::strstr(extensions, "EGL_MESA_device_software");
}

// One for each graphics card; none where drawing in software is asked for.
std::vector<EGLDisplay> FindCardDisplays()
{
    std::vector<EGLDisplay> displays;
    if (std::getenv("LIBGL_ALWAYS_SOFTWARE") || !HasClientExtension("EGL_EXT_platform_device") ||
        !HasClientExtension("EGL_EXT_device_query"))
        return displays;
    EGLDeviceEXT devices[8] = {};
    EGLint count = 0;
    if (!eglQueryDevicesEXT(8, devices, &count))
        return displays;
    for (EGLint i = 0; i < count; i++)
        if (!IsSoftware(devices[i]))
            displays.push_back(
                eglGetPlatformDisplayEXT(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr));
    return displays;
}

// In the order in which they are tried: graphics cards; the driver's own way to draw without a
// window server, which is software where no card answered; the system's default.
std::vector<EGLDisplay> FindDisplays()
{
    std::vector<EGLDisplay> displays = FindCardDisplays();
    if (HasClientExtension("EGL_MESA_platform_surfaceless"))
        displays.push_back(
            eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr));
    displays.push_back(eglGetDisplay(EGL_DEFAULT_DISPLAY));
    return displays;
}

bool ChooseConfig(EGLDisplay from, EGLConfig &config)
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
    return eglChooseConfig(from, wanted, &config, 1, &found) && found == 1;
}

// A display counts when it has OpenGL with an off-screen buffer.
bool IsUsable(EGLDisplay candidate)
{
    if (candidate == EGL_NO_DISPLAY || !eglInitialize(candidate, nullptr, nullptr))
        return false;
    EGLConfig config = nullptr;
    if (eglBindAPI(EGL_OPENGL_API) && ChooseConfig(candidate, config))
        return true;
    eglTerminate(candidate);
    return false;
}

bool Start()
{
    if (display != EGL_NO_DISPLAY)
        return true;
    const std::vector<EGLDisplay> displays = FindDisplays();
    const auto found = std::find_if(displays.begin(), displays.end(), IsUsable);
    if (found == displays.end())
        return Fail("no EGL display with OpenGL");
    display = *found;
    started = Clock::now();
    return true;
}

// The first call of an entry point that the driver lacks would end the program.
bool HasEntryPoints()
{
    if (epoxy_gl_version() < 20)
        return Fail("the driver has no OpenGL 2.0");
    if (!epoxy_has_gl_extension("GL_EXT_framebuffer_object"))
        return Fail("the driver has no framebuffers");
    return true;
}

Size GetNoDisplaySize() { return {}; }

bool Open(int width, int height, bool)
{
    EGLConfig config = nullptr;
    if (!eglBindAPI(EGL_OPENGL_API) || !ChooseConfig(display, config))
        return Fail("no OpenGL with an off-screen buffer");
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    surface = eglCreatePbufferSurface(display, config, size);
    if (surface == EGL_NO_SURFACE)
        return Fail("no buffer of this size");
    context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    if (context == EGL_NO_CONTEXT || !eglMakeCurrent(display, surface, surface, context))
        return Fail("no context");
    return HasEntryPoints();
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
} // namespace vyr::platform
