#include "tests/support/TestFiles.h"
#include "tools/support/Files.h"
#include "tools/support/Lyrics.h"
#include "tools/support/Nearest.h"
#include "tools/support/TrackFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
size_t CountFiles(const fs::path &folder)
{
    return size_t(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

std::vector<std::string> Lines(const tools::tFaults &faults)
{
    std::vector<std::string> lines;
    for (const tools::cFault &fault : faults)
        lines.push_back(fault.ToLine());
    return lines;
}
} // namespace

TEST(Nearest, TheFewestEditsWin)
{
    EXPECT_EQ(tools::Nearest("photo.tovka04", {"photo.tovak05", "photo.tovak04", "lyric.4"}),
              "photo.tovak04");
    EXPECT_EQ(tools::Nearest("xyz", {"tunnel:pos", "flare:x"}), ""); // nothing alike
    EXPECT_EQ(tools::Nearest("x", {}), "");
}

TEST(Files, OutputsAppearWholeInNewFolders)
{
    const test::cTemporaryFolder folder;
    std::string error;
    ASSERT_TRUE(tools::ReplaceFiles({{"a/b/one", "1"}, {"a/two", "22"}}, error)) << error;
    EXPECT_EQ(test::ReadFile("a/b/one"), "1");
    EXPECT_EQ(test::ReadFile("a/two"), "22");
    EXPECT_EQ(CountFiles("a/b"), 1u); // and nothing beside them
}

// The second one can't be written, so the first one must not change either.
TEST(Files, WhenOneOutputFailsAllStayAsTheyWere)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("one", "old");
    fs::create_directory("two");
    test::WriteFile("three", "a file where a folder is needed");
    std::string error;
    EXPECT_FALSE(tools::ReplaceFiles({{"one", "new"}, {"two", "new"}}, error));
    EXPECT_THAT(error, HasSubstr("two: "));
    EXPECT_FALSE(tools::ReplaceFiles({{"one", "new"}, {"three/x", "new"}}, error));
    EXPECT_THAT(error, HasSubstr("three/x: "));
    EXPECT_EQ(test::ReadFile("one"), "old");
    EXPECT_EQ(CountFiles("."), 3u);
}

TEST(Files, WhatIsNoRegularFileIsNotRead)
{
    const test::cTemporaryFolder folder;
    std::string bytes, error;
    EXPECT_FALSE(tools::ReadWhole(".", 10, bytes, error));
    EXPECT_EQ(error, "not a regular file");
    EXPECT_FALSE(tools::ReadWhole("missing", 10, bytes, error));
    EXPECT_EQ(error, "No such file or directory");
    test::WriteFile("large", "12345678901");
    EXPECT_FALSE(tools::ReadWhole("large", 10, bytes, error));
    EXPECT_EQ(error, "larger than the limit of 10 bytes");
}

TEST(TrackFolder, NamesAreThoseOfTheFilesSorted)
{
    const test::cTemporaryFolder folder;
    for (const char *name : {"sync_b.track", "sync_a:x.track", "sync.track", "b.track", "sync_c"})
        test::WriteFile(name, std::string(8, '\0'));
    fs::create_directory("sync_d.track");
    EXPECT_THAT(tools::cTrackFolder("").Names(), ElementsAre("a:x", "b"));
    EXPECT_THAT(tools::cTrackFolder("missing").Names(), ElementsAre());
}

