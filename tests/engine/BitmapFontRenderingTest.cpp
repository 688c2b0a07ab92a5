#include "tests/engine/BitmapFontBuilder.h"
#include "tests/support/OffscreenTest.h"
#include "tests/support/TestFiles.h"

#include <epoxy/gl.h>

#include <limits>

namespace
{
using test::cFontBuilder;
using test::cOpenFont;
using test::tPixel;
using vyr::cBitmapFont;
using vyr::cVector2;

using tBytes = std::vector<uint8_t>;

const int pageWidth = 8, pageHeight = 4;

// The page's alpha at (x, y) is 10 * (y + 1) + x; its colours must not matter.
tBytes Page(int components = 4)
{
    tBytes pixels;
    for (int y = 0; y < pageHeight; y++)
        for (int x = 0; x < pageWidth; x++) {
            for (int i = 1; i < components; i++)
                pixels.push_back(uint8_t(200 + i));
            pixels.push_back(uint8_t(10 * (y + 1) + x));
        }
    return pixels;
}

// a: 2 by 2 pixels 10 11 / 20 21, advance 3. b: 1 by 1 pixel 34, advance 2.
// Lines are 2 apart; a b after an a moves by 1. The space has no glyph; s has one, x none.
cFontBuilder Letters()
{
    cFontBuilder builder;
    builder.Common("lineHeight='2' scaleW='8' scaleH='4'")
        .Char('a', 3, "0 0 2 2")
        .Char('b', 2, "4 2 1 1")
        .Char(' ', 50)
        .Char('x', 50, "1 1 0 2")
        .Kerning('b', 'a', 1)
        .Kerning('b', 'x', 100)
        .Kerning('a', ' ', 100);
    return builder;
}

class FontRendering : public test::cOffscreenTest
{
protected:
    FontRendering() : cOffscreenTest(64, 36)
    {
        glColor4f(1, 1, 1, 1);
        test::WritePng("data/page.png", pageWidth, pageHeight, 4, Page());
    }

    cOpenFont Load(const cFontBuilder &builder, const std::string &page = "page.png")
    {
        builder.Write("f.fnt", page);
        testing::internal::CaptureStdout();
        cOpenFont font("f.fnt");
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "Font loaded successfully!\n");
        return font;
    }

    // A font of one more character: z.
    cOpenFont LoadWith(const std::string &rectangle, const std::string &more, int advance = 3)
    {
        return Load(Letters().Char('z', advance, rectangle, more));
    }

    int Render(cOpenFont &font, const std::vector<std::string> &lines, cVector2 size,
               cBitmapFont::HALIGN halign = cBitmapFont::HALIGN_LEFT)
    {
        testing::internal::CaptureStdout();
        const int id = font.RenderTextToCache(lines, vyr::cColor(1, 0, 0, 0.5f), size, halign,
                                              cBitmapFont::VALIGN_TOP);
        mPrinted = testing::internal::GetCapturedStdout();
        return id;
    }

    // The coverage in a text's texture, as rows.
    std::vector<tBytes> Coverage(int id)
    {
        const cVector2 size = mTextures.GetTexture(id).mSize;
        tBytes bytes(size_t(size.x * size.y));
        glBindTexture(GL_TEXTURE_2D, mTextures.GetTexture(id).mHandle);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_ALPHA, GL_UNSIGNED_BYTE, bytes.data());
        std::vector<tBytes> rows;
        for (auto row = bytes.begin(); row != bytes.end(); row += std::ptrdiff_t(size.x))
            rows.emplace_back(row, row + std::ptrdiff_t(size.x));
        return rows;
    }

    std::vector<tBytes> Draw(cOpenFont &font, const std::vector<std::string> &lines, cVector2 size,
                             cBitmapFont::HALIGN halign = cBitmapFont::HALIGN_LEFT)
    {
        return Coverage(Render(font, lines, size, halign));
    }

    test::cTemporaryFolder mFolder;
    std::string mPrinted;
};

