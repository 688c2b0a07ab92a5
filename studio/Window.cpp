#include "studio/Window.h"

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include <stdexcept>

namespace studio
{
namespace
{
cWindow *theWindow = nullptr;
std::string lastError;

void NoteError(int, const char *description) { lastError = description; }

cModifiers ModifiersOf(int mods)
{
    return {(mods & GLFW_MOD_CONTROL) != 0, (mods & GLFW_MOD_SHIFT) != 0,
            (mods & GLFW_MOD_ALT) != 0};
}

int ModifiersHeld(GLFWwindow *window)
{
    const auto held = [window](int left, int right) {
        return glfwGetKey(window, left) || glfwGetKey(window, right);
    };
    return (held(GLFW_KEY_LEFT_CONTROL, GLFW_KEY_RIGHT_CONTROL) ? GLFW_MOD_CONTROL : 0) |
           (held(GLFW_KEY_LEFT_SHIFT, GLFW_KEY_RIGHT_SHIFT) ? GLFW_MOD_SHIFT : 0) |
           (held(GLFW_KEY_LEFT_ALT, GLFW_KEY_RIGHT_ALT) ? GLFW_MOD_ALT : 0);
}

GLFWwindow *Create(int width, int height, GLFWwindow *sharedWith)
{
    GLFWwindow *window = glfwCreateWindow(width, height, "vyr-studio", nullptr, sharedWith);
    if (!window)
        throw std::runtime_error("no window: " + lastError);
    return window;
}
} // namespace

tKey TranslateKey(int key, int scancode)
{
    const char *name = key >= GLFW_KEY_KP_0 ? nullptr : glfwGetKeyName(key, scancode);
    if (!name || !name[0] || name[1])
        return key; // it writes nothing, or what is no ASCII: its place on the keyboard then
    const char sign = name[0];
    return sign >= 'a' && sign <= 'z' ? sign - 'a' + 'A' : sign;
}

/// What GLFW calls.
struct cCallbacks
{
    static void Add(const cEvent &event)
    {
        if (theWindow && theWindow->mEvents)
            theWindow->mEvents->Add(event);
    }

    static void Key(GLFWwindow *, int key, int scancode, int action, int mods)
    {
        cEvent event;
        event.mKind = cEvent::KEY;
        event.mKey = TranslateKey(key, scancode);
        event.mPlace = key;
        event.mIsDown = action != GLFW_RELEASE;
        event.mModifiers = ModifiersOf(mods);
        Add(event);
    }

    static void Text(GLFWwindow *, unsigned int character)
    {
        cEvent event;
        event.mKind = cEvent::TEXT;
        event.mCharacter = character;
        Add(event);
    }

    static void Move(GLFWwindow *window, double x, double y)
    {
        cEvent event;
        event.mX = x * theWindow->PixelsPerUnit();
        event.mY = y * theWindow->PixelsPerUnit();
        event.mModifiers = ModifiersOf(ModifiersHeld(window));
        Add(event);
    }

    static void Button(GLFWwindow *window, int button, int action, int mods)
    {
        double x = 0.0, y = 0.0;
        glfwGetCursorPos(window, &x, &y);
        Move(window, x, y);
        cEvent event;
        event.mKind = cEvent::BUTTON;
        event.mKey = button;
        event.mIsDown = action == GLFW_PRESS;
        event.mModifiers = ModifiersOf(mods);
        Add(event);
    }

    static void Wheel(GLFWwindow *window, double x, double y)
    {
        cEvent event;
        event.mKind = cEvent::WHEEL;
        event.mX = x;
        event.mY = y;
        event.mModifiers = ModifiersOf(ModifiersHeld(window));
        Add(event);
    }

    static void Enter(GLFWwindow *, int entered)
    {
        cEvent event;
        event.mKind = cEvent::LEAVE;
        if (!entered)
            Add(event);
    }
};

cWindow::cWindow(int width, int height)
{
    glfwSetErrorCallback(NoteError);
    if (!glfwInit())
        throw std::runtime_error("no display: " + lastError);
    glfwDefaultWindowHints();
    glfwWindowHint(GLFW_ALPHA_BITS, 0);
    glfwWindowHint(GLFW_DEPTH_BITS, 0);
    glfwWindowHint(GLFW_STENCIL_BITS, 0);
    // What draws the page needs vertices beyond the first 65,536, which came with this version.
    glfwWindowHint(GLFW_CONTEXT_VERSION_MAJOR, 3);
    glfwWindowHint(GLFW_CONTEXT_VERSION_MINOR, 2);
    glfwWindowHint(GLFW_OPENGL_PROFILE, GLFW_OPENGL_CORE_PROFILE);
    glfwWindowHint(GLFW_VISIBLE, GLFW_FALSE); // until there is something to see in it
    mPage = Create(width, height, nullptr);
    glfwDefaultWindowHints();
    glfwWindowHint(GLFW_VISIBLE, GLFW_FALSE);
    mShow = Create(16, 16, mPage);
    theWindow = this;

    glfwSetKeyCallback(mPage, cCallbacks::Key);
    glfwSetCharCallback(mPage, cCallbacks::Text);
    glfwSetCursorPosCallback(mPage, cCallbacks::Move);
    glfwSetMouseButtonCallback(mPage, cCallbacks::Button);
    glfwSetScrollCallback(mPage, cCallbacks::Wheel);
    glfwSetCursorEnterCallback(mPage, cCallbacks::Enter);
    UsePage();
    glfwSwapInterval(1);
}

cWindow::~cWindow()
{
    theWindow = nullptr;
    glfwDestroyWindow(mShow);
    glfwDestroyWindow(mPage);
    glfwTerminate();
}

void cWindow::UsePage() { glfwMakeContextCurrent(mPage); }
void cWindow::UseShow() { glfwMakeContextCurrent(mShow); }

void cWindow::Poll(double seconds, cEventQueue *events)
{
    mEvents = events;
    if (seconds > 0.0)
        glfwWaitEventsTimeout(seconds);
    else
        glfwPollEvents();
}

bool cWindow::IsToClose() const { return glfwWindowShouldClose(mPage); }
void cWindow::SetToClose(bool isToClose) { glfwSetWindowShouldClose(mPage, isToClose); }

void cWindow::SetTitle(const std::string &title)
{
    if (title == mTitle)
        return;
    mTitle = title;
    glfwSetWindowTitle(mPage, title.c_str());
}

void cWindow::Present()
{
    glfwShowWindow(mPage);
    glfwSwapBuffers(mPage);
}

vyr::platform::Size cWindow::Size() const
{
    vyr::platform::Size size;
    glfwGetFramebufferSize(mPage, &size.width, &size.height);
    return size;
}

double cWindow::PixelsPerUnit() const
{
    int units = 0, ignored = 0;
    glfwGetWindowSize(mPage, &units, &ignored);
    return units > 0 ? double(Size().width) / units : 1.0;
}

const vyr::platform::WindowSystem &PreviewWindowSystem()
{
    using vyr::platform::Size;
    static const vyr::platform::WindowSystem system = {
        [] { return theWindow != nullptr; },
        [] { return Size{}; },
        [](int, int, bool) {
            theWindow->UseShow();
            return true;
        },
        [](int) {},
        [](const char *) {},
        [] {},
        [] { return false; },
        [] { return glfwGetTime(); },
        [] {},
    };
    return system;
}
} // namespace studio
