// Bitmap fonts: the description from a file in memory, the page from numbers in front of it, and
// text measured, wrapped and drawn with what came out.
//
// The first four bytes are the page's width, height and components and the length of a text, which
// follows; the rest is the description.
//
// Promises: the 256 characters are there; wrapping cuts within the text; the height is a whole
// number of lines; drawing stays within the page, and the upload within what was drawn.

#include "engine/BitmapFont.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "fuzz/Fuzz.h"
#include "fuzz/MemoryFile.h"
#include "fuzz/MemoryOpenGL.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

struct cPage
{
    int mWidth = 0, mHeight = 0, mComponents = 0; // without components there is no page
};
cPage page;

/// A font with a look inside.
class cFont : public vyr::cBitmapFont
{
public:
    using cBitmapFont::cBitmapFont;

    void ExpectWhole() const
    {
        for (int code = 0; code < 256; code++)
            FUZZ_EXPECT(mChars.count(code) == 1);
        const size_t pagePixels = size_t(page.mWidth) * size_t(page.mHeight);
        FUZZ_EXPECT(mPagePixels.empty() ||
                    mPagePixels.size() == pagePixels * size_t(page.mComponents));
    }
};

void Measure(cFont &font, const std::string &text)
{
    font.GetStringWidth(text);
    FUZZ_EXPECT(font.GetStringWidth("") == 0);
    FUZZ_EXPECT(font.GetStringHeight("", 100) == font.GetPixelSize());
    FUZZ_EXPECT(font.GetPixelSize() == 0 ||
                font.GetStringHeight(text, 100) % font.GetPixelSize() == 0 ||
                std::abs(int64_t(font.GetPixelSize())) > INT32_MAX / 64); // products wrap around
}

std::vector<std::string> Wrap(cFont &font, std::string text, vyr::cBitmapFont::MODE mode)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const size_t length = font.Wrap(text, 100, mode);
        FUZZ_EXPECT(length <= text.size());
        const size_t cut = std::max<size_t>(length, 1); // not even the first fits
        lines.push_back(text.substr(0, cut));
        text.erase(0, cut);
    }
    return lines;
}

void Draw(cFont &font, const std::vector<std::string> &lines, int halign)
{
    const int id =
        font.RenderTextToCache(lines, {1, 1, 1, 1}, {64, 48}, vyr::cBitmapFont::HALIGN(halign),
                               vyr::cBitmapFont::VALIGN_TOP);
    FUZZ_EXPECT((id == -1) == lines.empty());
}

void Use(const std::string &path, const std::string &text)
{
    cFont font(path);
    font.ExpectWhole();
    FUZZ_EXPECT(font.GetFilename() == path);
    Measure(font, text);
    Draw(font, Wrap(font, text, vyr::cBitmapFont::WRAP_WORD), vyr::cBitmapFont::HALIGN_LEFT);
    Draw(font, Wrap(font, text, vyr::cBitmapFont::WRAP_CHAR), vyr::cBitmapFont::HALIGN_RIGHT);
    Draw(font, {text, text}, vyr::cBitmapFont::HALIGN_CENTER);
    font.ExpectWhole();
}

bool Prepare()
{
    fuzz::UseMemoryOpenGL();
    return std::freopen("/dev/null", "w", stdout) != nullptr; // fonts say how loading went
}
} // namespace

// The linker sends the texture manager's call here.
extern "C" unsigned char *__wrap_stbi_load(const char *path, int *width, int *height,
                                           int *components, int)
{
    FUZZ_EXPECT(std::strncmp(path, "data/", 5) == 0);
    if (page.mComponents == 0 || page.mWidth == 0 || page.mHeight == 0)
        return nullptr;
    *width = page.mWidth;
    *height = page.mHeight;
    *components = page.mComponents;
    const size_t bytes = size_t(page.mWidth) * size_t(page.mHeight) * size_t(page.mComponents);
    auto *pixels = static_cast<unsigned char *>(std::malloc(bytes));
    std::memset(pixels, 0x5A, bytes);
    return pixels;
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool isPrepared = Prepare();
    static fuzz::cMemoryFile file;
    if (!isPrepared || size < 4)
        return 0;
    const size_t textLength = std::min<size_t>(data[3] % 64, size - 4);
    page = {data[0], data[1], data[2] % 5};
    file.Write(data + 4 + textLength, size - 4 - textLength);
    TexturesHolder::CreateSingleton();
    Use(file.Path(), std::string(reinterpret_cast<const char *>(data) + 4, textLength));
    TexturesHolder::DestroySingleton();
    return 0;
}