using tRows = std::vector<tBytes>;

TEST_F(FontRendering, CopiesThePagesAlphaAtThePen)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Draw(font, {"aa"}, {6, 3}),
              (tRows{{10, 11, 0, 10, 11, 0}, {20, 21, 0, 20, 21, 0}, {0, 0, 0, 0, 0, 0}}));
    EXPECT_EQ(mPrinted, "");
}

TEST_F(FontRendering, MovesAGlyphByItsOffsetsAndKerning)
{
    // a at 0; b's pen 3, and 1 for the pair; a's next pen 4 + 2.
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Draw(font, {"aba"}, {8, 2}),
              (tRows{{10, 11, 0, 0, 34, 0, 10, 11}, {20, 21, 0, 0, 0, 0, 20, 21}}));
    cOpenFont other = LoadWith("0 0 1 1", "xoffset='2' yoffset='1'");
    other.mPagePixels = font.mPagePixels; // the page's record had none left
    EXPECT_EQ(Draw(other, {"z"}, {4, 2}), (tRows{{0, 0, 0, 0}, {0, 0, 10, 0}}));
}

TEST_F(FontRendering, LinesStandBelowEachOther)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(
        Draw(font, {"a", "b", "", "b"}, {3, 7}),
        (tRows{{10, 11, 0}, {20, 21, 0}, {34, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {34, 0, 0}}));
}

TEST_F(FontRendering, OverlappingGlyphsAddUpModulo256)
{
    cOpenFont font = LoadWith("0 0 1 1", "", 0);
    font.mPagePixels[3] = 100;
    EXPECT_EQ(Draw(font, {"zz"}, {2, 1}), (tRows{{200, 0}}));
    EXPECT_EQ(Draw(font, {"zzz"}, {2, 1}), (tRows{{44, 0}}));
}

TEST_F(FontRendering, LeadingSpacesAreSkipped)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Draw(font, {"   b"}, {4, 1}), (tRows{{34, 0, 0, 0}}));
    EXPECT_EQ(mPrinted, "");
    font.mChars[' '] = font.mChars['b']; // with a glyph of its own, too
    EXPECT_EQ(Draw(font, {"   b"}, {4, 1}), (tRows{{34, 0, 0, 0}}));
    EXPECT_EQ(Draw(font, {"b b"}, {6, 1}), (tRows{{34, 0, 34, 0, 34, 0}}));
}

// The test is the pen, not the place in the line: a pen back at 0 skips spaces again.
TEST_F(FontRendering, SpacesAreSkippedWheneverThePenIsAtZero)
{
    cOpenFont font = LoadWith("4 2 1 1", "", 0);
    EXPECT_EQ(Draw(font, {"z b"}, {2, 1}), (tRows{{68, 0}}));
    EXPECT_EQ(mPrinted, "");
}

TEST_F(FontRendering, ACharacterWithoutAGlyphWarnsAndMovesNothing)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Draw(font, {"a xb"}, {6, 1}), (tRows{{10, 11, 0, 0, 34, 0}}))
        << "the a is still the one before the b";
    const std::string warning = "BitmapFont: WARNING, unable to draw character from string: a xb\n";
    EXPECT_EQ(mPrinted, warning + warning);
}

TEST_F(FontRendering, WarnsWithTheWholeLineWhateverItHolds)
{
    cOpenFont font = Load(Letters());
    Render(font, {std::string("b\0\xFF", 3)}, {2, 1});
    const std::string warning =
        std::string("BitmapFont: WARNING, unable to draw character from string: b\0\xFF\n", 63);
    EXPECT_EQ(mPrinted, warning + warning);
}