// The player reads such files without a word.
TEST(TrackFolder, WhatIsWrongWithAFileIsNamed)
{
    const std::string header("\2\0\0\0\0\0\0\0", 8), key0("\0\0\0\0\0\0\x80\x3F\0", 9),
        key5("\5\0\0\0\0\0\x80\x3F\0", 9), keyNan("\6\0\0\0\0\0\xC0\x7F\4", 9);
    const test::cTemporaryFolder folder;
    const std::pair<std::string, std::string> cases[] = {
        {header + key0,
         "sync_a.track: end: expected 26 bytes for 2 keys, found 17 bytes: truncated"},
        {header + key0 + key5 + "x",
         "sync_a.track: end: expected 26 bytes for 2 keys, found 27 bytes: extra bytes"},
        {"abc", "sync_a.track: header: expected 8 bytes of key count, found 3 bytes"},
        {std::string("\xFF\xFF\xFF\xFF\0\0\0\0", 8),
         "sync_a.track: header: expected a number of keys, found -1"},
        {std::string("\xFF\xFF\xFF\x7F\0\0\0\0", 8),
         "sync_a.track: header: expected at most 8000000 keys, found 2147483647"},
        {header + key5 + key0,
         "sync_a.track: key 1 (row 0): expected rows in ascending order, found "
         "it behind row 5"},
        {header + key5 + key5,
         "sync_a.track: key 1 (row 5): expected one key a row, found a second "
         "one"}};
    for (const auto &[bytes, fault] : cases) {
        test::WriteFile("sync_a.track", bytes);
        tools::tFaults faults;
        EXPECT_FALSE(tools::cTrackFolder("").Load("a", faults).mIsLegal);
        EXPECT_THAT(Lines(faults), ElementsAre(fault));
    }
    test::WriteFile("sync_a.track", header + key0 + keyNan);
    tools::tFaults faults;
    tools::cTrackFolder("").Load("a", faults);
    EXPECT_THAT(Lines(faults),
                ElementsAre("sync_a.track: key 1 (row 6): expected an interpolation type from 0 to "
                            "3, found 4",
                            "sync_a.track: key 1 (row 6): expected a finite value, found nan"));
}

// The player leaves a file with a negative count open; a folder of them must not use up all files.
TEST(TrackFolder, NoFileStaysOpen)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("sync_a.track", std::string("\xFF\xFF\xFF\xFF\0\0\0\0", 8));
    const int before = test::CountOpenFiles();
    tools::tFaults faults;
    tools::cTrackFolder("").Load("a", faults);
    EXPECT_EQ(test::CountOpenFiles(), before);
}

TEST(Lyrics, SpansAreWhereTheImageIsOpaqueEnough)
{
    // Lyric 3 from row 0, none from 32, lyric 4 from 64; it fades in over rows 64 to 72.
    sync_key numbers[] = {{0, 3, 0}, {32, -1, 0}, {64, 4, 0}};
    sync_key fades[] = {{0, 1, 0}, {64, 0, 1}, {72, 1, 1}, {80, 0, 0}};
    char name[] = "x";
    const sync_track number = {name, numbers, 3}, fade = {name, fades, 4};
    const auto spans = tools::FindLyricSpans(number, fade, 0.5f, 3624.0);
    ASSERT_EQ(spans.size(), 2u);
    EXPECT_EQ(spans[0].mLyric, 3);
    EXPECT_EQ(spans[0].mFrom, 0.0);
    EXPECT_EQ(spans[0].mTo, 32.0);
    EXPECT_EQ(spans[1].mLyric, 4);
    EXPECT_EQ(spans[1].mFrom, 68.0); // half opaque
    EXPECT_EQ(spans[1].mTo, 76.125); // the last eighth of a row in which it is
}

TEST(Lyrics, ASpanEndsWithTheShow)
{
    sync_key keys[] = {{0, 1, 0}};
    char name[] = "x";
    const sync_track track = {name, keys, 1};
    const auto spans = tools::FindLyricSpans(track, track, 0.5f, 3624.0);
    ASSERT_EQ(spans.size(), 1u);
    EXPECT_EQ(spans[0].mTo, 3624.0);
}

TEST(Lyrics, WordsAreReadByNumber)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("words", "# head\n\n0 we wait\n12   for the bus\r\n");
    tools::tFaults faults;
    const auto words = tools::ReadLyrics("words", faults);
    EXPECT_TRUE(faults.empty());
    EXPECT_EQ(words.at(0), "we wait");
    EXPECT_EQ(words.at(12), "for the bus");
}

TEST(Lyrics, EveryFaultyLineIsNamed)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("words", "0 a\nb\n1\n0 c\n2x y\n");
    tools::tFaults faults;
    tools::ReadLyrics("words", faults);
    EXPECT_THAT(Lines(faults),
                ElementsAre("words:2:1: expected a lyric's number, found 'b'",
                            "words:3:2: expected a space and the words, found ''",
                            "words:4:1: expected a new number, found a second line for lyric 0",
                            "words:5:2: expected a space and the words, found 'x y'"));
}
