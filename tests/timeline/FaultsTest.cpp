#include "tools/timeline/Compiler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
std::vector<std::string> FaultsOf(const std::string &text)
{
    timeline::tTextFaults faults;
    const timeline::cTimeline timeline = timeline::ParseTimeline(text, faults);
    timeline::Compile(timeline, faults);
    std::vector<std::string> lines;
    for (const tools::cFault &fault : timeline::ToReports("t", faults))
        lines.push_back(fault.ToLine());
    return lines;
}

struct cCase
{
    const char *mText, *mFault; ///< a timeline with one fault, and how its report begins
};

class OneFault : public testing::TestWithParam<cCase>
{};
} // namespace

TEST_P(OneFault, IsNamedWithItsPlace)
{
    EXPECT_THAT(FaultsOf(GetParam().mText), ElementsAre(StartsWith(GetParam().mFault)))
        << GetParam().mText;
}

INSTANTIATE_TEST_SUITE_P(
    Timeline, OneFault,
    testing::Values(
        cCase{"nonsense", "t:1:1: expected a key, NAME = VALUE, track, section, repeat, tracks "
                          "or tempo, found 'nonsense'"},
        cCase{"trak a", "t:1:1: expected a key, NAME = VALUE, track, section, repeat, tracks "
                        "or tempo, found 'trak', nearest known name 'track'"},
        cCase{"0 1", "t:1:1: expected a track line before the first key, found '0'"},
        cCase{"track", "t:1:6: expected a track's name"},
        cCase{"track a x", "t:1:9: expected hold, linear, smoothstep or quadratic, found 'x'"},
        cCase{"track a hold b", "t:1:14: expected the end of the line, found 'b'"},
        cCase{"track \"a/b\"", "t:1:7: expected a name without '/'"},
        cCase{"track \"a", "t:1:7: expected a closing quote, found the end of the line"},
        cCase{"track \"a\\q\"", "t:1:9: expected an escape"},
        cCase{"track a\x01", "t:1:8: expected printable text, found '\\x01'"},
        cCase{"tempo", "t:1:6: expected beats a minute, 1 to 10000, found the end of the line"},
        cCase{"tempo x", "t:1:7: expected beats a minute, 1 to 10000, found 'x'"},
        cCase{"tempo 0", "t:1:7: expected beats a minute, 1 to 10000, found '0'"},
        cCase{"tempo -132", "t:1:7: expected beats a minute, 1 to 10000, found '-132'"},
        cCase{"tempo inf", "t:1:7: expected beats a minute, 1 to 10000, found 'inf'"},
        cCase{"tempo nan", "t:1:7: expected beats a minute, 1 to 10000, found 'nan'"},
        cCase{"tempo 1e9", "t:1:7: expected beats a minute, 1 to 10000, found '1e9'"},
        cCase{"tempo 10000.1", "t:1:7: expected beats a minute, 1 to 10000, found '10000.1'"},
        cCase{"tempo 132bpm", "t:1:7: expected beats a minute, 1 to 10000, found '132bpm'"},
        cCase{"tempo 132 0", "t:1:11: expected rows a beat, 1 to 1000, found '0'"},
        cCase{"tempo 132 1000000000", "t:1:11: expected rows a beat, 1 to 1000, found"},
        cCase{"tempo 132 8.5", "t:1:11: expected rows a beat, 1 to 1000, found '8.5'"},
        cCase{"tempo 132 8 -4", "t:1:13: expected beats a bar, 1 to 1000, found '-4'"},
        cCase{"tempo 132 8 99999999999", "t:1:13: expected beats a bar, 1 to 1000, found"},
        cCase{"tempo 132 8 4 2", "t:1:15: expected the end of the line, found '2'"},
        cCase{"tempo 132\ntempo 132",
              "t:2:1: expected tempo only once (line 1 has said it), found"},
        cCase{"# x\n\ntracks a\n tempo 132",
              "t:4:2: expected tempo before anything else (line 3 is the first), found 'tempo'"},
        cCase{"tempo = 132", "t:1:1: expected a name (a letter first, no keyword)"},
        cCase{"track a\n 1.5s 0",
              "t:2:2: expected rows (768) or bars:beats:rows (24:0:0), as there are no seconds "
              "without a tempo line, found '1.5s'"},
        cCase{"tempo 90 5 3\ntrack a\n 0:3 1", "t:3:2: expected a beat from 0 to 2 behind the bar"},
        cCase{"tracks", "t:1:7: expected a track's name"},
        cCase{"tracks a a", "t:1:10: expected a track that is not declared yet, found 'a'"},
        cCase{"tracks fade:bg_white\ntrack fade:bg_whte",
              "t:2:7: expected a declared track, found 'fade:bg_whte', nearest known name "
              "'fade:bg_white'"},
        cCase{"track a\n 0", "t:2:3: expected a value: a number or a declared name, found the end"},
        cCase{"track a\n 0 =", "t:2:2: expected a name"},
        cCase{
            "track a\n 0 1 linaer",
            "t:2:6: expected hold, linear, smoothstep or quadratic, found 'linaer', nearest known "
            "name 'linear'"},
        cCase{"track a\n 0 1 hold 3", "t:2:11: expected the end of the line, found '3'"},
        cCase{"photo.tovak04 = 5\ntrack a\n 0 photo.tovka04",
              "t:3:4: expected a declared name, found 'photo.tovka04', nearest known name "
              "'photo.tovak04'"},
        cCase{"track a\n 0 nan", "t:2:4: expected a declared name, found 'nan'"},
        cCase{"track a\n 0 -inf", "t:2:4: expected a value"},
        cCase{"track a\n 0 1e39", "t:2:4: expected a number in the range of single precision"},
        cCase{"track a\n 0 1.5x", "t:2:4: expected a value"},
        cCase{"track a\n 1:4 0", "t:2:2: expected a beat from 0 to 3 behind the bar, found '1:4'"},
        cCase{"track a\n 1.5 0", "t:2:2: expected a whole row, found '1.5'"},
        cCase{
            "track a\n 3 0\n 0:0:3 1",
            "t:3:2: expected one key a row, found a second one for 'a' at row 3 (0:0:3), the first "
            "is in line 2"},
        cCase{"x = 1\nx = 2", "t:2:1: expected a new name (line 1 declares this one), found 'x'"},
        cCase{"9x = 1", "t:1:1: expected a name (a letter first, no keyword), found '9x'"},
        cCase{"track = 1", "t:1:1: expected a name"}, cCase{"x =", "t:1:4: expected a value"},
        cCase{"x = 1 2", "t:1:7: expected the end of the line, found '2'"},
        cCase{"section", "t:1:8: expected the section's name, found the end of the line"},
        cCase{"section s at", "t:1:13: expected a time"},
        cCase{"section s lenght 4", "t:1:11: expected at, length, every or times, found 'lenght', "
                                    "nearest known name 'length'"},
        cCase{"section s length 0", "t:1:18: expected a time above 0, found '0'"},
        cCase{"section s at 0 at 1", "t:1:16: expected at only once, found 'at'"},
        cCase{"section s at 0 every 8", "t:1:23: expected times NUMBER, found the end of the line"},
        cCase{"section s at 0 times 8", "t:1:23: expected every TIME, found the end of the line"},
        cCase{"section s every 8 times 2", "t:1:26: expected at TIME, found the end of the line"},
        cCase{"section s at 0 every 8 times 0", "t:1:30: expected a number of times, 1 or more"},
        cCase{"section s\nsection s", "t:2:9: expected a new section name, found 's'"},
        cCase{"section chorus\nrepeat corus at 0",
              "t:2:8: expected a section that stands above, found 'corus', nearest known name "
              "'chorus'"},
        cCase{"section s\nrepeat s", "t:2:9: expected at TIME, found the end of the line"},
        cCase{"section s\nrepeat s at 0 length 4", "t:2:15: expected at, every, times or as"},
        cCase{"section s at 0 length 1:0\ntrack a\n 1:0:1 2",
              "t:3:2: expected a time within the section, 0 to 1:0:0, found '1:0:1'"},
        cCase{"section s at 2147483647\ntrack a\n 1 2",
              "t:3:2: expected a row that fits into 32 bits, found 2147483648"},
        cCase{"section s at 0 every 1 times 8000000\ntrack a\n 0 1\n 5 1",
              "t:1:1: expected at most 8000000 keys in all"}));

