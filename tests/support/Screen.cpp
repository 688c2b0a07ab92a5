#include "tests/support/Screen.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

namespace test
{
namespace
{
Display *AsDisplay(void *display) { return static_cast<Display *>(display); }

bool HasTitle(Display *display, Window window, const std::string &title)
{
    char *name = nullptr;
    const bool isFound = XFetchName(display, window, &name) && name && title == name;
    if (name)
        XFree(name);
    return isFound;
}

Window FindWindow(Display *display, const std::string &title)
{
    Window root = 0, parent = 0, *children = nullptr, found = 0;
    unsigned int count = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count);
    for (unsigned int i = 0; i < count && !found; i++)
        if (HasTitle(display, children[i], title))
            found = children[i];
    if (children)
        XFree(children);
    return found;
}

XWindowAttributes AttributesOf(void *display, Window window)
{
    XWindowAttributes attributes = {};
    XGetWindowAttributes(AsDisplay(display), window, &attributes);
    return attributes;
}

// Windows come and go while a test looks for them.
int IgnoreError(Display *, XErrorEvent *) { return 0; }
} // namespace

cScreen::cScreen() : mDisplay(XOpenDisplay(nullptr))
{
    if (!mDisplay)
        throw std::runtime_error("this test needs a display: run it through ctest");
    XSetErrorHandler(IgnoreError);
}

cScreen::~cScreen() { XCloseDisplay(AsDisplay(mDisplay)); }

bool cScreen::WaitForWindow(const std::string &title, double seconds)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    do {
        mWindow = FindWindow(AsDisplay(mDisplay), title);
        if (mWindow && AttributesOf(mDisplay, mWindow).map_state == IsViewable)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    } while (Clock::now() < end);
    return false;
}

int cScreen::Width() const { return AttributesOf(mDisplay, mWindow).width; }

int cScreen::Height() const { return AttributesOf(mDisplay, mWindow).height; }

void cScreen::SendKey(int type) const
{
    Display *display = AsDisplay(mDisplay);
    XEvent event = {};
    event.xkey.type = type;
    event.xkey.display = display;
    event.xkey.window = mWindow;
    event.xkey.root = DefaultRootWindow(display);
    event.xkey.time = CurrentTime;
    event.xkey.same_screen = True;
    event.xkey.keycode = XKeysymToKeycode(display, XK_Escape);
    XSendEvent(display, mWindow, False, KeyPressMask | KeyReleaseMask, &event);
    XFlush(display);
}

void cScreen::PressEscape() const { SendKey(KeyPress); }

void cScreen::ReleaseEscape() const { SendKey(KeyRelease); }

void cScreen::RequestClose() const
{
    Display *display = AsDisplay(mDisplay);
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = mWindow;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, mWindow, False, NoEventMask, &event);
    XFlush(display);
}

void cScreen::Unmap() const
{
    XUnmapWindow(AsDisplay(mDisplay), mWindow);
    XSync(AsDisplay(mDisplay), False);
}

void cScreen::Map() const
{
    XMapWindow(AsDisplay(mDisplay), mWindow);
    XSync(AsDisplay(mDisplay), False);
}

void cScreen::MoveTo(int x, int y) const
{
    XMoveWindow(AsDisplay(mDisplay), mWindow, x, y);
    XSync(AsDisplay(mDisplay), False);
}

void cScreen::Cover(double seconds) const
{
    Display *display = AsDisplay(mDisplay);
    XSetWindowAttributes attributes = {};
    attributes.override_redirect = True; // no window manager has a say
    const Window cover = XCreateWindow(display, DefaultRootWindow(display), 0, 0, unsigned(Width()),
                                       unsigned(Height()), 0, CopyFromParent, InputOutput, nullptr,
                                       CWOverrideRedirect, &attributes);
    XMapRaised(display, cover);
    XSync(display, False);
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    XDestroyWindow(display, cover);
    XSync(display, False);
}

unsigned long cScreen::Pixel(int x, int y) const
{
    XImage *image = XGetImage(AsDisplay(mDisplay), mWindow, x, y, 1, 1, AllPlanes, ZPixmap);
    if (!image)
        return 0;
    const unsigned long pixel = XGetPixel(image, 0, 0);
    XDestroyImage(image);
    return pixel & 0xFFFFFF;
}
} // namespace test
