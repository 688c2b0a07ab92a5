#include "tests/engine/BitmapFontBuilder.h"
#include "tests/support/TestFiles.h"

#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
using vyr::cBitmapFont;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

// Advances: a 10, b 7, n 9, space 4, newline 5, m -5; lines are 20 apart.
// After an a, a b moves by -2; after a b, an a moves by 3.
// The page is missing, so no OpenGL context is needed.
class FontMeasuring : public testing::Test
{
protected:
    FontMeasuring()
    {
        TexturesHolder::CreateSingleton();
        test::cFontBuilder()
            .Common("lineHeight='20'")
            .Char('a', 10)
            .Char('b', 7)
            .Char('n', 9)
            .Char(' ', 4)
            .Char('\n', 5)
            .Char('\\', 100)
            .Char('m', -5)
            .Char(228, 99)
            .Char(-28, 11)
            .Char(-1, 6)
            .Kerning('b', 'a', -2)
            .Kerning('a', 'b', 3)
            .Kerning('b', -1, 50)
            .Kerning('b', -28, 1)
            .Write("f.fnt", "none.png");
        testing::internal::CaptureStdout();
        mFont = std::make_unique<test::cOpenFont>("f.fnt");
        testing::internal::GetCapturedStdout();
    }

    ~FontMeasuring() override { TexturesHolder::DestroySingleton(); }

    test::cTemporaryFolder mFolder;
    std::unique_ptr<test::cOpenFont> mFont;
};

TEST_F(FontMeasuring, WidthIsAdvancesAndKerning)
{
    const struct
    {
        const char *text;
        int width;
    } table[] = {
        {"", 0},      {"a", 10},   {"ab", 15},  // 10 - 2 + 7
        {"ba", 20},                             // 7 + 3 + 10
        {"aab", 25},  {"aba", 28}, {"a b", 21}, // no pair with the space
        {"?", 0},                               // not described
        {"a?b", 17},                            // and it stands between
        {"a\nb", 22},                           // a newline is measured as any character
        {"m", -5},    {"mm", -10},
    };
    for (const auto &[text, width] : table)
        EXPECT_EQ(mFont->GetStringWidth(text), width) << text;
}

// Pairs stand under the later character. Written the other way round they are never found.
TEST_F(FontMeasuring, KerningIsLookedUpUnderTheLaterCharacter)
{
    mFont->mChars['x'].kerning['y'] = 1000; // x after y
    EXPECT_EQ(mFont->GetStringWidth("xy"), 0);
    EXPECT_EQ(mFont->GetStringWidth("yx"), 1000);
}

TEST_F(FontMeasuring, BytesAbove127AskForNegativeCodes)
{
    EXPECT_EQ(mFont->GetStringWidth("\xE4"), 11);
    EXPECT_EQ(mFont->GetStringWidth("\xE4"
                                    "b"),
              11 + 1 + 7);
}

// The code of byte 255 is the mark of no character before.
TEST_F(FontMeasuring, Byte255LeavesNoCharacterBehindIt)
{
    EXPECT_EQ(mFont->GetStringWidth("\xFF"), 6);
    EXPECT_EQ(mFont->GetStringWidth("\xFF"
                                    "b"),
              6 + 7);
    EXPECT_EQ(mFont->GetStringWidth("a\xFF"
                                    "b"),
              10 + 6 + 7);
}

TEST_F(FontMeasuring, ZeroBytesAreMeasuredToo)
{
    mFont->mChars[0].xadvance = 3;
    EXPECT_EQ(mFont->GetStringWidth(std::string("a\0b", 3)), 20);
}

TEST_F(FontMeasuring, EveryCodeAskedForIsRemembered)
{
    EXPECT_EQ(mFont->mChars.count(-100), 0u);
    mFont->GetStringWidth("\x9C"
                          "aa");
    ASSERT_EQ(mFont->mChars.count(-100), 1u);
    EXPECT_EQ(mFont->mChars.at(-100).width, 0);
    EXPECT_TRUE(mFont->mChars.at(-100).kerning.empty()) << "the first character has none before it";
    EXPECT_EQ(mFont->mChars.at('a').kerning, (std::map<int, int>{{-100, 0}, {'a', 0}, {'b', 3}}));
}

TEST_F(FontMeasuring, SumsWrapAround)
{
    mFont->mChars['x'].xadvance = 2147483647;
    EXPECT_EQ(mFont->GetStringWidth("xx"), -2);
    mFont->mLineHeight = 2147483647;
    EXPECT_EQ(mFont->GetStringHeight("\n\n", 10), 2147483645);
}

