#include "base/Truncate.h"
#include "engine/BitmapFont.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstdio>

namespace vyr
{
/// The picture that text is drawn into: a byte of coverage a pixel, top row first.
struct cBitmapFont::cImage
{
    int mWidth, mHeight;
    std::vector<unsigned char> mCoverage;

    void AddRow(const unsigned char *pixels, int64_t count, int x, int y, bool isAtStart);
    void AddPixels(const unsigned char *pixels, int64_t count, int x, int y, bool isAtStart);
};

namespace
{
// Marks that no character came before. It is also the code of byte 255, so there is no kerning
// after that byte.
const int noCharacter = -1;

int CodeOf(char byte) { return static_cast<signed char>(byte); }

// Descriptions hold any numbers: sums and products wrap around.
int Add(int a, int b) { return int(static_cast<unsigned int>(a) + static_cast<unsigned int>(b)); }

int Multiply(int a, int b)
{
    return int(static_cast<unsigned int>(a) * static_cast<unsigned int>(b));
}

// A negative width is a very large one: it never fits.
bool Exceeds(int width, unsigned int maximum) { return static_cast<unsigned int>(width) > maximum; }

int Kerning(cBitmapFont::CharInfo &character, int previous)
{
    // contract: under the later character, not under the one before it
    return previous == noCharacter ? 0 : character.kerning[previous];
}

int Advance(cBitmapFont::CharInfo &character, int previous)
{
    return Add(Kerning(character, previous), character.xadvance);
}
} // namespace

// `count` pixels of the page, four bytes each, alpha last, from (x, y) on. At the start of a line
// pixels left of the image go into its first column.
void cBitmapFont::cImage::AddRow(const unsigned char *pixels, int64_t count, int x, int y,
                                 bool isAtStart)
{
    const int64_t start = int64_t(y) * mWidth + x;
    const bool isInside = start >= 0 && start + count <= int64_t(mCoverage.size());
    const bool isLeft =
        isAtStart && (x < 0 || x > INT_MAX - count); // or becomes so, wrapped around
    if (!isInside || isLeft) {
        AddPixels(pixels, count, x, y, isAtStart);
        return;
    }
    unsigned char *__restrict coverage = &mCoverage[size_t(start)]; // no part of the page
    for (int64_t i = 0; i < count; i++)
        coverage[i] = static_cast<unsigned char>(coverage[i] + pixels[4 * i + 3]);
}

// The same pixel by pixel, for what is not wholly inside: numbers wrap around, the rest is left
// out.
void cBitmapFont::cImage::AddPixels(const unsigned char *pixels, int64_t count, int x, int y,
                                    bool isAtStart)
{
    for (int64_t i = 0; i < count; i++) {
        const int at = Add(x, int(i));
        const int index = Add(Multiply(y, mWidth), at < 0 && isAtStart ? 0 : at);
        if (index >= 0 && size_t(index) < mCoverage.size())
            mCoverage[size_t(index)] += pixels[4 * i + 3];
    }
}

// The font's characters while it measures or draws: each is looked up among all others once.
class cBitmapFont::cCharacters
{
public:
    explicit cCharacters(std::map<int, CharInfo> &characters) : mCharacters(characters) {}

    // Remembered in the font when it is not described.
    CharInfo &operator[](int code)
    {
        CharInfo *&known = mKnown[static_cast<unsigned char>(code)];
        if (!known)
            known = &mCharacters[code];
        return *known;
    }

private:
    std::map<int, CharInfo> &mCharacters;
    std::array<CharInfo *, 256> mKnown{}; // by the text's byte
};

int cBitmapFont::MeasureLine(const std::string &line, cCharacters &characters)
{
    int width = 0, previous = noCharacter;
    for (char byte : line) {
        const int code = CodeOf(byte);
        width = Add(width, Advance(characters[code], previous));
        previous = code;
    }
    return width;
}

int cBitmapFont::GetStringWidth(const std::string &text)
{
    cCharacters characters(mChars);
    return MeasureLine(text, characters);
}

int cBitmapFont::GetStringHeight(const std::string &text, unsigned int maximumWidth)
{
    int lines = 1, width = 0, previous = noCharacter;
    for (char byte : text) {
        const int code = CodeOf(byte);
        bool hasEnded = byte == '\n';
        if (!hasEnded) {
            width = Add(width, Advance(mChars[code], previous));
            hasEnded = Exceeds(width, maximumWidth);
        }
        if (hasEnded) { // the character is used up, also where it was too wide
            lines = Add(lines, 1);
            width = 0;
        }
        previous = code;
    }
    return Multiply(lines, mLineHeight);
}

size_t cBitmapFont::Wrap(const std::string &text, unsigned int maximumWidth, MODE mode)
{
    size_t lastSpace = std::string::npos;
    int width = 0, previous = noCharacter;
    bool isEscaped = false; // contract: never reset, so every later n ends the line
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] == '\\') {
            isEscaped = true;
            continue;
        }
        if (text[i] == ' ' && mode == WRAP_WORD)
            lastSpace = i;
        if (text[i] == '\n' || (isEscaped && text[i] == 'n'))
            return i + 1;
        const int code = CodeOf(text[i]);
        width = Add(width, Advance(mChars[code], previous));
        if (Exceeds(width, maximumWidth))
            return lastSpace != std::string::npos ? lastSpace : i;
        previous = code;
    }
    return text.size();
}

