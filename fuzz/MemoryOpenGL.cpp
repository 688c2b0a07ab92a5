#include "fuzz/MemoryOpenGL.h"

#include <epoxy/gl.h>

#include <cstring>

namespace
{
int unpackAlignment = 4, savedAlignment = 4;
GLuint lastName = 0;
std::vector<unsigned char> lastUpload;

int ChannelsOf(GLenum format) { return format == GL_ALPHA ? 1 : format == GL_RGB ? 3 : 4; }

void GenTextures(GLsizei, GLuint *names) { *names = ++lastName; }
void DeleteTextures(GLsizei, const GLuint *) {}
void BindTexture(GLenum, GLuint) {}
void TexParameteri(GLenum, GLenum, GLint) {}
void TexParameterf(GLenum, GLenum, GLfloat) {}
void PixelStorei(GLenum what, GLint value)
{
    if (what == GL_UNPACK_ALIGNMENT)
        unpackAlignment = value;
}

void PushClientAttrib(GLbitfield) { savedAlignment = unpackAlignment; }
void PopClientAttrib() { unpackAlignment = savedAlignment; }

void GetIntegerv(GLenum what, GLint *value)
{
    *value = what == GL_MAX_TEXTURE_SIZE ? 4096 : unpackAlignment;
}

void TexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum format, GLenum,
                const void *pixels)
{
    if (!pixels || width == 0 || height == 0)
        return;
    const size_t row = size_t(width) * size_t(ChannelsOf(format)), unit = size_t(unpackAlignment);
    const size_t step = (row + unit - 1) / unit * unit;
    lastUpload.resize(step * size_t(height - 1) + row);
    std::memcpy(lastUpload.data(), pixels, lastUpload.size());
}
} // namespace

void fuzz::UseMemoryOpenGL()
{
    epoxy_glGenTextures = GenTextures;
    epoxy_glDeleteTextures = DeleteTextures;
    epoxy_glBindTexture = BindTexture;
    epoxy_glTexParameteri = TexParameteri;
    epoxy_glTexParameterf = TexParameterf;
    epoxy_glPixelStorei = PixelStorei;
    epoxy_glPushClientAttrib = PushClientAttrib;
    epoxy_glPopClientAttrib = PopClientAttrib;
    epoxy_glGetIntegerv = GetIntegerv;
    epoxy_glTexImage2D = TexImage2D;
}

const std::vector<unsigned char> &fuzz::LastUpload() { return lastUpload; }
