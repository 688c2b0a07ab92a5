#include "tools/record/Yuv.h"

namespace record
{
namespace
{
// The weights of BT.709 (0.2126, 0.7152, 0.0722) times the range of the plane / 255, in 65536ths.
// Those of each line sum up to 219 / 255 for Y and to 0 for U and V.
const int yRed = 11966, yGreen = 40254, yBlue = 4064;
const int uRed = -6596, uGreen = -22189, uBlue = 28785;
const int vRed = 28785, vGreen = -26145, vBlue = -2640;
const int shift = 16;
const int sumShift = shift + 2; // of four pixels

void ConvertLuma(const uint8_t *rgba, uint8_t *y, int width)
{
    for (int i = 0; i < width; i++) {
        const uint8_t *p = rgba + 4 * i;
        const int sum = yRed * p[0] + yGreen * p[1] + yBlue * p[2];
        y[i] = uint8_t((sum + (16 << shift) + (1 << (shift - 1))) >> shift);
    }
}

void ConvertChroma(const uint8_t *top, const uint8_t *bottom, uint8_t *u, uint8_t *v, int width)
{
    const int middle = (128 << sumShift) + (1 << (sumShift - 1));
    for (int i = 0; i < width; i++) {
        const uint8_t *a = top + 8 * i, *b = bottom + 8 * i;
        const int red = a[0] + a[4] + b[0] + b[4];
        const int green = a[1] + a[5] + b[1] + b[5];
        const int blue = a[2] + a[6] + b[2] + b[6];
        u[i] = uint8_t((uRed * red + uGreen * green + uBlue * blue + middle) >> sumShift);
        v[i] = uint8_t((vRed * red + vGreen * green + vBlue * blue + middle) >> sumShift);
    }
}
} // namespace

void ConvertToYuv(const cPicture &picture, std::vector<uint8_t> &planes)
{
    const int width = picture.mWidth, height = picture.mHeight;
    const size_t pixels = size_t(width) * size_t(height);
    planes.resize(pixels + pixels / 2);
    uint8_t *const u = planes.data() + pixels, *const v = u + pixels / 4;
    for (int y = 0; y < height; y++)
        ConvertLuma(picture.Row(y), planes.data() + size_t(y) * size_t(width), width);
    for (int y = 0; y < height / 2; y++) {
        const size_t at = size_t(y) * size_t(width / 2);
        ConvertChroma(picture.Row(2 * y), picture.Row(2 * y + 1), u + at, v + at, width / 2);
    }
}
} // namespace record
