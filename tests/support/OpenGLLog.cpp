#include "tests/support/OpenGLLog.h"

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <iomanip>
#include <sstream>

namespace test
{
namespace
{
std::vector<std::string> lines;

template <typename... Arguments>
void Note(const char *call, Arguments... arguments)
{
    std::ostringstream line;
    line << std::setprecision(9) << call; // a float is told from its neighbours
    ((line << ' ' << arguments), ...);
    lines.push_back(line.str());
}

// Every entry point is a pointer of the loader's: a call is logged by standing in for it.
#define FOR_EACH_LOGGED(DO)                                                                        \
    DO(glTranslatef, (GLfloat x, GLfloat y, GLfloat z), (x, y, z), x, y, z)                        \
    DO(glRotatef, (GLfloat a, GLfloat x, GLfloat y, GLfloat z), (a, x, y, z), a, x, y, z)          \
    DO(glScalef, (GLfloat x, GLfloat y, GLfloat z), (x, y, z), x, y, z)                            \
    DO(glColor4f, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a), r, g, b, a)          \
    DO(glTexCoord2f, (GLfloat s, GLfloat t), (s, t), s, t)                                         \
    DO(glVertex2f, (GLfloat x, GLfloat y), (x, y), x, y)                                           \
    DO(glVertex3f, (GLfloat x, GLfloat y, GLfloat z), (x, y, z), x, y, z)                          \
    DO(glBindTexture, (GLenum target, GLuint name), (target, name), name)                          \
    DO(glUseProgram, (GLuint program), (program), program)                                         \
    DO(glUniform1f, (GLint location, GLfloat v), (location, v), location, v)                       \
    DO(glUniform2f, (GLint location, GLfloat x, GLfloat y), (location, x, y), location, x, y)      \
    DO(glDepthFunc, (GLenum function), (function), function)                                       \
    DO(glDepthMask, (GLboolean on), (on), int(on))                                                 \
    DO(glEnable, (GLenum what), (what), what)                                                      \
    DO(glDisable, (GLenum what), (what), what)                                                     \
    DO(glClear, (GLbitfield what), (what), what)                                                   \
    DO(glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void *indices),             \
       (mode, count, type, indices), count)                                                        \
    DO(glDeleteFramebuffersEXT, (GLsizei count, const GLuint *names), (count, names), count,       \
       names[0])                                                                                   \
    DO(glFrustum,                                                                                  \
       (GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble from, GLdouble to), \
       (left, right, bottom, top, from, to), left, right, bottom, top, from, to)                   \
    DO(glLoadIdentity, (), ())                                                                     \
    DO(glPushMatrix, (), ())                                                                       \
    DO(glPopMatrix, (), ())

#define DEFINE_STAND_IN(name, parameters, forwarded, ...)                                          \
    decltype(epoxy_##name) original_##name = nullptr;                                              \
    void Logged_##name parameters                                                                  \
    {                                                                                              \
        Note(#name __VA_OPT__(, ) __VA_ARGS__);                                                    \
        original_##name forwarded;                                                                 \
    }
#define INSTALL(name, ...)                                                                         \
    original_##name = decltype(original_##name)(eglGetProcAddress(#name));                         \
    epoxy_##name = Logged_##name;
#define REMOVE(name, ...) epoxy_##name = original_##name;

FOR_EACH_LOGGED(DEFINE_STAND_IN)
} // namespace

cOpenGLLog::cOpenGLLog()
{
    lines.clear();
    FOR_EACH_LOGGED(INSTALL)
}

cOpenGLLog::~cOpenGLLog() { FOR_EACH_LOGGED(REMOVE) }

const std::vector<std::string> &cOpenGLLog::Lines() const { return lines; }

std::vector<std::string> cOpenGLLog::LinesOf(const std::string &call) const
{
    std::vector<std::string> found;
    for (const std::string &line : lines)
        if (line == call || line.starts_with(call + ' '))
            found.push_back(line);
    return found;
}
} // namespace test
