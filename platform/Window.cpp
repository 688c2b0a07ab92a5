#include "platform/Window.h"

namespace vyr::platform
{
namespace
{
const WindowSystem *current = nullptr;
bool isOpen = false;

const WindowSystem &Current() { return current ? *current : ScreenWindowSystem(); }
} // namespace

void UseWindowSystem(const WindowSystem &system) { current = &system; }

bool StartWindowSystem() { return Current().start(); }

Size GetDisplaySize() { return Current().start() ? Current().getDisplaySize() : Size{}; }

bool OpenWindow(int width, int height, bool fullscreen)
{
    isOpen = Current().open(width, height, fullscreen);
    return isOpen;
}

bool IsWindowOpen() { return isOpen; }

void SetSwapInterval(int frames) { Current().setSwapInterval(frames); }

void SetWindowTitle(const char *title) { Current().setTitle(title); }

void SwapBuffers() { Current().swapBuffers(); }

bool IsEscapeHeld() { return Current().isEscapeHeld(); }

double GetTime() { return Current().getTime(); }

void StopWindowSystem()
{
    Current().stop();
    isOpen = false;
}
} // namespace vyr::platform