TEST_F(FontRendering, AGlyphWithoutHeightAdvancesSilently)
{
    cOpenFont font = LoadWith("0 0 2 0", "", 1);
    EXPECT_EQ(Draw(font, {"zb"}, {3, 1}), (tRows{{0, 34, 0}}));
    font.mChars['z'].height = -3;
    EXPECT_EQ(Draw(font, {"zb"}, {3, 1}), (tRows{{0, 34, 0}}));
    font.mChars['z'].height = 3;
    font.mChars['z'].width = -3;
    EXPECT_EQ(Draw(font, {"zb"}, {3, 1}), (tRows{{0, 34, 0}}));
    EXPECT_EQ(mPrinted, "");
}

TEST_F(FontRendering, CentersByTheImagesWidth)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Draw(font, {"b", "a"}, {7, 4}, cBitmapFont::HALIGN_CENTER),
              (tRows{{0, 0, 34, 0, 0, 0, 0}, // (7 - 2) / 2, truncated
                     {0, 0, 0, 0, 0, 0, 0},
                     {0, 0, 10, 11, 0, 0, 0},
                     {0, 0, 20, 21, 0, 0, 0}}));
}

// Truncated toward zero: -0.5 is 0, and the pen at 0 takes what lies left of it into column 0.
TEST_F(FontRendering, CenteringTruncatesTowardZero)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Draw(font, {"b"}, {1, 1}, cBitmapFont::HALIGN_CENTER), (tRows{{34}}));
}

// The pen starts at -2. The first row has no place for that; the second one's lies in the first.
TEST_F(FontRendering, ALineTooWideToCenterLosesItsFirstPixels)
{
    cOpenFont font = LoadWith("0 0 3 2", "", 8);
    EXPECT_EQ(Draw(font, {"z"}, {4, 2}, cBitmapFont::HALIGN_CENTER),
              (tRows{{12, 0, 20, 21}, {22, 0, 0, 0}}));
}

// Measured from the height, on purpose: an image as high as wide aligns as one expects.
TEST_F(FontRendering, RightAlignmentTakesTheImagesHeight)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Draw(font, {"b"}, {8, 3}, cBitmapFont::HALIGN_RIGHT)[0],
              (tBytes{0, 34, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Draw(font, {"b"}, {5, 5}, cBitmapFont::HALIGN_RIGHT)[0], (tBytes{0, 0, 0, 34, 0}));
    EXPECT_EQ(Draw(font, {"b"}, {5, 3.9f}, cBitmapFont::HALIGN_RIGHT)[0], (tBytes{0, 34, 0, 0, 0}));
}

TEST_F(FontRendering, AnotherAlignmentGoesOnWhereTheLastLineEnded)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Draw(font, {"b", "b"}, {4, 3}, cBitmapFont::HALIGN(3)),
              (tRows{{34, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 34, 0}}));
}

TEST_F(FontRendering, WhatLiesLeftOfAPenAtZeroGoesIntoTheFirstColumn)
{
    cOpenFont font = LoadWith("0 0 3 2", "xoffset='-2'");
    EXPECT_EQ(Draw(font, {"z"}, {3, 2}), (tRows{{10 + 11 + 12, 0, 0}, {20 + 21 + 22, 0, 0}}));
}

TEST_F(FontRendering, KerningLeftOfAPenAtZeroGoesThereToo)
{
    cOpenFont font = Load(Letters().Char('z', 0, "0 0 1 1").Kerning('b', 'z', -1));
    EXPECT_EQ(Draw(font, {"zb"}, {2, 2}), (tRows{{10 + 34, 0}, {0, 0}}));
}

// Nothing is cut off by row.
TEST_F(FontRendering, WhatLeavesARowEntersItsNeighbour)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Draw(font, {"aa"}, {4, 3}),
              (tRows{{10, 11, 0, 10}, {20 + 11, 21, 0, 20}, {21, 0, 0, 0}}));
    cOpenFont left = LoadWith("0 0 2 1", "xoffset='-3' yoffset='1'");
    left.mPagePixels = font.mPagePixels;
    EXPECT_EQ(Draw(left, {"bz"}, {4, 2}), (tRows{{34, 0, 0, 10}, {11, 0, 0, 0}}));
}

