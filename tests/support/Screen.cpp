#include "tests/support/Screen.h"

#include "tests/support/Wait.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xfixes.h>
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

// At any depth: a window manager puts windows into frames of its own.
Window FindWindow(Display *display, Window within, const std::string &title)
{
    if (HasTitle(display, within, title))
        return within;
    Window root = 0, parent = 0, *children = nullptr, found = 0;
    unsigned int count = 0;
    XQueryTree(display, within, &root, &parent, &children, &count);
    for (unsigned int i = 0; i < count && !found; i++)
        found = FindWindow(display, children[i], title);
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

const long fromPager = 2; // a window manager may refuse programs what it grants the user

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
    const auto isFound = [&] {
        mWindow = FindWindow(AsDisplay(mDisplay), DefaultRootWindow(AsDisplay(mDisplay)), title);
        return mWindow && IsShown();
    };
    return WaitUntil(isFound, seconds);
}

bool cScreen::WaitForWindow(const std::string &title, cProcess &program)
{
    bool isFound = false;
    WaitUntil([&] { return (isFound = WaitForWindow(title, 0.0)) || !program.IsRunning(); });
    return isFound;
}

int cScreen::Width() const { return AttributesOf(mDisplay, mWindow).width; }

int cScreen::Height() const { return AttributesOf(mDisplay, mWindow).height; }

void cScreen::SendKey(int type, unsigned long key, unsigned int state) const
{
    Display *display = AsDisplay(mDisplay);
    XEvent event = {};
    event.xkey.type = type;
    event.xkey.display = display;
    event.xkey.window = mWindow;
    event.xkey.root = DefaultRootWindow(display);
    event.xkey.time = CurrentTime;
    event.xkey.same_screen = True;
    event.xkey.keycode = XKeysymToKeycode(display, key);
    event.xkey.state = state;
    XSendEvent(display, mWindow, False, KeyPressMask | KeyReleaseMask, &event);
    XSync(display, False);
}

void cScreen::PressEscape() const { SendKey(KeyPress, XK_Escape, 0); }

void cScreen::ReleaseEscape() const { SendKey(KeyRelease, XK_Escape, 0); }

void cScreen::Tap(const char *key, bool isCtrlHeld) const
{
    const unsigned int state = isCtrlHeld ? ControlMask : 0;
    SendKey(KeyPress, XStringToKeysym(key), state);
    SendKey(KeyRelease, XStringToKeysym(key), state);
}

void cScreen::MovePointer(int x, int y) const
{
    Display *display = AsDisplay(mDisplay);
    XWarpPointer(display, None, mWindow, 0, 0, 0, 0, x, y);
    XSync(display, False);
}

void cScreen::SendButton(int type) const
{
    Display *display = AsDisplay(mDisplay);
    XEvent event = {};
    event.xbutton.type = type;
    event.xbutton.display = display;
    event.xbutton.window = mWindow;
    event.xbutton.root = DefaultRootWindow(display);
    event.xbutton.time = CurrentTime;
    event.xbutton.same_screen = True;
    event.xbutton.button = Button1;
    XSendEvent(display, mWindow, False, ButtonPressMask | ButtonReleaseMask, &event);
    XSync(display, False);
}

void cScreen::PressButton() const { SendButton(ButtonPress); }

void cScreen::ReleaseButton() const { SendButton(ButtonRelease); }

// What a window manager says to a window.
void cScreen::SendProtocol(const char *name) const
{
    Display *display = AsDisplay(mDisplay);
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = mWindow;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(display, name, False));
    event.xclient.data.l[2] = long(mWindow);
    XSendEvent(display, mWindow, False, NoEventMask, &event);
    XSync(display, False);
}

void cScreen::RequestClose() const { SendProtocol("WM_DELETE_WINDOW"); }

// The window library sends the message on to the root window.
bool cScreen::AnswersPing() const
{
    Display *display = AsDisplay(mDisplay);
    XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
    SendProtocol("_NET_WM_PING");
    const Atom ping = XInternAtom(display, "_NET_WM_PING", False);
    bool hasAnswered = false;
    WaitUntil([&] {
        XEvent event;
        while (!hasAnswered && XCheckTypedEvent(display, ClientMessage, &event))
            hasAnswered = Atom(event.xclient.data.l[0]) == ping;
        return hasAnswered || !IsShown();
    });
    XSelectInput(display, DefaultRootWindow(display), NoEventMask);
    return hasAnswered;
}

bool cScreen::HidesPointer() const
{
    Display *display = AsDisplay(mDisplay);
    XWarpPointer(display, None, mWindow, 0, 0, 0, 0, Width() / 2, Height() / 2);
    XSync(display, False);
    XFixesCursorImage *image = XFixesGetCursorImage(display);
    if (!image)
        throw std::runtime_error("the display tells nothing of its pointer");
    const size_t count = size_t(image->width) * image->height;
    const bool isHidden = std::all_of(image->pixels, image->pixels + count,
                                      [](unsigned long argb) { return (argb >> 24 & 255) == 0; });
    XFree(image);
    return isHidden;
}

bool cScreen::WaitForWindowManager() const
{
    Display *display = AsDisplay(mDisplay);
    const Atom managed = XInternAtom(display, "_NET_SUPPORTING_WM_CHECK", False);
    return WaitUntil([&] {
        Atom type = None;
        int format = 0;
        unsigned long count = 0, rest = 0;
        unsigned char *value = nullptr;
        XGetWindowProperty(display, DefaultRootWindow(display), managed, 0, 1, False, XA_WINDOW,
                           &type, &format, &count, &rest, &value);
        if (value)
            XFree(value);
        return count > 0;
    });
}

// What a pager or a task bar says to the window manager.
void cScreen::AskWindowManager(const char *what, long first, long second) const
{
    Display *display = AsDisplay(mDisplay);
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = mWindow;
    event.xclient.message_type = XInternAtom(display, what, False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = first;
    event.xclient.data.l[1] = second;
    XSendEvent(display, DefaultRootWindow(display), False,
               SubstructureRedirectMask | SubstructureNotifyMask, &event);
    XFlush(display);
}

void cScreen::Minimise() const
{
    Display *display = AsDisplay(mDisplay);
    XIconifyWindow(display, mWindow, DefaultScreen(display));
    XFlush(display);
}

void cScreen::Activate() const { AskWindowManager("_NET_ACTIVE_WINDOW", fromPager, CurrentTime); }

void cScreen::SendToDesktop(int number) const
{
    AskWindowManager("_NET_WM_DESKTOP", number, fromPager);
}

bool cScreen::IsShown() const { return AttributesOf(mDisplay, mWindow).map_state == IsViewable; }

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