// Each line is read on its own: no fault hides another one or brings one along.
TEST(Faults, AllOfATimelineAreReportedInOneRunInTheirOrder)
{
    EXPECT_THAT(FaultsOf("x = 1..2\n"
                         "track a linar\n"
                         " 0 x\n"
                         " 4 y\n"
                         " 8 1\n"
                         " 8 2\n"
                         "section s at 4:9 length 2:0\n"
                         "track b\n"
                         " 0 1\n"
                         "repeat s at 1:0:8\n"),
                ElementsAre(StartsWith("t:1:5: "), StartsWith("t:2:9: "), StartsWith("t:4:4: "),
                            StartsWith("t:6:2: "), StartsWith("t:7:14: "),
                            StartsWith("t:10:13: ")));
}

// What times mean is not known after it: they are all let through.
TEST(Faults, AFaultyTempoBringsNoOthers)
{
    for (const char *tempo :
         {"tempo x", "tempo 132 0", "tempo 1 9 99999", "tempo", "tempo 132 8 4 2"})
        EXPECT_EQ(FaultsOf(std::string(tempo) + "\nsection s at 4:0 length 2:0\ntrack a\n 0:0 1\n"
                                                "1:5:9 1\n 40 2\n 0.3s 4\n")
                      .size(),
                  1u)
            << tempo;
}

