#pragma once

/// The OpenGL that the engine and shows call, over WebGL 2: this header stands where the desktop's
/// epoxy/gl.h stands, and declares what the layer has, nothing else. A call or a constant that it
/// lacks does not compile; a value that it can't honour (another texture environment, say) stops
/// the program with a line that names the call.
///
/// What WebGL has, it does itself, under its own names. The rest (matrix stacks, glBegin, client
/// arrays, the fixed pipeline, GLSL 1.10) is made of it by the sources of this folder. One context,
/// texture unit 0, the main thread. Lines are one pixel wide and not smoothed. The layer keeps a
/// vertex array and two buffers bound.

#include <cstddef>

using GLenum = unsigned int;
using GLboolean = unsigned char;
using GLbitfield = unsigned int;
using GLint = int;
using GLsizei = int;
using GLuint = unsigned int;
using GLubyte = unsigned char;
using GLchar = char;
using GLfloat = float;
using GLclampf = float;
using GLdouble = double;
using GLvoid = void;

#define VYR_GL_CONSTANTS(X)                                                                        \
    X(FALSE, 0)                                                                                    \
    X(TRUE, 1)                                                                                     \
    X(NO_ERROR, 0)                                                                                 \
    X(POINTS, 0)                                                                                   \
    X(LINES, 1)                                                                                    \
    X(LINE_LOOP, 2)                                                                                \
    X(LINE_STRIP, 3)                                                                               \
    X(TRIANGLES, 4)                                                                                \
    X(TRIANGLE_STRIP, 5)                                                                           \
    X(TRIANGLE_FAN, 6)                                                                             \
    X(QUADS, 7)                                                                                    \
    X(NEVER, 0x0200)                                                                               \
    X(LESS, 0x0201)                                                                                \
    X(EQUAL, 0x0202)                                                                               \
    X(LEQUAL, 0x0203)                                                                              \
    X(GREATER, 0x0204)                                                                             \
    X(NOTEQUAL, 0x0205)                                                                            \
    X(GEQUAL, 0x0206)                                                                              \
    X(ALWAYS, 0x0207)                                                                              \
    X(ZERO, 0)                                                                                     \
    X(ONE, 1)                                                                                      \
    X(SRC_COLOR, 0x0300)                                                                           \
    X(ONE_MINUS_SRC_COLOR, 0x0301)                                                                 \
    X(SRC_ALPHA, 0x0302)                                                                           \
    X(ONE_MINUS_SRC_ALPHA, 0x0303)                                                                 \
    X(DST_ALPHA, 0x0304)                                                                           \
    X(ONE_MINUS_DST_ALPHA, 0x0305)                                                                 \
    X(DST_COLOR, 0x0306)                                                                           \
    X(ONE_MINUS_DST_COLOR, 0x0307)                                                                 \
    X(SRC_ALPHA_SATURATE, 0x0308)                                                                  \
    X(FRONT, 0x0404)                                                                               \
    X(BACK, 0x0405)                                                                                \
    X(FRONT_AND_BACK, 0x0408)                                                                      \
    X(CW, 0x0900)                                                                                  \
    X(CCW, 0x0901)                                                                                 \
    X(CULL_FACE, 0x0B44)                                                                           \
    X(DEPTH_TEST, 0x0B71)                                                                          \
    X(BLEND, 0x0BE2)                                                                               \
    X(SCISSOR_TEST, 0x0C11)                                                                        \
    X(TEXTURE_2D, 0x0DE1)                                                                          \
    X(LIGHTING, 0x0B50)                                                                            \
    X(LINE_SMOOTH, 0x0B20)                                                                         \
    X(TEXTURE_GEN_S, 0x0C60)                                                                       \
    X(TEXTURE_GEN_T, 0x0C61)                                                                       \
    X(PERSPECTIVE_CORRECTION_HINT, 0x0C50)                                                         \
    X(LINE_SMOOTH_HINT, 0x0C52)                                                                    \
    X(DONT_CARE, 0x1100)                                                                           \
    X(FASTEST, 0x1101)                                                                             \
    X(NICEST, 0x1102)                                                                              \
    X(FILL, 0x1B02)                                                                                \
    X(MODELVIEW, 0x1700)                                                                           \
    X(PROJECTION, 0x1701)                                                                          \
    X(S, 0x2000)                                                                                   \
    X(T, 0x2001)                                                                                   \
    X(TEXTURE_GEN_MODE, 0x2500)                                                                    \
    X(SPHERE_MAP, 0x2402)                                                                          \
    X(TEXTURE_ENV, 0x2300)                                                                         \
    X(TEXTURE_ENV_MODE, 0x2200)                                                                    \
    X(MODULATE, 0x2100)                                                                            \
    X(VERTEX_ARRAY, 0x8074)                                                                        \
    X(NORMAL_ARRAY, 0x8075)                                                                        \
    X(COLOR_ARRAY, 0x8076)                                                                         \
    X(TEXTURE_COORD_ARRAY, 0x8078)                                                                 \
    X(UNSIGNED_BYTE, 0x1401)                                                                       \
    X(UNSIGNED_INT, 0x1405)                                                                        \
    X(FLOAT, 0x1406)                                                                               \
    X(DEPTH_COMPONENT, 0x1902)                                                                     \
    X(DEPTH_COMPONENT24, 0x81A6)                                                                   \
    X(RGB, 0x1907)                                                                                 \
    X(RGBA, 0x1908)                                                                                \
    X(BGRA, 0x80E1)                                                                                \
    X(RGBA8, 0x8058)                                                                               \
    X(UNPACK_ALIGNMENT, 0x0CF5)                                                                    \
    X(PACK_ALIGNMENT, 0x0D05)                                                                      \
    X(MAX_TEXTURE_SIZE, 0x0D33)                                                                    \
    X(VIEWPORT, 0x0BA2)                                                                            \
    X(VENDOR, 0x1F00)                                                                              \
    X(RENDERER, 0x1F01)                                                                            \
    X(VERSION, 0x1F02)                                                                             \
    X(TEXTURE0, 0x84C0)                                                                            \
    X(TEXTURE_MAG_FILTER, 0x2800)                                                                  \
    X(TEXTURE_MIN_FILTER, 0x2801)                                                                  \
    X(TEXTURE_WRAP_S, 0x2802)                                                                      \
    X(TEXTURE_WRAP_T, 0x2803)                                                                      \
    X(NEAREST, 0x2600)                                                                             \
    X(LINEAR, 0x2601)                                                                              \
    X(REPEAT, 0x2901)                                                                              \
    X(CLAMP_TO_EDGE, 0x812F)                                                                       \
    X(MIRRORED_REPEAT, 0x8370)                                                                     \
    X(DEPTH_BUFFER_BIT, 0x0100)                                                                    \
    X(STENCIL_BUFFER_BIT, 0x0400)                                                                  \
    X(COLOR_BUFFER_BIT, 0x4000)                                                                    \
    X(FRAGMENT_SHADER, 0x8B30)                                                                     \
    X(VERTEX_SHADER, 0x8B31)                                                                       \
    X(COMPILE_STATUS, 0x8B81)                                                                      \
    X(LINK_STATUS, 0x8B82)                                                                         \
    X(INFO_LOG_LENGTH, 0x8B84)                                                                     \
    X(CURRENT_PROGRAM, 0x8B8D)                                                                     \
    X(TEXTURE_BINDING_2D, 0x8069)                                                                  \
    X(SHADER_TYPE, 0x8B4F)                                                                         \
    X(ACTIVE_UNIFORMS, 0x8B86)                                                                     \
    X(FLOAT_VEC2, 0x8B50)                                                                          \
    X(FLOAT_VEC3, 0x8B51)                                                                          \
    X(FLOAT_VEC4, 0x8B52)                                                                          \
    X(INT_VEC2, 0x8B53)                                                                            \
    X(INT_VEC3, 0x8B54)                                                                            \
    X(INT_VEC4, 0x8B55)                                                                            \
    X(BOOL_VEC2, 0x8B57)                                                                           \
    X(BOOL_VEC3, 0x8B58)                                                                           \
    X(BOOL_VEC4, 0x8B59)                                                                           \
    X(FLOAT_MAT2, 0x8B5A)                                                                          \
    X(FLOAT_MAT3, 0x8B5B)                                                                          \
    X(FLOAT_MAT4, 0x8B5C)                                                                          \
    X(FRAMEBUFFER_EXT, 0x8D40)                                                                     \
    X(COLOR_ATTACHMENT0_EXT, 0x8CE0)                                                               \
    X(DEPTH_ATTACHMENT_EXT, 0x8D00)                                                                \
    X(FRAMEBUFFER_COMPLETE_EXT, 0x8CD5)

