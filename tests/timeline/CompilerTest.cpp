#include "tools/timeline/Compiler.h"
#include "tests/support/TestFiles.h"
#include "tools/timeline/Sections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

bool operator==(const sync_key &a, const sync_key &b)
{
    return a.row == b.row && a.value == b.value && a.type == b.type;
}

void PrintTo(const sync_key &key, std::ostream *out)
{
    *out << key.row << " " << key.value << " " << key.type;
}

namespace
{
const int hold = SYNC_KEY_HOLD, linear = SYNC_KEY_LINEAR, smoothstep = SYNC_KEY_SMOOTHSTEP,
          quadratic = SYNC_KEY_QUADRATIC;

std::vector<timeline::cTrack> Compile(const std::string &text)
{
    timeline::tTextFaults faults;
    const timeline::cTimeline timeline = timeline::ParseTimeline(text, faults);
    auto compiled = timeline::Compile(timeline, faults);
    for (const tools::cFault &fault : timeline::ToReports("timeline", faults))
        ADD_FAILURE() << fault.ToLine();
    return compiled;
}

std::vector<sync_key> KeysOf(const std::string &text)
{
    const auto compiled = Compile(text);
    EXPECT_EQ(compiled.size(), 1u);
    return compiled.empty() ? std::vector<sync_key>{} : compiled[0].mKeys;
}
} // namespace

TEST(Compiler, AKeyHoldsUnlessItsLineOrItsTrackSaysOtherwise)
{
    EXPECT_THAT(KeysOf("track a\n 0 1\n 8 2 linear\n 16 3 smoothstep\n 24 4 quadratic\n 32 5 hold"),
                ElementsAre(sync_key{0, 1, hold}, sync_key{8, 2, linear},
                            sync_key{16, 3, smoothstep}, sync_key{24, 4, quadratic},
                            sync_key{32, 5, hold}));
    EXPECT_THAT(KeysOf("track a smoothstep\n 0 1\n 8 2 hold"),
                ElementsAre(sync_key{0, 1, smoothstep}, sync_key{8, 2, hold}));
}

// 6 rows a beat, 3 beats a bar, 120 beats a minute: 12 rows a second.
TEST(Compiler, TimesAreThoseOfTheTempo)
{
    EXPECT_THAT(KeysOf("# a waltz\ntempo 120 6 3\ntrack a\n 1:0 1\n 2:1:5 2\n 10s 3\n"),
                ElementsAre(sync_key{18, 1, hold}, sync_key{47, 2, hold}, sync_key{120, 3, hold}));
    EXPECT_THAT(KeysOf("tempo 97.3\ntrack a\n 1:0 1\n 1s 2"), // 12.97 rows a second
                ElementsAre(sync_key{13, 2, hold}, sync_key{32, 1, hold}));
    EXPECT_THAT(KeysOf("tempo 60 2\ntrack a\n 1:0 1"), ElementsAre(sync_key{8, 1, hold}));
}

TEST(Compiler, NamesStandForValuesAndForOtherNames)
{
    EXPECT_THAT(KeysOf("photo.tovak04 = 5\nbest=photo.tovak04 # the one\ntrack image:left\n"
                       "0 photo.tovak04\n1 best"),
                ElementsAre(sync_key{0, 5, hold}, sync_key{1, 5, hold}));
}

TEST(Compiler, CommentsBlankLinesAndForeignLineEndsMeanNothing)
{
    EXPECT_THAT(KeysOf("# head\r\n\r\n\ttrack a#b\r\n0\t1 # 2 3\r\n"),
                ElementsAre(sync_key{0, 1, hold}));
}

TEST(Compiler, KeysMayStandInAnyOrder)
{
    EXPECT_THAT(KeysOf("track a\n 8 2\n 0 1\ntrack a\n 4 3"),
                ElementsAre(sync_key{0, 1, hold}, sync_key{4, 3, hold}, sync_key{8, 2, hold}));
}

TEST(Compiler, TimesInASectionCountFromItsStart)
{
    EXPECT_THAT(
        KeysOf("section s at 24:0 length 1:0\ntrack a\n 0 1\n 0:1:0 2\n 1:0:0 3"),
        ElementsAre(sync_key{768, 1, hold}, sync_key{776, 2, hold}, sync_key{800, 3, hold}));
}

