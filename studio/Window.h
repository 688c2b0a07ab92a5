#pragma once

#include "platform/Window.h"
#include "studio/Events.h"

#include <memory>
#include <string>

struct GLFWwindow;

namespace studio
{
/// The studio's window, with two OpenGL contexts that share their textures: the page's, which draws
/// into the window, and the show's, which is never seen. Whatever state a show leaves, the page has
/// its own; whatever the page does, the show finds what it left. One at a time, on the main thread.
class cWindow
{
public:
    /// A size in pixels. Throws std::runtime_error with one line when it can't be opened.
    cWindow(int width, int height);
    ~cWindow();
    cWindow(const cWindow &) = delete;
    cWindow &operator=(const cWindow &) = delete;

    void UsePage(); ///< makes the page's context current
    void UseShow(); ///< makes the show's context current

    /// Waits for the next event, for `seconds` at most (0: not at all), and adds what there is to
    /// `events`. With null, hands are not listened to.
    void Poll(double seconds, cEventQueue *events);
    bool IsToClose() const;
    void SetToClose(bool isToClose);
    void SetTitle(const std::string &title); ///< nothing where it is that already
    void Present();                          ///< of the page; the first time the window appears
    vyr::platform::Size Size() const;        ///< of the page in pixels
    /// Pixels of the page for one unit in which the pointer is given.
    double PixelsPerUnit() const;
    GLFWwindow *Handle() const { return mPage; }

private:
    GLFWwindow *mPage = nullptr, *mShow = nullptr;
    cEventQueue *mEvents = nullptr;
    std::string mTitle;

    friend struct cCallbacks;
};

/// The show's context as a window system: opening it makes it current, and there is nothing to see
/// of it. For the one cWindow that there is.
const vyr::platform::WindowSystem &PreviewWindowSystem();

/// The key that GLFW calls `key`, by what is written on it.
tKey TranslateKey(int key, int scancode);
} // namespace studio
