#include "tools/record/Label.h"

#include "tools/record/Failure.h"
#include "tools/support/Files.h"

// The library comes as source, and the compiler's view of it is its authors' business.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wunused-function"
#define STBTT_STATIC
#define STB_TRUETYPE_IMPLEMENTATION
#include <stb_truetype.h>
#pragma GCC diagnostic pop

#include <cmath>

namespace record
{
namespace
{
const char *const fontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
const size_t maximumFontBytes = 16 << 20;

/// One letter's coverage, 0 to 255 a pixel.
struct cGlyph
{
    int mWidth = 0, mHeight = 0, mLeft = 0, mTop = 0;
    unsigned char *mCoverage = nullptr;

    ~cGlyph() { stbtt_FreeBitmap(mCoverage, nullptr); }
};

void Blend(uint8_t *pixel, const std::array<uint8_t, 3> &color, int coverage)
{
    for (size_t i = 0; i < 3; i++)
        pixel[i] = uint8_t((pixel[i] * (255 - coverage) + color[i] * coverage + 127) / 255);
}

void Draw(cPicture &picture, const cGlyph &glyph, int x, int y, const std::array<uint8_t, 3> &color)
{
    for (int row = 0; row < glyph.mHeight; row++)
        for (int column = 0; column < glyph.mWidth; column++) {
            const int px = x + glyph.mLeft + column, py = y + glyph.mTop + row;
            if (px < 0 || py < 0 || px >= picture.mWidth || py >= picture.mHeight)
                continue;
            Blend(picture.Row(py) + 4 * px, color, glyph.mCoverage[row * glyph.mWidth + column]);
        }
}
} // namespace

struct cLabelFont::cFont
{
    std::string mBytes;
    stbtt_fontinfo mInfo;
};

cLabelFont::cLabelFont() : mFont(std::make_unique<cFont>())
{
    std::string error;
    if (!tools::ReadWhole(fontPath, maximumFontBytes, mFont->mBytes, error))
        throw cFailure(std::string(fontPath) + ": " + error +
                       " (it comes with the package fonts-dejavu-core)");
    const auto *bytes = reinterpret_cast<const unsigned char *>(mFont->mBytes.data());
    if (!stbtt_InitFont(&mFont->mInfo, bytes, 0))
        throw cFailure(std::string(fontPath) + ": not a font that can be read");
}

cLabelFont::~cLabelFont() = default;

void cLabelFont::Write(cPicture &picture, const std::string &text, int x, int baseline,
                       float height, const std::array<uint8_t, 3> &color) const
{
    const stbtt_fontinfo *font = &mFont->mInfo;
    const float scale = stbtt_ScaleForPixelHeight(font, height);
    float position = float(x);
    for (char letter : text) {
        const float column = std::floor(position);
        cGlyph glyph;
        glyph.mCoverage = stbtt_GetCodepointBitmapSubpixel(
            font, scale, scale, position - column, 0.0f, letter, &glyph.mWidth, &glyph.mHeight,
            &glyph.mLeft, &glyph.mTop);
        Draw(picture, glyph, int(column), baseline, color);
        int advance = 0, bearing = 0;
        stbtt_GetCodepointHMetrics(font, letter, &advance, &bearing);
        position += float(advance) * scale;
    }
}
} // namespace record