TEST_F(FontRendering, IndicesWrapAt32Bits)
{
    // Row 2^22 of an image 1024 wide has index 2^32, which is 0.
    cOpenFont font = LoadWith("0 0 1 1", "yoffset='4194304' xoffset='5'");
    EXPECT_EQ(Draw(font, {"z"}, {1024, 1})[0][5], 10);
}

TEST_F(FontRendering, ReadsThePageAsDescribedWhateverItIs)
{
    // 5 pixels a row described: the second row begins with the first one's sixth pixel.
    cOpenFont font = Load(Letters().Common("scaleW='5'"));
    EXPECT_EQ(Draw(font, {"a"}, {2, 2}), (tRows{{10, 11}, {15, 16}}));
}

TEST_F(FontRendering, AGlyphOutsideThePageAddsNothing)
{
    cOpenFont font = Load(Letters());
    for (const auto &[x, y] : {std::pair{0, 4},
                               {0, -2},
                               {-40, 0},
                               {100, 100},
                               {0, 1 << 30},
                               {1 << 30, 0},
                               {-(1 << 30), -(1 << 30)}}) {
        font.mChars['a'].x = x;
        font.mChars['a'].y = y;
        EXPECT_EQ(Draw(font, {"a"}, {3, 2}), (tRows{{0, 0, 0}, {0, 0, 0}})) << x << " " << y;
    }
    font.mChars['a'].x = 0;
    font.mChars['a'].y = 3; // the lower half is outside
    EXPECT_EQ(Draw(font, {"a"}, {3, 2}), (tRows{{40, 41, 0}, {0, 0, 0}}));
    font.mChars['a'].y = -1; // the upper half
    EXPECT_EQ(Draw(font, {"a"}, {3, 2}), (tRows{{0, 0, 0}, {10, 11, 0}}));
}

TEST_F(FontRendering, APageSmallerThanDescribedIsNotReadPastItsEnd)
{
    cOpenFont font = Load(Letters().Common("scaleW='31'"));
    EXPECT_EQ(Draw(font, {"a"}, {2, 2}), (tRows{{10, 11}, {47, 0}})) << "the page's last pixel";
}

TEST_F(FontRendering, APageOfThreeComponentsIsReadAsFour)
{
    test::WritePng("data/rgb.png", 2, 1, 3, {1, 2, 3, 4, 5, 6});
    cOpenFont font = Load(Letters(), "rgb.png");
    EXPECT_EQ(Draw(font, {"a"}, {2, 2}), (tRows{{4, 0}, {0, 0}})) << "the fourth byte of six";
}

// Two columns of the glyph are left of the largest number; the others wrap around, thus count as
// the image's first at the start of a line, of a row that is far above the image.
TEST_F(FontRendering, ColumnsWrapAroundAtTheEndOfAllNumbers)
{
    cOpenFont font = Load(Letters());
    cBitmapFont::CharInfo &info = font.mChars['a'];
    info.width = 4;
    info.height = 1;
    info.xoffset = std::numeric_limits<int>::max() - 1; // 2^31 - 2
    info.yoffset = -(1 << 27) + 1;                      // of 16 pixels each: 16 - 2^31
    tRows expected(2, tBytes(16, 0));
    expected[0][14] = 10;
    expected[0][15] = 11;
    EXPECT_EQ(Draw(font, {"a"}, {16, 2}), expected);
}

