// Text, wrapped and drawn from a bitmap font.
//
// See: a story beside a turning clock, a paragraph aligned left and a heading in the middle of its
// image, tinted by the current colour. The clock shows through around the letters.
// Change: the words, the width of the paragraph, WRAP_WORD to WRAP_CHAR, the colours.
//
// A text becomes a texture once, and that texture is drawn as a sprite every frame: each call of
// RenderTextToCache makes a new texture, and nothing frees the old one. data/font/waiting.fnt
// describes the font; docs/formats.md describes how to make your own.

#include "engine/BitmapFont.h"
#include "examples/Example.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <memory>

namespace
{
using vyr::cBitmapFont;
using vyr::cVector2;

const char *story = "Three ducks wait for the bus number seventeen. The sign says seven minutes; "
                    "it has said so since noon.\nTovak counts the paving stones. Vemby hums. "
                    "Skarnold holds his ticket the way you hold a hand.";
const unsigned int paragraphWidth = 560; // pixels

int heading, paragraph, dial;

std::vector<std::string> SplitIntoLines(cBitmapFont &font, std::string text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        size_t end = font.Wrap(text, paragraphWidth, cBitmapFont::WRAP_WORD);
        end = std::max(end, size_t(1)); // not even one letter fits: go on all the same
        std::string line = text.substr(0, end);
        std::erase(line, '\n'); // it ends the line and has no glyph
        lines.push_back(line);
        text.erase(0, end); // begins with the space it was cut at; left-aligned lines skip it
    }
    return lines;
}

void Load()
{
    // Fonts before all other textures: see the constructor's description for what happens else.
    cBitmapFont font("data/font/waiting.fnt");
    const auto lines = SplitIntoLines(font, story);
    const float height = float(font.GetPixelSize()) * float(lines.size());
    paragraph = font.RenderTextToCache(lines, vyr::cColor(1, 1, 1, 1), {paragraphWidth, height},
                                       cBitmapFont::HALIGN_LEFT, cBitmapFont::VALIGN_TOP);
    heading = font.RenderTextToCache({"waiting"}, vyr::cColor(1, 1, 1, 1), {paragraphWidth, 40},
                                     cBitmapFont::HALIGN_CENTER, cBitmapFont::VALIGN_TOP);
    dial = LoadPicture("data/tex9.png");
}

void Draw(double seconds)
{
    glColor4f(1, 1, 1, 0.5f);
    Renderer().Post_DrawSprite(dial, {384, 104}, {1.5f, 1.5f}, float(10 * seconds));
    glColor4f(1, 0.7f, 0.28f, 1);
    Renderer().Post_DrawSprite(heading, {360, 90}, {2, 2}, 0);
    glColor4f(0.96f, 0.91f, 0.82f, 1);
    Renderer().Post_DrawSprite(paragraph, {360, 230}, {1, 1}, 0);
}
} // namespace

const cExample kExample = {"Text from a bitmap font", Load, Draw, WindowSeconds};
