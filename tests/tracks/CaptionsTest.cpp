#include "tools/tracks/Captions.h"

#include <gtest/gtest.h>

namespace
{
const vyr::cTempo tempo{17.6};
// 17.6 rows a second: row 176 is 10 s, row 1760 is 1 min 40 s.
const std::vector<tools::cLyricSpan> spans = {
    {0, 176.0, 352.0}, {1, 360.0, 528.0}, {0, 1760.0, 1778.0}};
const std::map<int, std::string> words = {{0, "waiting <here>"}, {1, "rain & road"}};
} // namespace

TEST(Captions, AreWebVttWithACueASpan)
{
    EXPECT_EQ(tracks::ToWebVtt(spans, words, tempo), "WEBVTT\n"
                                                     "\n1\n00:00:10.000 --> 00:00:20.000\n"
                                                     "waiting &lt;here&gt;\n"
                                                     "\n2\n00:00:20.455 --> 00:00:30.000\n"
                                                     "rain &amp; road\n"
                                                     "\n3\n00:01:40.000 --> 00:01:41.023\n"
                                                     "waiting &lt;here&gt;\n");
}

TEST(Captions, TheTranscriptKeepsStanzasApart)
{
    EXPECT_EQ(tracks::ToTranscript(spans, words, tempo), "0:10  waiting <here>\n"
                                                         "0:20  rain & road\n"
                                                         "\n"
                                                         "1:40  waiting <here>\n");
}

TEST(Captions, ALyricWithoutWordsIsAFaultOnce)
{
    tools::tFaults faults;
    tracks::CheckWords("words", spans, {{1, "x"}}, tempo, faults);
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0].ToLine(), "words: lyric 0: expected its words, which the show has on the "
                                  "screen at 00:00:10.000");
}
