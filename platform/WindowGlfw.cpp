#include "platform/Window.h"

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include <cstdio>
#include <string>

namespace vyr::platform
{
namespace
{
GLFWwindow *window = nullptr;

// Each failure once: a caller that goes on without a window would hear it at every call.
void ReportError(int, const char *description)
{
    static std::string reported;
    if (reported == description)
        return;
    reported = description;
    std::fprintf(stderr, "window: %s\n", description);
}

bool Start()
{
    glfwSetErrorCallback(ReportError);
    return glfwInit() == GLFW_TRUE;
}

Size GetMainDisplaySize()
{
    GLFWmonitor *monitor = glfwGetPrimaryMonitor();
    const GLFWvidmode *mode = monitor ? glfwGetVideoMode(monitor) : nullptr;
    return mode ? Size{mode->width, mode->height} : Size{};
}

void AskForFramebuffer()
{
    glfwDefaultWindowHints();
    glfwWindowHint(GLFW_RED_BITS, 8);
    glfwWindowHint(GLFW_GREEN_BITS, 8);
    glfwWindowHint(GLFW_BLUE_BITS, 8);
    glfwWindowHint(GLFW_ALPHA_BITS, 8);
    glfwWindowHint(GLFW_DEPTH_BITS, 16);
    glfwWindowHint(GLFW_STENCIL_BITS, 0);
}

bool Open(int width, int height, bool fullscreen)
{
    AskForFramebuffer();
    window = glfwCreateWindow(width, height, "", fullscreen ? glfwGetPrimaryMonitor() : nullptr,
                              nullptr);
    if (!window)
        return false;
    if (fullscreen) // a pointer would stand in the picture
        glfwSetInputMode(window, GLFW_CURSOR, GLFW_CURSOR_HIDDEN);
    glfwMakeContextCurrent(window);
    return true;
}

void SetTitle(const char *title)
{
    if (window)
        glfwSetWindowTitle(window, title);
}

void Swap()
{
    if (window)
        glfwSwapBuffers(window);
    glfwPollEvents();
}

bool IsEscapeDown()
{
    if (!window)
        return false;
    // Between two swaps many passes may draw nothing; without this they would not see the key.
    glfwPollEvents();
    return glfwGetKey(window, GLFW_KEY_ESCAPE) == GLFW_PRESS;
}

void Stop()
{
    glfwTerminate();
    window = nullptr;
}
} // namespace

const WindowSystem &ScreenWindowSystem()
{
    static const WindowSystem system = {
        Start,        GetMainDisplaySize, Open, glfwSwapInterval, SetTitle, Swap,
        IsEscapeDown, glfwGetTime,        Stop};
    return system;
}
} // namespace vyr::platform