TEST(Compiler, ASectionIsMovedByItsOneLine)
{
    const std::string body = " length 2:0\ntrack a\n 0 1\n 0:3:0 2\n";
    const auto before = KeysOf("section s at 24:0" + body);
    auto after = KeysOf("section s at 70:0" + body);
    for (sync_key &key : after)
        key.row -= (70 - 24) * 32;
    EXPECT_EQ(before, after);
}

TEST(Compiler, ASectionIsRepeatedAsABlock)
{
    EXPECT_THAT(KeysOf("section s at 0\ntrack a\n 0 1\n 1 2\nrepeat s at 8\nrepeat s at 4:0 as t"),
                ElementsAre(sync_key{0, 1, hold}, sync_key{1, 2, hold}, sync_key{8, 1, hold},
                            sync_key{9, 2, hold}, sync_key{128, 1, hold}, sync_key{129, 2, hold}));
}

TEST(Compiler, EveryAndTimesRepeatInAPulse)
{
    EXPECT_THAT(KeysOf("section s at 8 every 0:1:0 times 3\ntrack a\n 0 1"),
                ElementsAre(sync_key{8, 1, hold}, sync_key{16, 1, hold}, sync_key{24, 1, hold}));
}

TEST(Compiler, APatternShowsOnlyWhereItIsRepeated)
{
    EXPECT_THAT(KeysOf("section s length 1:0\ntrack a\n 0 1\nrepeat s at 1:0"),
                ElementsAre(sync_key{32, 1, hold}));
}

// What follows a repeat belongs to the whole show again.
TEST(Compiler, ARepeatEndsTheSectionBeforeIt)
{
    EXPECT_THAT(KeysOf("section s at 10\ntrack a\n 0 1\nrepeat s at 20\ntrack a\n 5 2"),
                ElementsAre(sync_key{5, 2, hold}, sync_key{10, 1, hold}, sync_key{20, 1, hold}));
}

TEST(Compiler, ATrackWithoutKeysAndADeclaredOneGetEmptyFiles)
{
    const auto compiled = Compile("tracks b a c\ntrack a\n 0 1");
    ASSERT_EQ(compiled.size(), 3u);
    EXPECT_EQ(compiled[1].mName, "b");
    EXPECT_EQ(timeline::TrackFileBytes(compiled[1]), std::string(8, '\0'));
    EXPECT_EQ(Compile("track x\n").size(), 1u);
}

TEST(Compiler, TrackFilesAreTheBytesThatThePlayerReads)
{
    const auto compiled = Compile("track tunnel:pos\n 5 2.5\n -1 -0 quadratic");
    ASSERT_EQ(compiled.size(), 1u);
    const std::string bytes("\2\0\0\0\0\0\0\0\xFF\xFF\xFF\xFF\0\0\0\x80\3\5\0\0\0\0\0\x20\x40\0",
                            26);
    EXPECT_EQ(timeline::TrackFileBytes(compiled[0]), bytes);
    const auto files = timeline::TrackFiles(compiled, "some/folder");
    EXPECT_EQ(files[0].mPath, "some/folder/sync_tunnel:pos.track");
}

TEST(Compiler, ManyTracksAreNoTrouble)
{
    std::string text;
    for (int i = 0; i < 1000; i++)
        text += "track t" + std::to_string(i) + "\n 0 " + std::to_string(i) + "\n";
    EXPECT_EQ(Compile(text).size(), 1000u);
}

// Plots show sections with a place and a length; patterns would hide the sections that they lie in.
TEST(Compiler, SectionsOfAPlotAreThePlacedOnesAndTheirRepetitions)
{
    timeline::tTextFaults faults;
    const auto timeline = timeline::ParseTimeline("section p length 1:0\nrepeat p at 0:2\n"
                                                  "section b at 2:0\nsection c at 4:0 length 2:0\n"
                                                  "repeat c at 0:0 as d\n",
                                                  faults);
    const auto sections = timeline::SectionsOf(timeline);
    ASSERT_EQ(sections.size(), 2u);
    EXPECT_EQ(sections[0].mName, "d");
    EXPECT_EQ(sections[1].mName, "c");
    EXPECT_EQ(sections[1].mTo, 192.0);
}

TEST(Compiler, TheShowsOwnTimelineIsItsTwentyTwoTracks)
{
    const auto compiled = Compile(test::ReadFile(VYR_SOURCE_DIR "/content/timeline.txt"));
    EXPECT_EQ(compiled.size(), 22u);
    for (const timeline::cTrack &track : compiled)
        EXPECT_FALSE(track.mKeys.empty()) << track.mName;
}
