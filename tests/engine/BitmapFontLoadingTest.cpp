#include "tests/engine/BitmapFontBuilder.h"
#include "tests/support/OffscreenTest.h"
#include "tests/support/TestFiles.h"

#include <epoxy/gl.h>

namespace
{
using test::cFontBuilder;
using test::cOpenFont;
using test::WriteFile;
using test::WritePng;
using vyr::cBitmapFont;

const char *loaded = "Font loaded successfully!\n";
const char *notFound = "ERROR: Font not found!\n";

class FontLoading : public test::cOffscreenTest
{
protected:
    FontLoading() : cOffscreenTest(64, 36) { WritePng("data/page.png", 2, 1, 4, mPagePixels); }

    // The font at `path`, and what was printed meanwhile.
    cOpenFont Load(const std::string &path)
    {
        testing::internal::CaptureStdout();
        cOpenFont font(path);
        mPrinted = testing::internal::GetCapturedStdout();
        return font;
    }

    cOpenFont LoadText(const std::string &xml)
    {
        WriteFile("f.fnt", xml);
        return Load("f.fnt");
    }

    test::cTemporaryFolder mFolder;
    const std::vector<uint8_t> mPagePixels = {1, 2, 3, 4, 5, 6, 7, 8};
    std::string mPrinted;
};

void ExpectEmpty(const cOpenFont &font)
{
    EXPECT_EQ(font.mChars.size(), 256u);
    EXPECT_EQ(font.mChars.begin()->first, 0);
    for (const auto &[code, info] : font.mChars) {
        EXPECT_EQ(info.id, 0) << code;
        EXPECT_TRUE(info.kerning.empty()) << code;
    }
    EXPECT_TRUE(font.mPagePixels.empty());
    EXPECT_EQ(font.mPageFile, "");
    EXPECT_EQ(font.mScaleW, 0);
    EXPECT_EQ(font.mScaleH, 0);
    EXPECT_EQ(font.mLineHeight, 0);
    EXPECT_EQ(font.mBase, 0);
    EXPECT_EQ(font.mCount, 0);
}

TEST_F(FontLoading, AMissingDescriptionLeavesAFontWithoutGlyphs)
{
    const cOpenFont font = Load("nowhere/no.fnt");
    EXPECT_EQ(mPrinted, notFound);
    EXPECT_EQ(font.GetFilename(), "nowhere/no.fnt");
    EXPECT_EQ(font.GetPixelSize(), 0);
    ExpectEmpty(font);
}

std::string Repeat(const std::string &text, int count)
{
    std::string all;
    for (int i = 0; i < count; i++)
        all += text;
    return all;
}

TEST_F(FontLoading, WhatIsNoXmlIsNotFound)
{
    const std::string broken[] = {"",
                                  "   \n",
                                  "just text",
                                  "<?xml version=\"1.0\"?>",
                                  "<?xml version=\"1.0\"?><!-- no element -->",
                                  "<font>",
                                  "<font><common lineHeight=\"3\"",
                                  "<font><common lineHeight=></font>",
                                  "<font></fount>",
                                  "\xEF\xBB\xBF",
                                  "\xEF\xBB",
                                  "<\xEF",
                                  "<font>&#x",
                                  std::string("\xFF\xFE<\0f\0o\0n\0t\0/\0>\0", 16),
                                  std::string("<font a=\"\0\"><b/></font>", 23),
                                  std::string("<?xml\0 ?><font/>", 16)};
    for (const std::string &xml : broken) {
        const cOpenFont font = LoadText(xml);
        EXPECT_EQ(mPrinted, notFound) << xml;
        ExpectEmpty(font);
    }
}

// The XML reader recurses with the nesting and searches attributes one by one: such files end
// there.
TEST_F(FontLoading, WhatTheXmlReaderCouldNotSurviveIsNotFound)
{
    std::string attributes;
    for (int i = 0; i < 300000; i++)
        attributes += " a" + std::to_string(i) + "=\"1\"";
    const std::string comments = Repeat("<!-- </a> -->", 100);
    for (const std::string &xml :
         {Repeat("<a>", 1000000), Repeat("</x>", 1000) + Repeat("<a>", 65),
          Repeat("<a>", 65) + Repeat("</a>", 65), "<font" + attributes + "/>",
          "<font><common" + attributes + "/></font>",
          comments + Repeat("<a b='/>'>" + comments, 1000), std::string(17 << 20, ' ')}) {
        ExpectEmpty(LoadText(xml));
        EXPECT_EQ(mPrinted, notFound) << xml.substr(0, 100);
    }
}

TEST_F(FontLoading, NestingWithinReasonIsRead)
{
    const cOpenFont font =
        LoadText(Repeat("<a>", 64) + "<b/><common lineHeight='3'/><!-- <c><c> -->" +
                 "<![CDATA[<d><d>]]>" + Repeat("</a>", 64));
    EXPECT_EQ(font.GetPixelSize(), 3);
}

TEST_F(FontLoading, AttributesWithinReasonAreRead)
{
    const auto element = [](int count) {
        std::string attributes;
        for (int i = 1; i < count; i++)
            attributes += " a" + std::to_string(i) + "='1'";
        return "<f><common lineHeight='3'" + attributes + "/></f>";
    };
    EXPECT_EQ(LoadText(element(256)).GetPixelSize(), 3);
    EXPECT_EQ(LoadText(element(257)).GetPixelSize(), 0);
}

TEST_F(FontLoading, KerningWithoutItsCodesIsOfCodeZero)
{
    cOpenFont font = LoadText("<f><kerning amount='5'/></f>");
    EXPECT_EQ(font.mChars.at(0).kerning[0], 5);
}

TEST_F(FontLoading, ElementsBesideEachOtherAreNoNesting)
{
    const cOpenFont font =
        LoadText("<f>" + Repeat("<a></a><b/>", 5000) + "<common lineHeight='3'></common></f>");
    EXPECT_EQ(font.GetPixelSize(), 3);
}

// It would step over the end of the file with the character, and read on behind it.
TEST_F(FontLoading, CharacterCutShortAtTheEndIsNotFound)
{
    const std::string whole = "<f><common lineHeight='3'/></f>";
    for (const char *end : {"\xD1", "\xE2\x82", "\xF0\x9F\xA6", "\xF0\r\n\r\n"}) {
        ExpectEmpty(LoadText(whole + end));
        EXPECT_EQ(mPrinted, notFound) << end;
    }
    EXPECT_EQ(LoadText(whole + "<!-- \xF0\x9F\xA6\x86 -->").GetPixelSize(), 3);
    for (const char *end : {"\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\xA6\x86"})
        EXPECT_EQ(LoadText(whole + end).GetPixelSize(), 3) << end;
}

TEST_F(FontLoading, AFolderIsNoDescription)
{
    ExpectEmpty(Load("data"));
    EXPECT_EQ(mPrinted, notFound);
}

TEST_F(FontLoading, AnEmptyRootEndsSilentlyAndWithoutAPage)
{
    for (const char *xml :
         {"<font/>", "<font></font>", "<?xml version=\"1.0\"?><!-- c --><font/>"}) {
        ExpectEmpty(LoadText(xml));
        EXPECT_EQ(mPrinted, "");
    }
    EXPECT_EQ(mTextures.LoadTexture("data/page.png", false), 0) << "no texture was made before";
}

TEST_F(FontLoading, APageThatCannotBeReadLeavesTheCharacters)
{
    cFontBuilder().Common("lineHeight='20'").Char('a', 7).Write("f.fnt", "sub/none.png");
    const cOpenFont font = Load("f.fnt");
    EXPECT_EQ(mPrinted, "Error: Could not load bitmap font 'data/sub/none.png'\n");
    EXPECT_EQ(font.mChars.at('a').xadvance, 7);
    EXPECT_EQ(font.GetPixelSize(), 20);
    EXPECT_TRUE(font.mPagePixels.empty());
}

TEST_F(FontLoading, ADescriptionWithoutAPageAsksForTheFolder)
{
    const cOpenFont font = LoadText("<font>words</font>");
    EXPECT_EQ(mPrinted, "Error: Could not load bitmap font 'data/'\n");
}

// As a generator writes it: information that is not read, two pages, counts that are wrong.
const char *generated = R"(<?xml version="1.0"?>
<font>
  <info face="Example Sans" size="-32" bold="1" italic="0" charset="" unicode="1" stretchH="100"
        smooth="1" aa="1" padding="1,2,3,4" spacing="2,2" outline="0"/>
  <common lineHeight="40" base="31" scaleW="512" scaleH="256" pages="2" packed="0"
          alphaChnl="1" redChnl="0" greenChnl="0" blueChnl="0"/>
  <pages>
    <page id="0" file="first.png" />
    <page id="1" file="page.png" />
  </pages>
  <chars count="99">
    <char id="32" x="3" y="4" width="1" height="0" xoffset="0" yoffset="31" xadvance="9" page="0" chnl="15" />
    <char id="65" x="447" y="71" width="25" height="24" xoffset="-2" yoffset="7" xadvance="21" page="1" chnl="15" />
    <char id="228" x="10" y="11" width="12" height="13" xoffset="14" yoffset="-15" xadvance="16" page="0" chnl="15" />
  </chars>
  <kernings count="1">
    <kerning first="65" second="32" amount="-1" />
    <kerning first="65" second="84" amount="-3" />
    <kerning first="300" second="65" amount="2" />
  </kernings>
</font>
)";

