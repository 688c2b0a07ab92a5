#include "tools/record/Readback.h"

#include "base/Assert.h"

#include <epoxy/gl.h>

#include <cstring>

namespace record
{
namespace
{
// What the layers leave in alpha shows on no screen.
void CopyOpaque(const uint8_t *from, uint8_t *to, size_t bytes)
{
    for (size_t i = 0; i < bytes; i += 4) {
        uint8_t pixel[4];
        std::memcpy(pixel, from + i, 4);
        pixel[3] = 255;
        std::memcpy(to + i, pixel, 4);
    }
}

void CopyUpright(const uint8_t *bottomUp, cPicture &picture)
{
    for (int y = 0; y < picture.mHeight; y++) {
        const size_t row = size_t(picture.mHeight - 1 - y);
        CopyOpaque(bottomUp + row * picture.RowBytes(), picture.Row(y), picture.RowBytes());
    }
}
} // namespace

cReadback::cReadback(int width, int height) : mWidth(width), mHeight(height)
{
    const auto bytes = GLsizeiptr(width) * GLsizeiptr(height) * 4;
    glGenBuffers(GLsizei(mBuffers.size()), mBuffers.data());
    for (unsigned int buffer : mBuffers) {
        glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
        glBufferData(GL_PIXEL_PACK_BUFFER, bytes, nullptr, GL_STREAM_READ);
    }
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
}

cReadback::~cReadback() { glDeleteBuffers(GLsizei(mBuffers.size()), mBuffers.data()); }

void cReadback::Begin()
{
    VYR_ASSERT("Readback", !IsFull() && "cReadback::Begin(): Finish() the oldest first.");
    glBindBuffer(GL_PIXEL_PACK_BUFFER, mBuffers[(mFirst + mCount) % mBuffers.size()]);
    glReadPixels(0, 0, mWidth, mHeight, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    mCount++;
}

bool cReadback::Finish(cPicture &picture)
{
    VYR_ASSERT("Readback", !IsEmpty() && "cReadback::Finish(): Begin() comes first.");
    glBindBuffer(GL_PIXEL_PACK_BUFFER, mBuffers[mFirst]);
    const void *bytes = glMapBuffer(GL_PIXEL_PACK_BUFFER, GL_READ_ONLY);
    if (bytes)
        CopyUpright(static_cast<const uint8_t *>(bytes), picture);
    const bool isIntact = bytes && glUnmapBuffer(GL_PIXEL_PACK_BUFFER);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    mFirst = (mFirst + 1) % mBuffers.size();
    mCount--;
    return isIntact;
}
} // namespace record
