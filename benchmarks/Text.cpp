// Text and the scan-line effect, each beside the least that the same result takes. Runs in the
// folder of a show: bench-text SHOW [benchmark options]
//
//   text rendered   40 lines of 60 characters; the same glyph bytes copied bare
//   text measured   a line of 60 characters
//   scan lines      Post_SignalDistort at 720 rows; the same quads drawn bare

#include "engine/BitmapFont.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "platform/Window.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <cstring>

#include <unistd.h>

namespace
{
using RendererHolder = vyr::tSingleton<vyr::cRenderer>;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

const int lineCount = 40, lineLength = 60;
const int width = 1280, height = 1600; // pixels of the text image

vyr::cBitmapFont &Font()
{
    static vyr::cBitmapFont font("data/font/waiting.fnt");
    return font;
}

std::string Line()
{
    std::string line;
    for (int i = 0; i < lineLength; i++)
        line.push_back(char('a' + i % 26));
    return line;
}

void TextRendered(benchmark::State &state)
{
    const std::vector<std::string> lines(lineCount, Line());
    for ([[maybe_unused]] auto page : state) {
        const int text =
            Font().RenderTextToCache(lines, vyr::cColor(1, 1, 1, 1), {float(width), float(height)},
                                     vyr::cBitmapFont::HALIGN_LEFT, vyr::cBitmapFont::VALIGN_TOP);
        const GLuint name = TexturesHolder::GetSingleton().GetTexture(text).mHandle;
        glDeleteTextures(1, &name);
    }
}

// As many rows of as many bytes as 2400 glyphs of the font's usual size have, and the upload.
void GlyphBytesCopied(benchmark::State &state)
{
    const int glyphWidth = 18, glyphHeight = 24;
    std::vector<unsigned char> page(512 * 256), image(size_t(width * height) * 4);
    for ([[maybe_unused]] auto frame : state) {
        std::fill(image.begin(), image.end(), 0);
        for (int glyph = 0; glyph < lineCount * lineLength; glyph++)
            for (int row = 0; row < glyphHeight; row++)
                for (int x = 0; x < glyphWidth; x++)
                    image[size_t((glyph / lineLength * 40 + row) * width + glyph % lineLength * 20 +
                                 x) *
                          4] = page[size_t(row * 512 + x)];
        GLuint texture = 0;
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexImage2D(GL_TEXTURE_2D, 0, 1, width, height, 0, GL_BGRA, GL_UNSIGNED_BYTE,
                     image.data());
        glDeleteTextures(1, &texture);
    }
}

void LineMeasured(benchmark::State &state)
{
    const std::string line = Line();
    for ([[maybe_unused]] auto frame : state)
        benchmark::DoNotOptimize(Font().GetStringWidth(line));
}

int Picture()
{
    static const int picture = TexturesHolder::GetSingleton().LoadTexture("data/tex9.png", false);
    return picture;
}

void ScanLines(benchmark::State &state)
{
    for ([[maybe_unused]] auto frame : state) {
        RendererHolder::GetSingleton().Post_SignalDistort(Picture(), {0.8f, 0.0f}, 40.0f);
        glFinish();
    }
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

void BareQuads(benchmark::State &state)
{
    TexturesHolder::GetSingleton().BindTexture(Picture());
    vyr::cRenderer &renderer = RendererHolder::GetSingleton();
    renderer.SetOrtho(true);
    glEnable(GL_SCISSOR_TEST);
    for ([[maybe_unused]] auto frame : state) {
        for (int y = 0; y < 720; y++) {
            glScissor(0, y, 1280, 1);
            DrawBareQuad(float(y % 7) * 0.1f);
        }
        glFinish();
    }
    glDisable(GL_SCISSOR_TEST);
    renderer.SetOrtho(false);
}

BENCHMARK(TextRendered)->Unit(benchmark::kMicrosecond);
BENCHMARK(GlyphBytesCopied)->Unit(benchmark::kMicrosecond);
BENCHMARK(LineMeasured);
BENCHMARK(ScanLines)->Unit(benchmark::kMillisecond);
BENCHMARK(BareQuads)->Unit(benchmark::kMillisecond);
} // namespace

int main(int count, char **arguments)
{
    if (count < 2 || chdir(arguments[1]) != 0) {
        std::fprintf(stderr, "bench-text: needs the folder of a show\n");
        return 2;
    }
    benchmark::Initialize(&count, arguments);
    platform::UseWindowSystem(platform::OffscreenWindowSystem());
    RendererHolder::CreateSingleton();
    RendererHolder::GetSingleton().Init(1280, 720, false);
    TexturesHolder::CreateSingleton();
    Font();
    benchmark::RunSpecifiedBenchmarks();
    TexturesHolder::DestroySingleton();
    RendererHolder::GetSingleton().Shutdown();
    RendererHolder::DestroySingleton();
}
