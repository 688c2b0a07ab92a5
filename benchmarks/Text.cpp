// Text, font and scan lines, each beside the least that the same result takes.
//
//   bench-text SHOW     prints rows of the table

#include "benchmarks/Report.h"
#include "benchmarks/Timing.h"
#include "engine/BitmapFont.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "platform/Window.h"

#include <epoxy/gl.h>
#include <stb_image.h>
#include <tinyxml.h>

#include <cstring>

#include <unistd.h>

namespace
{
using RendererHolder = vyr::tSingleton<vyr::cRenderer>;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

const int lineCount = 40, lineLength = 60;
const int width = 1280, height = 1600; // pixels of the text image
const int pairCount = 15, repetitions = 8;
const char description[] = "data/font/waiting.fnt", page[] = "data/font/waiting.png";

// Lets the bare side copy the very same glyphs.
class cOpenFont : public vyr::cBitmapFont
{
public:
    using cBitmapFont::cBitmapFont;
    const CharInfo &GetGlyph(char character) { return mChars[character]; }
    int GetKerning(char character, char before) { return mChars[character].kerning[before]; }
    const unsigned char *GetPage() const { return mPagePixels.data(); }
    int GetPageWidth() const { return mScaleW; }
};

std::string Line()
{
    std::string line;
    for (int i = 0; i < lineLength; i++)
        line.push_back(char('a' + i % 26));
    return line;
}

template <typename Work>
double MicrosecondsOf(Work work)
{
    return 1e6 / repetitions * bench::ProcessorSeconds([&] {
               for (int i = 0; i < repetitions; i++)
                   work();
           });
}

void RenderText(cOpenFont &font)
{
    const std::vector<std::string> lines(lineCount, Line());
    const int text =
        font.RenderTextToCache(lines, vyr::cColor(1, 1, 1, 1), {float(width), float(height)},
                               vyr::cBitmapFont::HALIGN_LEFT, vyr::cBitmapFont::VALIGN_TOP);
    const GLuint name = TexturesHolder::GetSingleton().GetTexture(text).mHandle;
    glDeleteTextures(1, &name);
}

// A glyph in the page and its place in the image, found beforehand.
struct cCopy
{
    size_t mFrom, mTo;
    int mWidth, mHeight;
};

std::vector<cCopy> PlaceGlyphs(cOpenFont &font)
{
    std::vector<cCopy> copies;
    const std::string line = Line();
    for (int i = 0; i < lineCount; i++) {
        int pen = 0;
        for (size_t k = 0; k < line.size(); k++) {
            const auto &glyph = font.GetGlyph(line[k]);
            pen += k > 0 ? font.GetKerning(line[k], line[k - 1]) : 0;
            const int y = i * font.GetPixelSize() + glyph.yoffset;
            copies.push_back({size_t(glyph.y * font.GetPageWidth() + glyph.x),
                              size_t(y * width + pen + glyph.xoffset), glyph.width, glyph.height});
            pen += glyph.xadvance;
        }
    }
    return copies;
}

void UploadBare(const std::vector<unsigned char> &pixels)
{
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, width, height, 0, GL_ALPHA, GL_UNSIGNED_BYTE,
                 pixels.data());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glDeleteTextures(1, &texture);
}

void CopyGlyphsBare(const cOpenFont &font, const std::vector<cCopy> &copies)
{
    std::vector<unsigned char> image(size_t(width * height));
    for (const cCopy &copy : copies)
        for (int row = 0; row < copy.mHeight; row++)
            for (int x = 0; x < copy.mWidth; x++)
                image[copy.mTo + size_t(row * width + x)] =
                    font.GetPage()[4 * (copy.mFrom + size_t(row * font.GetPageWidth() + x)) + 3];
    UploadBare(image);
}

void CompareText(cOpenFont &font)
{
    const std::vector<cCopy> copies = PlaceGlyphs(font);
    RenderText(font); // characters that are asked for are remembered
    const auto ours = [&] { return MicrosecondsOf([&] { RenderText(font); }); };
    const auto bare = [&] { return MicrosecondsOf([&] { CopyGlyphsBare(font, copies); }); };
    bench::PrintRow({"text of 2400 glyphs rendered", "same glyph bytes copied bare", "us", "<=1.5"},
                    bench::MeasurePairs(pairCount, ours, bare));
}

void LoadFont()
{
    TexturesHolder::DestroySingleton(); // or the page would be known already
    TexturesHolder::CreateSingleton();
    const cOpenFont font(description);
}

// The description parsed, and the page decoded, uploaded and copied.
void LoadFilesBare()
{
    TiXmlDocument document;
    document.LoadFile(description);
    int pageWidth = 0, pageHeight = 0, components = 0;
    unsigned char *pixels = stbi_load(page, &pageWidth, &pageHeight, &components, 0);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, components, pageWidth, pageHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 pixels);
    const std::vector<unsigned char> copy(pixels, pixels + pageWidth * pageHeight * components);
    stbi_image_free(pixels);
    glDeleteTextures(1, &texture);
}

void CompareFont()
{
    const auto ours = [] { return MicrosecondsOf(LoadFont); };
    const auto bare = [] { return MicrosecondsOf(LoadFilesBare); };
    bench::PrintRow({"font loaded", "its files parsed, decoded, uploaded bare", "us", "<=1.5"},
                    bench::MeasurePairs(pairCount, ours, bare));
}

int Picture()
{
    static const int picture = TexturesHolder::GetSingleton().LoadTexture("data/tex9.png", false);
    return picture;
}

void DrawBareQuad(float shift)
{
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0);
    glVertex2f(shift, 720);
    glTexCoord2f(1, 0);
    glVertex2f(shift + 1280, 720);
    glTexCoord2f(1, 1);
    glVertex2f(shift + 1280, 0);
    glTexCoord2f(0, 1);
    glVertex2f(shift, 0);
    glEnd();
}

void DrawScanLinesBare()
{
    TexturesHolder::GetSingleton().BindTexture(Picture());
    vyr::cRenderer &renderer = RendererHolder::GetSingleton();
    renderer.SetOrtho(true);
    glEnable(GL_SCISSOR_TEST);
    for (int y = 0; y < 720; y++) {
        glScissor(0, y, 1280, 1);
        DrawBareQuad(float(y % 7) * 0.1f);
    }
    glDisable(GL_SCISSOR_TEST);
    renderer.SetOrtho(false);
    glFinish();
}

void CompareScanLines()
{
    const auto ours = [] {
        return MicrosecondsOf([] {
            RendererHolder::GetSingleton().Post_SignalDistort(Picture(), {0.8f, 0.0f}, 40.0f);
            glFinish();
        });
    };
    const auto bare = [] { return MicrosecondsOf(DrawScanLinesBare); };
    bench::PrintRow({"signal distortion drawn", "its quads drawn bare", "us"},
                    bench::MeasurePairs(pairCount, ours, bare));
}
} // namespace

int main(int count, char **arguments)
{
    if (count < 2 || chdir(arguments[1]) != 0) {
        std::fprintf(stderr, "bench-text: needs the folder of a show\n");
        return 2;
    }
    vyr::platform::UseWindowSystem(vyr::platform::OffscreenWindowSystem());
    RendererHolder::CreateSingleton();
    RendererHolder::GetSingleton().Init(1280, 720, false);
    TexturesHolder::CreateSingleton();
    cOpenFont font(description);
    CompareText(font);
    CompareFont();
    CompareScanLines();
    TexturesHolder::DestroySingleton();
    RendererHolder::GetSingleton().Shutdown();
    RendererHolder::DestroySingleton();
}
