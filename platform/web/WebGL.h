#pragma once

/// For the layer's own sources: WebGL's calls under their plain names, beside those that the layer
/// makes, which have the prefix vyr_ here.

#include <epoxy/gl.h>

#undef glEnable
#undef glDisable
#undef glIsEnabled
#undef glHint
#undef glUseProgram
#undef glLinkProgram
#undef glValidateProgram
#undef glShaderSource
#undef glGetIntegerv
#undef glGetShaderiv
#undef glGetProgramiv
#undef glTexImage2D
#undef glDrawElements
#undef glDrawArrays

inline constexpr GLenum GL_ARRAY_BUFFER = 0x8892, GL_ELEMENT_ARRAY_BUFFER = 0x8893,
                        GL_STREAM_DRAW = 0x88E0, GL_STATIC_DRAW = 0x88E4;

extern "C" {
void glEnable(GLenum capability);
void glDisable(GLenum capability);
GLboolean glIsEnabled(GLenum capability);
void glUseProgram(GLuint program);
void glLinkProgram(GLuint program);
void glShaderSource(GLuint shader, GLsizei count, const GLchar *const *texts, const GLint *lengths);
void glGetIntegerv(GLenum name, GLint *values);
void glGetShaderiv(GLuint shader, GLenum name, GLint *value);
void glGetProgramiv(GLuint program, GLenum name, GLint *value);
void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void *pixels);
void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void *indices);
void glDrawArrays(GLenum mode, GLint first, GLsizei count);
void glGenBuffers(GLsizei count, GLuint *buffers);
void glBindBuffer(GLenum target, GLuint buffer);
void glBufferData(GLenum target, std::ptrdiff_t size, const void *data, GLenum usage);
void glGenVertexArrays(GLsizei count, GLuint *arrays);
void glBindVertexArray(GLuint array);
void glEnableVertexAttribArray(GLuint attribute);
void glVertexAttribPointer(GLuint attribute, GLint size, GLenum type, GLboolean isNormalized,
                           GLsizei stride, const void *offset);
void glClearDepthf(GLclampf depth);
}