// A glyph takes no more pixels than the page has: as many as these claim would take days.
TEST_F(FontRendering, NumbersOfAnySizeEndAndStayInsideTheImage)
{
    const int most = std::numeric_limits<int>::max(), least = std::numeric_limits<int>::min();
    cOpenFont font = Load(Letters());
    for (int value : {most, least, -1, 1 << 30})
        for (int cBitmapFont::CharInfo::*field :
             {&cBitmapFont::CharInfo::x, &cBitmapFont::CharInfo::y, &cBitmapFont::CharInfo::width,
              &cBitmapFont::CharInfo::height, &cBitmapFont::CharInfo::xoffset,
              &cBitmapFont::CharInfo::yoffset, &cBitmapFont::CharInfo::xadvance})
            for (int scale : {8, 1, 0, -1, most, least}) {
                cBitmapFont::CharInfo info = font.mChars['a'];
                info.width = info.height = most;
                info.*field = value;
                font.mChars['z'] = info;
                font.mScaleW = scale;
                font.mLineHeight = value;
                EXPECT_GE(Render(font, {"zzaz", "z"}, {16, 16}, cBitmapFont::HALIGN_CENTER), 0);
            }
}

TEST_F(FontRendering, AnEmptyListMakesNoTexture)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Render(font, {}, {4, 4}), -1);
    EXPECT_EQ(mTextures.CreateTexture("next", 1, 1, false, false), 1);
}

TEST_F(FontRendering, EveryCallMakesATextureOfItsOwn)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(Render(font, {"a"}, {4, 4}), 1);
    EXPECT_EQ(Render(font, {"a"}, {4, 4}), 2);
    EXPECT_EQ(mTextures.GetTexture(1).mName, "");
    EXPECT_EQ(mTextures.GetTexture(1).mPixels, nullptr);
}

TEST_F(FontRendering, TheImagesSizeIsTruncated)
{
    cOpenFont font = Load(Letters());
    const cVector2 size = mTextures.GetTexture(Render(font, {"a"}, {7.9f, 3.2f})).mSize;
    EXPECT_EQ(size.x, 7);
    EXPECT_EQ(size.y, 3);
}

TEST_F(FontRendering, ASizeThatNoTextureCanHaveIsEmpty)
{
    cOpenFont font = Load(Letters());
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    for (const cVector2 &size :
         {cVector2(0, 0), cVector2(-4, -4), cVector2(-4, 4), cVector2(4, -1), cVector2(nan, 4),
          cVector2(4, inf), cVector2(1e9f, 1e9f), cVector2(65536, 65536), cVector2(1e30f, 1)}) {
        const int id = Render(font, {"ab"}, size);
        ASSERT_GE(id, 0);
        EXPECT_EQ(mTextures.GetTexture(id).mSize.x, 0) << size.x;
        EXPECT_EQ(mTextures.GetTexture(id).mSize.y, 0) << size.y;
        mRenderer.Post_DrawSprite(id, {0, 0}, {1, 1}, 0);
    }
    EXPECT_EQ(ReadPixel(0, 0), (tPixel{0, 0, 0, 255})) << "and draws nothing";
}

TEST_F(FontRendering, AFontWithoutAPageDrawsNothing)
{
    cOpenFont first = Load(Letters());
    cOpenFont second = Load(Letters());
    EXPECT_EQ(Draw(second, {"ab"}, {3, 2}), (tRows{{0, 0, 0}, {0, 0, 0}}));
    EXPECT_EQ(mPrinted, "");
    EXPECT_EQ(Draw(first, {"b"}, {1, 1}), (tRows{{34}})) << "the first one keeps its copy";
}

TEST_F(FontRendering, TakesAnyBytes)
{
    cOpenFont font = Load(Letters());
    std::string all;
    for (int byte = 0; byte < 256; byte++)
        all += char(byte);
    EXPECT_GE(Render(font, {all, "", all + all}, {16, 16}), 0);
}

TEST_F(FontRendering, VerticalAlignmentAndColorPlayNoPart)
{
    cOpenFont font = Load(Letters());
    EXPECT_EQ(cBitmapFont::VALIGN_TOP, 0);
    EXPECT_EQ(cBitmapFont::VALIGN_CENTER, 1);
    EXPECT_EQ(cBitmapFont::VALIGN_BOTTOM, 2);
    const tRows top = Draw(font, {"a"}, {3, 6});
    for (cBitmapFont::VALIGN valign : {cBitmapFont::VALIGN_CENTER, cBitmapFont::VALIGN_BOTTOM})
        EXPECT_EQ(Coverage(font.RenderTextToCache({"a"}, vyr::cColor(0, 0, 0, 0), {3, 6},
                                                  cBitmapFont::HALIGN_LEFT, valign)),
                  top);
}