TEST_F(FontLoading, ReadsWhatGeneratorsWrite)
{
    const cOpenFont font = LoadText(generated);
    EXPECT_EQ(mPrinted, loaded);
    EXPECT_EQ(font.mScaleW, 512);
    EXPECT_EQ(font.mScaleH, 256);
    EXPECT_EQ(font.GetPixelSize(), 40);
    EXPECT_EQ(font.mBase, 31);
    EXPECT_EQ(font.mCount, 99);
    EXPECT_EQ(font.mPageFile, "page.png") << "the last of several pages";
    EXPECT_EQ(font.mChars.size(), 257u) << "0 to 255, and 300 from a kerning";

    const cBitmapFont::CharInfo &a = font.mChars.at(65);
    EXPECT_EQ(a.id, 65);
    EXPECT_EQ(a.x, 447);
    EXPECT_EQ(a.y, 71);
    EXPECT_EQ(a.width, 25);
    EXPECT_EQ(a.height, 24);
    EXPECT_EQ(a.xoffset, -2);
    EXPECT_EQ(a.yoffset, 7);
    EXPECT_EQ(a.xadvance, 21);
    EXPECT_EQ(a.kerning, (std::map<int, int>{{32, -1}, {84, -3}}));
    EXPECT_EQ(font.mChars.at(300).kerning, (std::map<int, int>{{65, 2}}));
    EXPECT_EQ(font.mChars.at(300).id, 0);
    EXPECT_EQ(font.mChars.at(66).id, 0);
}