#define VYR_GL_CONSTANT(name, value) inline constexpr GLenum GL_##name = value;
VYR_GL_CONSTANTS(VYR_GL_CONSTANT)
#undef VYR_GL_CONSTANT
#undef VYR_GL_CONSTANTS

// Made by the layer, beside the calls of the same name that WebGL has.
#define glEnable vyr_glEnable
#define glDisable vyr_glDisable
#define glIsEnabled vyr_glIsEnabled
#define glHint vyr_glHint
#define glUseProgram vyr_glUseProgram
#define glLinkProgram vyr_glLinkProgram
#define glValidateProgram vyr_glValidateProgram
#define glShaderSource vyr_glShaderSource
#define glGetIntegerv vyr_glGetIntegerv
#define glGetShaderiv vyr_glGetShaderiv
#define glGetProgramiv vyr_glGetProgramiv
#define glTexImage2D vyr_glTexImage2D
#define glDrawElements vyr_glDrawElements
#define glDrawArrays vyr_glDrawArrays
#define glGenFramebuffersEXT glGenFramebuffers
#define glBindFramebufferEXT glBindFramebuffer
#define glDeleteFramebuffersEXT glDeleteFramebuffers
#define glFramebufferTexture2DEXT glFramebufferTexture2D
#define glCheckFramebufferStatusEXT glCheckFramebufferStatus