// The same key repeated on top of itself is one mistake of its author.
TEST(Faults, AKeyThatMeetsItselfInEveryRepetitionIsReportedOnce)
{
    EXPECT_EQ(FaultsOf("section s at 0 every 4 times 100\ntrack a\n 0 1\n 4 2").size(), 1u);
}

TEST(Faults, LinesPastTheLimitAreRefused)
{
    const std::string longLine(timeline::kMaximumLineBytes + 1, 'x');
    EXPECT_THAT(FaultsOf("track a\n" + longLine + "\n0 1"),
                ElementsAre("t:2:4097: expected a line of at most 4096 bytes, found 4097"));
    EXPECT_THAT(FaultsOf("track " + std::string(245, 'n')),
                ElementsAre(HasSubstr("at most 244 bytes")));
}

TEST(Faults, ReadingEndsAfterTenThousand)
{
    std::string text;
    for (int i = 0; i < 20'000; i++)
        text += "nonsense\n";
    EXPECT_EQ(FaultsOf(text).size(), timeline::kMaximumFaults);
}

TEST(Faults, WhatIsFoundStaysOnItsLine)
{
    const auto faults = FaultsOf(std::string("track \"a\nb\" \x1b[31m\n\0\x7f", 20));
    ASSERT_FALSE(faults.empty());
    for (const std::string &fault : faults)
        EXPECT_EQ(fault.find_first_of("\n\x1b\x7f"), std::string::npos) << fault;
}

// Bytes at random, and a good timeline with bytes changed at random: any answer but a crash, and
// every place within the text.
TEST(Faults, AnyBytesAreAnswered)
{
    const std::string good = "tracks a b\nx = 1\nsection s at 4:0 length 2:0 every 2:0 times 3\n"
                             "track a linear\n 0:0:0 x\n 0:1:0 -1e3 hold\ntrack \"b\"\n 1s 2\n"
                             "repeat s at 90 as t\n";
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; round++) {
        std::string text = round % 2 == 0 ? good : std::string(random() % 200, ' ');
        const size_t changes = round % 2 == 0 ? 1 + random() % 4 : text.size();
        for (size_t i = 0; i < changes; i++)
            text[random() % text.size()] = char(random() % 256);
        timeline::tTextFaults faults;
        const timeline::cTimeline timeline = timeline::ParseTimeline(text, faults);
        timeline::Compile(timeline, faults);
        const long lines = 1 + std::count(text.begin(), text.end(), '\n');
        for (const timeline::cTextFault &fault : faults) {
            ASSERT_GE(fault.mPlace.mLine, 1);
            ASSERT_LE(fault.mPlace.mLine, lines);
            ASSERT_THAT(fault.mWhat, StartsWith("expected "));
            ASSERT_THAT(fault.mWhat, HasSubstr(", found "));
        }
    }
}