TEST_F(FontLoading, KnowsElementsByNameWhereverTheyStand)
{
    const cOpenFont font = LoadText("<x>text<common scaleW='1'/><y><z><common scaleH='2'>"
                                    "<char id='65' x='3'><kerning first='1' second='2' amount='4'/>"
                                    "</char></common></z><page file='page.png'/></y>"
                                    "<Char id='66' x='9'/><chars count='5'/></x>");
    EXPECT_EQ(mPrinted, loaded);
    EXPECT_EQ(font.mScaleW, 1);
    EXPECT_EQ(font.mScaleH, 2);
    EXPECT_EQ(font.mChars.at(65).x, 3);
    EXPECT_EQ(font.mChars.at(1).kerning.at(2), 4);
    EXPECT_EQ(font.mCount, 5);
    EXPECT_EQ(font.mChars.at(66).x, 0) << "names are case-sensitive";
}

// The root is not itself read, even with a known name.
TEST_F(FontLoading, DoesNotReadTheRoot)
{
    const cOpenFont font = LoadText("<common scaleW='1' lineHeight='2'><a/></common>");
    EXPECT_EQ(font.mScaleW, 0);
    EXPECT_EQ(font.GetPixelSize(), 0);
}

TEST_F(FontLoading, AttributesBelongToTheirElements)
{
    const cOpenFont font = LoadText("<f><page scaleW='1'/><common file='x' count='2' base='z9'/>"
                                    "<chars base='3' lineHeight='4'/><char id='65' file='y'/></f>");
    EXPECT_EQ(font.mScaleW, 0);
    EXPECT_EQ(font.mPageFile, "");
    EXPECT_EQ(font.mCount, 0);
    EXPECT_EQ(font.mBase, 0) << "no number counts as 0";
    EXPECT_EQ(font.GetPixelSize(), 0);
}

TEST_F(FontLoading, ACharacterDefinedTwiceKeepsWhatIsNotGivenAgain)
{
    const cOpenFont font = LoadText("<f><char id='65' x='1' y='2'/><char id='65' y='3'/></f>");
    EXPECT_EQ(font.mChars.at(65).x, 1);
    EXPECT_EQ(font.mChars.at(65).y, 3);
}

// Generators write the id first, and first and second before the amount: only that order is read.
TEST_F(FontLoading, WhatStandsBeforeItsIdGoesNowhere)
{
    const cOpenFont font = LoadText("<f><char id='64' x='5'/><char x='7' id='65' y='8'/>"
                                    "<kerning first='65' amount='9' second='66'/></f>");
    EXPECT_EQ(font.mChars.at(64).x, 5);
    EXPECT_EQ(font.mChars.at(65).x, 0);
    EXPECT_EQ(font.mChars.at(65).y, 8);
    EXPECT_EQ(font.mChars.at(65).kerning, (std::map<int, int>{{0, 9}}));
    EXPECT_EQ(font.mChars.at(0).x, 0);
}

TEST_F(FontLoading, NumbersOfAnySizeAreTaken)
{
    const cOpenFont font = LoadText("<f><common lineHeight='-7' base='99999999999999999999'/>"
                                    "<char id='-2147483648' x='2147483647'/></f>");
    EXPECT_EQ(font.GetPixelSize(), -7);
    EXPECT_EQ(font.mChars.at(-2147483647 - 1).x, 2147483647);
}