extern "C" {
void glEnable(GLenum capability);
void glDisable(GLenum capability);
GLboolean glIsEnabled(GLenum capability);
void glHint(GLenum target, GLenum mode); ///< a hint: nothing follows it here

// Matrices: the two stacks of the pipeline, 32 deep.
void glMatrixMode(GLenum mode);
void glLoadIdentity();
void glPushMatrix();
void glPopMatrix();
void glFrustum(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble near,
               GLdouble far);
void glOrtho(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble near,
             GLdouble far);
void glTranslatef(GLfloat x, GLfloat y, GLfloat z);
void glRotatef(GLfloat degrees, GLfloat x, GLfloat y, GLfloat z);
void glScalef(GLfloat x, GLfloat y, GLfloat z);

// Immediate mode.
void glBegin(GLenum mode);
void glEnd();
void glVertex2f(GLfloat x, GLfloat y);
void glVertex3f(GLfloat x, GLfloat y, GLfloat z);
void glTexCoord2f(GLfloat s, GLfloat t);
void glNormal3f(GLfloat x, GLfloat y, GLfloat z);
void glColor3f(GLfloat red, GLfloat green, GLfloat blue);
void glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha);

// Client arrays, of floats; positions and coordinates have 2 or 3 and 2 of them, colours 3 or 4.
void glEnableClientState(GLenum array);
void glDisableClientState(GLenum array);
void glVertexPointer(GLint size, GLenum type, GLsizei stride, const void *data);
void glColorPointer(GLint size, GLenum type, GLsizei stride, const void *data);
void glTexCoordPointer(GLint size, GLenum type, GLsizei stride, const void *data);
void glNormalPointer(GLenum type, GLsizei stride, const void *data);
void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void *indices);
void glDrawArrays(GLenum mode, GLint first, GLsizei count);

// The fixed pipeline: a texture times the colour, by coordinates or as a sphere map.
void glTexGeni(GLenum coordinate, GLenum name, GLint value);
void glTexEnvf(GLenum target, GLenum name, GLfloat value);
void glPolygonMode(GLenum face, GLenum mode);
void glLineWidth(GLfloat width);

