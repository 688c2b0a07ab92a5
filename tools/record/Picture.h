#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace record
{
struct cSize
{
    int mWidth = 1280, mHeight = 720; // pixels
};

/// Red, green, blue and alpha of each pixel, rows top first. What is recorded is opaque.
struct cPicture
{
    int mWidth = 0, mHeight = 0; // pixels
    std::vector<uint8_t> mBytes;

    cPicture() = default;
    cPicture(int width, int height)
        : mWidth(width), mHeight(height), mBytes(4 * size_t(width) * size_t(height))
    {}

    size_t RowBytes() const { return 4 * size_t(mWidth); }
    uint8_t *Row(int y) { return mBytes.data() + size_t(y) * RowBytes(); }
    const uint8_t *Row(int y) const { return mBytes.data() + size_t(y) * RowBytes(); }
};

/// `picture` at `width` by `height`: each pixel is the mean of the area that it covers. Where that
/// is less than a pixel, pixels repeat.
cPicture Shrink(const cPicture &picture, int width, int height);

/// Writes an RGB PNG to `path`; false when it can't be written whole.
bool WritePng(const std::string &path, const cPicture &picture);

/// XXH3 with 128 bits over all bytes of the picture, as 32 hexadecimal digits: what the xxh128sum
/// program prints for the raw RGBA bytes.
std::string HashPixels(const cPicture &picture);
} // namespace record