TEST_F(FontRendering, ThePixelStoreIsTheCallersOwn)
{
    cOpenFont font = Load(Letters());
    const tRows plain = Draw(font, {"ab"}, {5, 3});
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    EXPECT_EQ(Draw(font, {"ab"}, {5, 3}), plain);
    GLint alignment = 0;
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    EXPECT_EQ(alignment, 8);
}

// Pictures: a page of full coverage at column 0 and half coverage at column 1.
class TextOverAPicture : public FontRendering
{
protected:
    TextOverAPicture()
    {
        mRenderer.SetScaleFactor({16, 16}); // pixels large enough to read their middles
        cOpenFont font = LoadWith("0 0 2 1", "");
        font.mPagePixels[3] = 255;
        font.mPagePixels[7] = 128;
        mText = Render(font, {"z"}, {4, 1});
        mTextures.GetTexture(mText).UnlockSurface(); // no filtering
        mRenderer.Clear(mPicture);
        glEnable(GL_BLEND);
    }

    std::vector<tPixel> DrawText()
    {
        mRenderer.Post_DrawSprite(mText, {0, 0}, {1, 1}, 0);
        return {ReadPixel(8, 8), ReadPixel(24, 8), ReadPixel(40, 8), ReadPixel(56, 8)};
    }

    const vyr::cColor mPicture{0, 0.4f, 0.8f, 1};
    const tPixel mPicturePixel{0, 102, 204, 255};
    int mText = -1;
};

// By the blend function of every show. Where the font covers half a pixel, half of it is text.
TEST_F(TextOverAPicture, EdgesAreThoseOfTheFont)
{
    const std::vector<tPixel> pixels = DrawText();
    EXPECT_EQ(pixels[0], (tPixel{255, 255, 255, 255}));
    EXPECT_NEAR(pixels[1][0], 128, 1);
    EXPECT_NEAR(pixels[1][1], 128 + 51, 1);
    EXPECT_NEAR(pixels[1][2], 128 + 102, 1);
    EXPECT_EQ(pixels[2], mPicturePixel);
    EXPECT_EQ(pixels[3], mPicturePixel);
}

TEST_F(TextOverAPicture, CoverageOnBlackIsTheBrightnessOfWhiteText)
{
    mRenderer.Clear(vyr::cColor(0, 0, 0, 1));
    EXPECT_NEAR(DrawText()[1][0], 128, 1);
}

// Without blending the colour is the current one wherever the text's image is.
TEST_F(TextOverAPicture, ColorIsTheCurrentOneWhateverTheCoverage)
{
    glDisable(GL_BLEND);
    glColor4f(1, 0.4f, 0.2f, 1);
    const std::vector<tPixel> pixels = DrawText();
    EXPECT_EQ(pixels[0], (tPixel{255, 102, 51, 255}));
    EXPECT_EQ(pixels[1], (tPixel{255, 102, 51, 128}));
    EXPECT_EQ(pixels[2], (tPixel{255, 102, 51, 0}));
}

TEST_F(TextOverAPicture, TheCurrentColorTintsAndFades)
{
    glColor4f(1, 0, 0, 1);
    EXPECT_EQ(DrawText()[0], (tPixel{255, 0, 0, 255}));
    mRenderer.Clear(mPicture);
    glColor4f(1, 1, 1, 0.5f);
    const tPixel faded = DrawText()[0];
    EXPECT_NEAR(faded[0], 128, 1);
    EXPECT_NEAR(faded[2], 128 + 102, 1);
}
} // namespace