// Programs: GLSL 1.10, of one stage or both; the fixed pipeline takes the other's place.
GLuint glCreateShader(GLenum stage);
void glShaderSource(GLuint shader, GLsizei count, const GLchar *const *texts, const GLint *lengths);
void glCompileShader(GLuint shader);
void glGetShaderiv(GLuint shader, GLenum name, GLint *value);
void glGetShaderInfoLog(GLuint shader, GLsizei size, GLsizei *length, GLchar *log);
void glDeleteShader(GLuint shader);
GLuint glCreateProgram();
void glAttachShader(GLuint program, GLuint shader);
void glLinkProgram(GLuint program);
void glValidateProgram(GLuint program); ///< nothing: validity is known when something is drawn
void glUseProgram(GLuint program);
void glDeleteProgram(GLuint program);
void glGetProgramiv(GLuint program, GLenum name, GLint *value);
void glGetProgramInfoLog(GLuint program, GLsizei size, GLsizei *length, GLchar *log);
GLint glGetUniformLocation(GLuint program, const GLchar *name);
void glUniform1i(GLint location, GLint x);
void glUniform1f(GLint location, GLfloat x);
void glUniform2f(GLint location, GLfloat x, GLfloat y);
void glUniform3f(GLint location, GLfloat x, GLfloat y, GLfloat z);
void glUniform4f(GLint location, GLfloat x, GLfloat y, GLfloat z, GLfloat w);
void glUniform1fv(GLint location, GLsizei count, const GLfloat *values);
void glUniform2fv(GLint location, GLsizei count, const GLfloat *values);
void glUniform3fv(GLint location, GLsizei count, const GLfloat *values);
void glUniform4fv(GLint location, GLsizei count, const GLfloat *values);
void glUniform1iv(GLint location, GLsizei count, const GLint *values);
void glUniform2iv(GLint location, GLsizei count, const GLint *values);
void glUniform3iv(GLint location, GLsizei count, const GLint *values);
void glUniform4iv(GLint location, GLsizei count, const GLint *values);
void glUniformMatrix2fv(GLint location, GLsizei count, GLboolean transpose, const GLfloat *values);
void glUniformMatrix3fv(GLint location, GLsizei count, GLboolean transpose, const GLfloat *values);
void glUniformMatrix4fv(GLint location, GLsizei count, GLboolean transpose, const GLfloat *values);
void glGetActiveUniform(GLuint program, GLuint index, GLsizei room, GLsizei *length, GLint *size,
                        GLenum *type, GLchar *name);
void glGetUniformfv(GLuint program, GLint location, GLfloat *values);
void glGetUniformiv(GLuint program, GLint location, GLint *values);
void glGetAttachedShaders(GLuint program, GLsizei room, GLsizei *count, GLuint *shaders);
GLboolean glIsProgram(GLuint program);

// Textures. Internal formats 1 to 4 and GL_RGBA8 of bytes, and depth without data.
void glActiveTexture(GLenum unit);
void glGenTextures(GLsizei count, GLuint *textures);
void glDeleteTextures(GLsizei count, const GLuint *textures);
void glBindTexture(GLenum target, GLuint texture);
void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void *pixels);
void glTexParameteri(GLenum target, GLenum name, GLint value);
void glTexParameterf(GLenum target, GLenum name, GLfloat value);
void glPixelStorei(GLenum name, GLint value);

// Framebuffers.
void glGenFramebuffersEXT(GLsizei count, GLuint *framebuffers);
void glBindFramebufferEXT(GLenum target, GLuint framebuffer);
void glDeleteFramebuffersEXT(GLsizei count, const GLuint *framebuffers);
void glFramebufferTexture2DEXT(GLenum target, GLenum attachment, GLenum textureTarget,
                               GLuint texture, GLint level);
GLenum glCheckFramebufferStatusEXT(GLenum target);
void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
                  void *pixels);

// State and the rest that WebGL has under the same name.
void glBlendFunc(GLenum source, GLenum destination);
void glClear(GLbitfield buffers);
void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha);
void glClearDepth(GLdouble depth);
void glClearStencil(GLint value);
void glColorMask(GLboolean red, GLboolean green, GLboolean blue, GLboolean alpha);
void glCullFace(GLenum face);
void glDepthFunc(GLenum function);
void glDepthMask(GLboolean on);
void glFinish();
void glFlush();
void glFrontFace(GLenum winding);
GLenum glGetError();
void glGetIntegerv(GLenum name, GLint *values);
const GLubyte *glGetString(GLenum name);
void glScissor(GLint x, GLint y, GLsizei width, GLsizei height);
void glViewport(GLint x, GLint y, GLsizei width, GLsizei height);
}
