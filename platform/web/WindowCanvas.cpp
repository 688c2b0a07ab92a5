#include "platform/Window.h"

#include <emscripten.h>
#include <emscripten/html5.h>

#include <cstdio>

/// The window is the canvas of the page that matches this.
#define VYR_CANVAS "#vyr-canvas"

namespace vyr::platform
{
namespace
{
EMSCRIPTEN_WEBGL_CONTEXT_HANDLE context = 0;

bool Start() { return true; }

Size GetCanvasSize()
{
    Size size;
    emscripten_get_canvas_element_size(VYR_CANVAS, &size.width, &size.height);
    return size;
}

bool Fail(const char *what)
{
    std::fprintf(stderr, "%s\n", what);
    return false;
}

// Opaque, or the page would shine through where the show leaves alpha below 1.
bool Open(int width, int height, bool)
{
    emscripten_set_canvas_element_size(VYR_CANVAS, width, height);
    EmscriptenWebGLContextAttributes wanted;
    emscripten_webgl_init_context_attributes(&wanted);
    wanted.alpha = wanted.antialias = wanted.stencil = false;
    wanted.depth = true;
    wanted.majorVersion = 2;
    wanted.powerPreference = EM_WEBGL_POWER_PREFERENCE_HIGH_PERFORMANCE;
    context = emscripten_webgl_create_context(VYR_CANVAS, &wanted);
    if (context <= 0)
        return Fail("This browser gives no WebGL 2.");
    return emscripten_webgl_make_context_current(context) == EMSCRIPTEN_RESULT_SUCCESS;
}

// The page draws when the display asks for a picture, and shows what is drawn by itself.
void SetNoSwapInterval(int) {}
void Swap() {}

// The page has its own title, and its own idea of Escape.
void SetNoTitle(const char *) {}
bool IsNeverDown() { return false; }

double GetSeconds() { return emscripten_get_now() / 1000; }

void Stop()
{
    if (context > 0)
        emscripten_webgl_destroy_context(context);
    context = 0;
}
} // namespace

const WindowSystem &ScreenWindowSystem()
{
    static const WindowSystem system = {Start,      GetCanvasSize, Open,        SetNoSwapInterval,
                                        SetNoTitle, Swap,          IsNeverDown, GetSeconds,
                                        Stop};
    return system;
}

// A canvas needs no screen.
const WindowSystem &OffscreenWindowSystem() { return ScreenWindowSystem(); }
} // namespace vyr::platform