// Text bytes above 127 ask for negative codes.
TEST_F(FontLoading, ACodeAbove127IsStoredUnderItself)
{
    cOpenFont font = LoadText("<f><char id='228' xadvance='9'/><char id='-29' xadvance='4'/></f>");
    EXPECT_EQ(font.mChars.at(228).xadvance, 9);
    EXPECT_EQ(font.GetStringWidth("\xE4"), 0);
    EXPECT_EQ(font.GetStringWidth("\xE3"), 4);
}

TEST_F(FontLoading, LooksForThePageUnderDataWhereverTheDescriptionLies)
{
    WritePng("else/data/page.png", 1, 1, 4, {9, 9, 9, 9});
    cFontBuilder().Write("else/f.fnt", "page.png");
    EXPECT_EQ(Load("else/f.fnt").mPagePixels, mPagePixels);
    EXPECT_EQ(mPrinted, loaded);
}

TEST_F(FontLoading, KeepsThePixelsOfAnyKindOfPage)
{
    WritePng("data/grey.png", 3, 2, 1, {1, 2, 3, 4, 5, 6});
    cFontBuilder().Write("f.fnt", "grey.png");
    EXPECT_EQ(Load("f.fnt").mPagePixels, (std::vector<uint8_t>{1, 2, 3, 4, 5, 6}));
}

TEST_F(FontLoading, ThePagesRecordStaysWithoutItsPixels)
{
    cFontBuilder().Write("f.fnt", "page.png");
    const cOpenFont font = Load("f.fnt");
    EXPECT_EQ(font.mPagePixels, mPagePixels);
    EXPECT_EQ(mTextures.LoadTexture("data/page.png", true), 0);
    EXPECT_EQ(mTextures.GetTexture(0).mPixels, nullptr);
    EXPECT_EQ(mTextures.GetTexture(0).mComponents, 0);
}

TEST_F(FontLoading, ASecondFontOnTheSamePageHasNone)
{
    cFontBuilder().Write("f.fnt", "page.png");
    cFontBuilder().Write("g.fnt", "page.png");
    const cOpenFont first = Load("f.fnt"), second = Load("g.fnt");
    EXPECT_EQ(mPrinted, loaded);
    EXPECT_EQ(first.mPagePixels, mPagePixels);
    EXPECT_TRUE(second.mPagePixels.empty());
    EXPECT_EQ(mTextures.CreateTexture("next", 1, 1, false, false), 1) << "one record for both";
}

// Which is why fonts come first: the page's id is used as the name of an OpenGL texture.
TEST_F(FontLoading, DeletesTheOpenGLTextureNamedAsThePagesId)
{
    for (int id = 0; id < 3; id++)
        ASSERT_EQ(mTextures.GetTexture(MakeTexture(1, 1, test::tPixel{9, 9, 9, 9})).mHandle,
                  GLuint(id + 1));
    cFontBuilder().Write("f.fnt", "page.png");
    const cOpenFont font = Load("f.fnt");
    ASSERT_EQ(mTextures.LoadTexture("data/page.png", false), 3);
    EXPECT_TRUE(glIsTexture(1));
    EXPECT_TRUE(glIsTexture(2));
    EXPECT_FALSE(glIsTexture(3)) << "of the picture before";
    EXPECT_TRUE(glIsTexture(4)) << "of the page itself";
}

TEST_F(FontLoading, TheFirstTextureOfAllHarmsNoOther)
{
    cFontBuilder().Write("f.fnt", "page.png");
    const cOpenFont font = Load("f.fnt");
    const int picture = MakeTexture(1, 1, test::tPixel{255, 255, 255, 255});
    EXPECT_TRUE(glIsTexture(mTextures.GetTexture(0).mHandle));
    EXPECT_TRUE(glIsTexture(mTextures.GetTexture(picture).mHandle));
}

TEST_F(FontLoading, LeavesNoFileOpen)
{
    cFontBuilder().Write("f.fnt", "page.png");
    Load("f.fnt");
    const int before = test::CountOpenFiles();
    for (const char *path : {"f.fnt", "none.fnt", "data"})
        Load(path);
    EXPECT_EQ(test::CountOpenFiles(), before);
}

TEST(FontLoadingDeathTest, NeedsTheTextureManager)
{
    const test::cTemporaryFolder folder;
    WriteFile("f.fnt", "<f><a/></f>");
    EXPECT_DEATH(cBitmapFont("f.fnt"), "Singleton not initialised!");
}

TEST(FontLoadingWithoutAPage, NeedsNoTextureManager)
{
    const test::cTemporaryFolder folder;
    WriteFile("f.fnt", "<f/>");
    EXPECT_EQ(cBitmapFont("f.fnt").GetFilename(), "f.fnt");
    EXPECT_EQ(cBitmapFont("none.fnt").GetStringWidth("text"), 0);
}
} // namespace