namespace
{
void Warn(const std::string &line)
{
    const std::string text =
        "BitmapFont: WARNING, unable to draw character from string: " + line + "\n";
    std::fwrite(text.data(), 1, text.size(), stdout); // the line may hold any byte, zero too
    std::fflush(stdout);
}

/// First and last page row that a glyph is copied from; none when the first is the larger.
struct cRows
{
    int64_t mFirst, mLast;
};

int64_t DivideDown(int64_t a, int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

// The rows r for which low <= scale * r <= high, of those from `all`.
cRows RowsBetween(int64_t scale, int64_t low, int64_t high, const cRows &all)
{
    if (scale < 0)
        return RowsBetween(-scale, -high, -low, all);
    if (scale == 0)
        return low <= 0 && high >= 0 ? all : cRows{1, 0};
    return {std::max(all.mFirst, -DivideDown(-low, scale)),
            std::min(all.mLast, DivideDown(high, scale))};
}

bool CanBeTexture(int width, int height)
{
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    return width >= 0 && height >= 0 && width <= largest && height <= largest;
}

// The manager gives the texture one component, which OpenGL takes for brightness: such a text would
// be opaque everywhere, black around its letters. As alpha, which is one component too, the
// coverage is counted once by the usual blend function, and the colour is the current one. The
// manager would read four bytes a pixel, so it gets none: the coverage goes up by itself, rows
// closely packed whatever the caller has set.
int UploadCoverage(const std::vector<unsigned char> &coverage, int width, int height)
{
    auto &textures = tSingleton<cTextureManager>::GetSingleton();
    const int texture = textures.CreateTexture(nullptr, 0, 0, 1); // no storage to be thrown away
    textures.GetTexture(texture).mSize = {float(width), float(height)};
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    for (const int unused : {GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS})
        glPixelStorei(GLenum(unused), 0);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, width, height, 0, GL_ALPHA, GL_UNSIGNED_BYTE,
                 coverage.data());
    glPopClientAttrib();
    return texture;
}
} // namespace

int cBitmapFont::RenderTextToCache(const std::vector<std::string> &lines, const cColor &,
                                   const cVector2 &size, HALIGN halign, VALIGN)
{
    if (lines.empty())
        return -1;
    cImage image = {TruncateToInt(double(size.x)), TruncateToInt(double(size.y)), {}};
    if (!CanBeTexture(image.mWidth, image.mHeight))
        image.mWidth = image.mHeight = 0;
    image.mCoverage.resize(size_t(image.mWidth) * size_t(image.mHeight));

    cCharacters characters(mChars);
    int lineTop = 0, pen = 0;
    for (const std::string &line : lines) {
        pen = StartOfLine(MeasureLine(line, characters), size, halign, pen);
        pen = RenderLine(line, pen, lineTop, characters, image);
        lineTop = Add(lineTop, mLineHeight);
    }
    return UploadCoverage(image.mCoverage, image.mWidth, image.mHeight);
}

// contract: right alignment measures from the image's height; layouts for square images rely on it.
int cBitmapFont::StartOfLine(int lineWidth, const cVector2 &size, HALIGN halign, int pen)
{
    const float width = float(lineWidth);
    if (halign == HALIGN_LEFT)
        return 0;
    if (halign == HALIGN_CENTER)
        return TruncateToInt(double(size.x - width) * 0.5);
    if (halign == HALIGN_RIGHT)
        return TruncateToInt(double(size.y - width));
    return pen;
}

// The pen after the line.
int cBitmapFont::RenderLine(const std::string &line, int pen, int lineTop, cCharacters &characters,
                            cImage &image)
{
    int previous = noCharacter;
    for (char byte : line) {
        if (pen == 0 && byte == ' ')
            continue;
        const int code = CodeOf(byte);
        CharInfo &character = characters[code];
        const int base = Add(pen, Kerning(character, previous));
        if (character.width == 0) {
            Warn(line);
            continue;
        }
        RenderGlyph(character, pen, base, lineTop, image);
        pen = Add(base, character.xadvance);
        previous = code;
    }
    return pen;
}

// Coverage adds up where glyphs overlap, and wraps at 256. A pixel goes by its index in the image
// alone: one that leaves its row at the side lands in the next row.
//
// The page is read as rows of mScaleW pixels of four bytes, alpha last, whatever it is; bytes
// outside it count as 0, so only the rows and columns that meet it are visited. A glyph takes no
// more pixels than the page has: a description that claims more is broken, and would take hours.
void cBitmapFont::RenderGlyph(const CharInfo &character, int pen, int base, int lineTop,
                              cImage &image) const
{
    const int64_t pagePixels = int64_t(mPagePixels.size() / 4);
    if (pagePixels == 0 || character.width < 0)
        return;
    const int64_t left = character.x, right = left + character.width; // right: after the last
    const int64_t top = character.y;
    const cRows rows =
        RowsBetween(mScaleW, 1 - right, pagePixels - 1 - left, {top, top + character.height - 1});
    int64_t remaining = pagePixels;
    for (int64_t r = rows.mFirst; r <= rows.mLast && remaining > 0; r++) {
        const int64_t rowStart = r * mScaleW;
        const int64_t first = std::max(left, -rowStart);
        const int64_t end = std::min({right, pagePixels - rowStart, first + remaining});
        const int y = Add(Add(lineTop, character.yoffset), int(r - top));
        const int x = Add(Add(base, character.xoffset), int(first - left));
        image.AddRow(&mPagePixels[size_t(4 * (rowStart + first))], end - first, x, y, pen == 0);
        remaining -= end - first;
    }
}
} // namespace vyr
