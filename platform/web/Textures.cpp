#include "base/Assert.h"
#include "platform/web/Pictures.h"
#include "platform/web/WebGL.h"

#include <algorithm>
#include <vector>

namespace vyr::web
{
namespace
{
using tBytes = std::vector<unsigned char>;

/// Pixels as a caller of glTexImage2D has them.
struct cSource
{
    const unsigned char *mPixels;
    size_t mWidth, mHeight;
    GLenum mFormat;

    size_t Channels() const { return mFormat == GL_RGB ? 3 : 4; }
    size_t RowBytes() const
    {
        GLint alignment = 4;
        glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
        const size_t step = size_t(alignment);
        return (mWidth * Channels() + step - 1) / step * step;
    }
};

// One pixel of `source` as red, green, blue, alpha, of which the internal format keeps a part: 1 is
// brightness, 2 brightness and alpha, 3 colour, 4 all.
void StorePixel(const unsigned char *from, GLenum format, GLint kept, unsigned char *to)
{
    const bool isSwapped = format == GL_BGRA;
    to[0] = from[isSwapped ? 2 : 0];
    to[1] = kept < 3 ? to[0] : from[1];
    to[2] = kept < 3 ? to[0] : from[isSwapped ? 0 : 2];
    to[3] = kept % 2 == 1 || format == GL_RGB ? 255 : from[3];
}

tBytes ToRgba(const cSource &source, GLint kept)
{
    tBytes pixels(source.mWidth * source.mHeight * 4);
    const size_t rowBytes = source.RowBytes();
    unsigned char *to = pixels.data();
    for (size_t y = 0; y < source.mHeight; y++)
        for (size_t x = 0; x < source.mWidth; x++, to += 4)
            StorePixel(source.mPixels + y * rowBytes + x * source.Channels(), source.mFormat, kept,
                       to);
    return pixels;
}

// The components that an internal format keeps; 0 for one that the layer does not know.
GLint KeptComponents(GLint internalFormat)
{
    switch (GLenum(internalFormat)) {
    case GL_RGB:
        return 3;
    case GL_RGBA:
    case GL_RGBA8:
        return 4;
    default:
        return internalFormat >= 1 && internalFormat <= 4 ? internalFormat : 0;
    }
}

void UploadColor(GLint level, GLint kept, GLsizei width, GLsizei height, GLenum format,
                 const void *pixels)
{
    const auto upload = [&](const void *rgba) {
        glTexImage2D(GL_TEXTURE_2D, level, GLint(GL_RGBA), width, height, 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, rgba);
    };
    if (!pixels || (format == GL_RGBA && kept == 4)) {
        upload(pixels);
        return;
    }
    const cSource source = {static_cast<const unsigned char *>(pixels), size_t(std::max(width, 0)),
                            size_t(std::max(height, 0)), format};
    upload(ToRgba(source, kept).data());
}

void ExpectPictureIn(GLsizei width, GLsizei height)
{
    GLint bound = 0;
    UploadColor(0, 4, width, height, GL_RGBA, nullptr);
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    ExpectPicture(GLuint(bound));
}
} // namespace
} // namespace vyr::web

using namespace vyr::web;

void vyr_glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                      GLsizei height, GLint border, GLenum format, GLenum type, const void *pixels)
{
    if (format == GL_DEPTH_COMPONENT) {
        VYR_ASSERT("OpenGL", !pixels && "glTexImage2D(): Depth with data.");
        glTexImage2D(target, level, internalFormat, width, height, border, format, GL_UNSIGNED_INT,
                     nullptr);
        return;
    }
    const GLint kept = KeptComponents(internalFormat);
    VYR_ASSERT("OpenGL", kept && type == GL_UNSIGNED_BYTE &&
                             (format == GL_RGB || format == GL_RGBA || format == GL_BGRA) &&
                             "glTexImage2D(): A format that a browser does not have.");
    if (TakeUnarrived(pixels))
        ExpectPictureIn(width, height);
    else
        UploadColor(level, kept, width, height, format, pixels);
}