TEST_F(FontMeasuring, HeightCountsTheLinesOfAWrappedText)
{
    const struct
    {
        const char *text;
        unsigned int width;
        int lines;
    } table[] = {
        {"", 0, 1},
        {"a", 10, 1},
        {"ab\n", 100, 2}, // the newline opens a line
        {"\n", 100, 2},
        {"\n\n", 100, 3},
        {"a\nb", 100, 2},
        {"aa", 20, 1},     // exactly as wide
        {"aaa", 20, 2},    // the last overflows: a line more
        {"aaaa", 20, 2},   // the third is used up, the fourth alone on its line
        {"aaaaaa", 20, 3}, // 2, one used up, 2, one used up
        {"aa", 0, 3},      // each ends a line
        {"aa bb", 24, 2},  // 10 20 24 | b used up, 7
        {"m", 1000, 2},    // a negative width is larger than any
        {"aaaa", 4000000000u, 1},
    };
    for (const auto &[text, width, lines] : table)
        EXPECT_EQ(mFont->GetStringHeight(text, width), 20 * lines) << text << " " << width;
}

// The character that ended a line still counts as the one before the next.
TEST_F(FontMeasuring, KerningReachesAcrossALineEnd)
{
    // 10, 20 ends; b 7 - 2 = 5, a 5 + 13 = 18: fits into 19. Without the -2 it would not.
    EXPECT_EQ(mFont->GetStringHeight("aaba", 19), 40);
    // newline; b with no pair: 7, a 20: does not fit into 19
    EXPECT_EQ(mFont->GetStringHeight("\nba", 19), 60);
}

TEST_F(FontMeasuring, WrapFindsTheEndOfTheFirstLine)
{
    const struct
    {
        const char *text;
        unsigned int width;
        size_t word, character;
    } table[] = {
        {"", 0, 0, 0},
        {"aaaa", 40, 4, 4},     // fits exactly
        {"aaaa", 25, 2, 2},     // no space: as by character
        {"aa bb", 30, 2, 3},    // 10 20 24 | 31
        {"aa bb aa", 40, 5, 5}, // 38, the space 42 is itself too much
        {"a a a a", 30, 3, 4},  // 10 14 24 28 | 38
        {"aa a", 20, 2, 2},     // the space itself does not fit
        {" aaa", 12, 0, 1},
        {"a", 9, 0, 0},
        {"ab", 15, 2, 2}, // 10 - 2 + 7
        {"ab", 14, 1, 1},
        {"ab\nab", 100, 3, 3}, // the newline belongs to the line
        {"\n", 0, 1, 1},
        {"aaa\n", 20, 2, 2},
        {"m", 1000, 0, 0}, // negative is too much
        {"aaaa", 4000000000u, 4, 4},
    };
    for (const auto &[text, width, word, character] : table) {
        EXPECT_EQ(mFont->Wrap(text, width, cBitmapFont::WRAP_WORD), word) << text << " " << width;
        EXPECT_EQ(mFont->Wrap(text, width, cBitmapFont::WRAP_CHAR), character) << text;
        EXPECT_EQ(mFont->Wrap(text, width, cBitmapFont::MODE(7)), character) << text;
    }
}

TEST_F(FontMeasuring, ABackslashAndAnNBreakTheLine)
{
    EXPECT_EQ(mFont->Wrap("a\\nb", 1000, cBitmapFont::WRAP_WORD), 3u);
    EXPECT_EQ(mFont->Wrap("an", 1000, cBitmapFont::WRAP_WORD), 2u) << "an n alone does not";
}

// The escape is never over: whoever writes a backslash means line breaks.
TEST_F(FontMeasuring, AfterABackslashEveryNBreaksTheLine)
{
    EXPECT_EQ(mFont->Wrap("a\\b annb", 1000, cBitmapFont::WRAP_WORD), 6u);
    EXPECT_EQ(mFont->Wrap("a\\\\b an", 1000, cBitmapFont::WRAP_CHAR), 7u);
}

TEST_F(FontMeasuring, ABackslashHasNoWidthAndStandsBetweenNoPair)
{
    EXPECT_EQ(mFont->Wrap("\\\\\\a", 10, cBitmapFont::WRAP_CHAR), 4u);
    EXPECT_EQ(mFont->Wrap("a\\b", 15, cBitmapFont::WRAP_CHAR), 3u);
    EXPECT_EQ(mFont->Wrap("a\\b", 14, cBitmapFont::WRAP_CHAR), 2u);
}

TEST_F(FontMeasuring, ATextIsCutLineByLine)
{
    std::string rest = "aa bb aa ba";
    std::vector<std::string> lines;
    while (!rest.empty()) {
        const size_t end = mFont->Wrap(rest, 38, cBitmapFont::WRAP_WORD);
        lines.push_back(rest.substr(0, end));
        rest.erase(0, end);
    }
    // 10 20 24 31 38 | 4 14 24 28 35 then 48: the rest begins with the space it was cut at
    EXPECT_EQ(lines, (std::vector<std::string>{"aa bb", " aa", " ba"}));
}
} // namespace
