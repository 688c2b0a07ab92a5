#include "benchmarks/NoOpenGL.h"

#include <epoxy/gl.h>

namespace
{
std::int64_t dropped = 0;

// OpenGL's names stand for the pointers through which libepoxy calls the driver.
template <typename Result, typename... Arguments>
void Drop(Result (*&entry)(Arguments...))
{
    entry = [](Arguments...) -> Result {
        dropped++;
        return Result();
    };
}

template <typename... Entries>
void DropAll(Entries &...entries)
{
    (Drop(entries), ...);
}

void DropState()
{
    DropAll(glActiveTexture, glBlendFunc, glClear, glClearColor, glClearDepth, glClearStencil,
            glColorMask, glDepthFunc, glDepthMask, glDisable, glEnable, glFinish, glFrontFace,
            glGetIntegerv, glHint, glLineWidth, glPolygonMode, glScissor, glTexEnvf, glTexGeni,
            glViewport);
    DropAll(glFrustum, glLoadIdentity, glMatrixMode, glOrtho, glPopMatrix, glPushMatrix, glRotatef,
            glScalef, glTranslatef);
}

void DropDrawing()
{
    DropAll(glBegin, glColor3f, glColor4f, glColorPointer, glDisableClientState, glDrawElements,
            glEnableClientState, glEnd, glNormal3f, glNormalPointer, glTexCoord2f,
            glTexCoordPointer, glVertex2f, glVertex3f, glVertexPointer);
}

void DropObjects()
{
    DropAll(glBindTexture, glDeleteTextures, glGenTextures, glPixelStorei, glPopClientAttrib,
            glPushClientAttrib, glTexImage2D, glTexParameterf, glTexParameteri);
    DropAll(glBindFramebufferEXT, glCheckFramebufferStatusEXT, glDeleteFramebuffersEXT,
            glFramebufferTexture2DEXT, glGenFramebuffersEXT);
    DropAll(glAttachShader, glCompileShader, glCreateProgram, glCreateShader, glGetProgramInfoLog,
            glGetProgramiv, glGetShaderInfoLog, glGetShaderiv, glGetUniformLocation, glLinkProgram,
            glShaderSource, glUniform1f, glUniform2f, glUseProgram, glValidateProgram);
}
} // namespace

// GLU calls the driver's library by name; the program's own function comes first.
#undef glMultMatrixd
extern "C" [[gnu::visibility("default")]] void glMultMatrixd(const GLdouble *) { dropped++; }

namespace bench
{
void DropOpenGL()
{
    DropState();
    DropDrawing();
    DropObjects();
}

std::int64_t GetDroppedCalls() { return dropped; }

const vyr::platform::WindowSystem &NoWindowSystem()
{
    static const vyr::platform::WindowSystem system = {[] { return true; },
                                                       [] { return vyr::platform::Size{}; },
                                                       [](int, int, bool) { return true; },
                                                       [](int) {},
                                                       [](const char *) {},
                                                       [] {},
                                                       [] { return false; },
                                                       [] { return 0.0; },
                                                       [] {}};
    return system;
}
} // namespace bench
