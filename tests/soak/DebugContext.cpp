// Preloaded into the show: its context becomes one that reports errors, and each is a line
// "OpenGL: ..." on standard error. The show knows nothing of it.

#include <epoxy/gl.h>

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include <cstdio>

#include <dlfcn.h>

namespace
{
template <typename Function>
Function *Original(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

void Report(GLenum, GLenum type, GLuint, GLenum, GLsizei, const GLchar *message, const void *)
{
    if (type == GL_DEBUG_TYPE_ERROR || type == GL_DEBUG_TYPE_UNDEFINED_BEHAVIOR)
        std::fprintf(stderr, "OpenGL: %s\n", message);
}

// A context is made current more than once: GLFW does so itself.
void Watch()
{
    static bool isWatching = false;
    GLint flags = 0;
    glGetIntegerv(GL_CONTEXT_FLAGS, &flags);
    if (isWatching || (flags & GL_CONTEXT_FLAG_DEBUG_BIT) == 0)
        return;
    isWatching = true;
    glEnable(GL_DEBUG_OUTPUT_SYNCHRONOUS);
    glDebugMessageCallback(Report, nullptr);
    std::fprintf(stderr, "OpenGL: errors are reported from here on\n");
}
} // namespace

GLFWwindow *glfwCreateWindow(int width, int height, const char *title, GLFWmonitor *monitor,
                             GLFWwindow *share)
{
    glfwWindowHint(GLFW_OPENGL_DEBUG_CONTEXT, GLFW_TRUE);
    return Original<decltype(glfwCreateWindow)>("glfwCreateWindow")(width, height, title, monitor,
                                                                    share);
}

void glfwMakeContextCurrent(GLFWwindow *window)
{
    Original<decltype(glfwMakeContextCurrent)>("glfwMakeContextCurrent")(window);
    Watch();
}
