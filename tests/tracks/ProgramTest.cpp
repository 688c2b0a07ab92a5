#include "tests/support/FixtureShow.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
/// Runs the real vyr-tracks in an empty folder.
class TracksProgram : public testing::Test
{
protected:
    test::cProcessResult Run(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), VYR_TRACKS);
        return test::Run(arguments);
    }

    // Three tracks in the folder "show".
    void CompileExample()
    {
        test::WriteFile("t.txt", "track lyrics:num\n 0 -1\n 176 7\n 352 -1\n"
                                 "track lyrics:fade\n 0 1\ntrack flare:x linear\n 0 0\n 100 1\n");
        const auto result = Run({"compile", "t.txt", "-o", "show"});
        ASSERT_EQ(result.mStatus, 0) << result.mErrors;
        test::LinkShowLibrary("show"); // which says the tempo
    }

    test::cTemporaryFolder mFolder;
};
} // namespace

TEST_F(TracksProgram, CompilesDumpsAndCompilesToTheSameBytes)
{
    CompileExample();
    ASSERT_EQ(Run({"dump", "show", "-o", "dump.txt"}).mStatus, 0);
    EXPECT_EQ(Run({"dump", "show"}).mOutput, test::ReadFile("dump.txt"));
    ASSERT_EQ(Run({"compile", "dump.txt", "-o", "again"}).mStatus, 0);
    for (const char *name : {"lyrics:num", "lyrics:fade", "flare:x"}) {
        const std::string file = std::string("sync_") + name + ".track";
        EXPECT_EQ(test::ReadFile("show/" + file), test::ReadFile("again/" + file)) << name;
        EXPECT_GT(fs::file_size("again/" + file), 8u);
    }
}

TEST_F(TracksProgram, AFaultyTimelineWritesNothingAndListsEveryFault)
{
    CompileExample();
    const std::string before = test::ReadFile("show/sync_flare:x.track");
    test::WriteFile("bad.txt", "track flare:x\n 0 5\n 1 y\n 1:9 2\n");
    const auto result = Run({"compile", "bad.txt", "-o", "show"});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_EQ(result.mErrors,
              "bad.txt:3:4: expected a declared name, found 'y'\n"
              "bad.txt:4:2: expected a beat from 0 to 3 behind the bar, found '1:9'\n");
    EXPECT_EQ(test::ReadFile("show/sync_flare:x.track"), before);
    EXPECT_EQ(Run({"compile", "bad.txt", "-o", "new"}).mStatus, 1);
    EXPECT_FALSE(fs::exists("new"));
}

TEST_F(TracksProgram, SamplesAsThePlayerDoes)
{
    CompileExample();
    EXPECT_EQ(Run({"sample", "show", "flare:x", "0", "100", "25"}).mOutput,
              "row,value\n0,0\n25,0.25\n50,0.5\n75,0.75\n100,1\n");
    EXPECT_EQ(Run({"sample", "show", "flare:x", "-8", "0:1:0", "8"}).mOutput,
              "row,value\n-8,0\n0,0\n8,0.08\n");
    EXPECT_EQ(Run({"sample", "show", "lyrics:num", "9.9s", "10s", "0.88"}).mOutput,
              "row,value\n174.24,-1\n175.12,-1\n176,7\n");
}

// The timeline that is named says how long a second is; without it the show does.
TEST_F(TracksProgram, SecondsAndBarsAreThoseOfTheTimeline)
{
    CompileExample();
    test::WriteFile("words.txt", "7 and nothing going as planned\n");
    test::WriteFile("slow.txt", "tempo 60 6 3\ntrack a\n 0 1\n");
    EXPECT_EQ(
        Run({"sample", "show", "flare:x", "0", "1:1:1", "1s", "--timeline", "slow.txt"}).mOutput,
        "row,value\n0,0\n6,0.06\n12,0.12\n18,0.18\n24,0.24\n");
    Run({"captions", "show", "--lyrics", "words.txt", "-o", "c.vtt", "--timeline", "slow.txt"});
    EXPECT_THAT(test::ReadFile("c.vtt"), HasSubstr("00:00:29.333 --> 00:00:58.667"));
    EXPECT_THAT(Run({"dump", "show", "--timeline", "slow.txt"}).mOutput,
                HasSubstr("\ntempo 60 6 3\n"));
    EXPECT_THAT(Run({"dump", "show"}).mOutput, HasSubstr("\ntempo 132 8 4\n"));
    test::WriteFile("none.txt", "track a\n 1s 1\n");
    const auto result = Run({"compile", "none.txt", "-o", "new"});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_EQ(result.mErrors, "none.txt:2:2: expected rows (768) or bars:beats:rows (24:0:0), as "
                              "there are no seconds without a tempo line, found '1s'\n");
}

TEST_F(TracksProgram, SamplingAsksForATrackAndAStepThatExist)
{
    CompileExample();
    auto result = Run({"sample", "show", "flare:y", "0", "1", "1"});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_EQ(result.mErrors, "show/sync_flare:y.track: expected a track of this folder, found "
                              "'flare:y', nearest known name 'flare:x'\n");
    for (const char *step : {"0", "-1", "x", "0.0000001"}) {
        result = Run({"sample", "show", "flare:x", "0", "100", step});
        EXPECT_EQ(result.mStatus, 2) << step;
        EXPECT_THAT(result.mErrors, StartsWith("expected a ")) << step;
    }
}

TEST_F(TracksProgram, PlotsTheShowAndOneTrack)
{
    CompileExample();
    test::WriteFile("words.txt", "7 and nothing going as planned\n");
    ASSERT_EQ(Run({"plot", "show", "-o", "all.svg", "--timeline", "t.txt", "--lyrics", "words.txt"})
                  .mStatus,
              0);
    EXPECT_THAT(test::ReadFile("all.svg"), HasSubstr("show: 3 tracks, 6 keys"));
    EXPECT_THAT(test::ReadFile("all.svg"), HasSubstr(">and nothing going as planned<"));
    ASSERT_EQ(Run({"plot", "show", "-o", "one.svg", "--track", "flare:x"}).mStatus, 0);
    EXPECT_THAT(test::ReadFile("one.svg"), HasSubstr(">flare:x<"));
}

TEST_F(TracksProgram, PlotsTheMusicAboveTheTracks)
{
    CompileExample();
    const auto made =
        test::Run({"ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i",
                   "sine=frequency=440:sample_rate=44100:duration=3", "-ac", "2", "music.mp3"});
    ASSERT_EQ(made.mStatus, 0) << made.mErrors;
    ASSERT_EQ(Run({"plot", "show", "-o", "all.svg", "--music", "music.mp3"}).mStatus, 0);
    EXPECT_THAT(test::ReadFile("all.svg"), HasSubstr(">waveform<"));
    EXPECT_THAT(test::ReadFile("all.svg"), HasSubstr(" LUFS in all<"));
    const auto result = Run({"plot", "show", "-o", "no.svg", "--music", "t.txt"});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_THAT(result.mErrors, StartsWith("t.txt: can't be decoded: "));
    EXPECT_FALSE(fs::exists("no.svg"));
}

TEST_F(TracksProgram, CaptionsComeFromTheTracksAndTheWords)
{
    CompileExample();
    test::WriteFile("words.txt", "7 and nothing going as planned\n");
    const auto result =
        Run({"captions", "show", "--lyrics", "words.txt", "-o", "c.vtt", "--transcript", "c.txt"});
    ASSERT_EQ(result.mStatus, 0) << result.mErrors;
    EXPECT_EQ(test::ReadFile("c.vtt"), "WEBVTT\n\n1\n00:00:10.000 --> 00:00:20.000\n"
                                       "and nothing going as planned\n");
    EXPECT_EQ(test::ReadFile("c.txt"), "0:10  and nothing going as planned\n");
}

TEST_F(TracksProgram, CaptionsWithoutAllTheWordsAreNotWritten)
{
    CompileExample();
    test::WriteFile("words.txt", "6 three of us and a lamppost\n");
    const auto result = Run({"captions", "show", "--lyrics", "words.txt", "-o", "c.vtt"});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_THAT(result.mErrors, StartsWith("words.txt: lyric 7: expected its words"));
    EXPECT_FALSE(fs::exists("c.vtt"));
}

TEST_F(TracksProgram, BrokenTrackFilesAreNamedByEveryReader)
{
    CompileExample();
    test::WriteFile("show/sync_lyrics:num.track", "short");
    for (const std::vector<std::string> &command :
         {std::vector<std::string>{"dump", "show"},
          {"plot", "show", "-o", "x"},
          {"sample", "show", "lyrics:num", "0", "1", "1"}}) {
        const auto result = Run(command);
        EXPECT_EQ(result.mStatus, 1) << command[0];
        EXPECT_EQ(result.mErrors, "show/sync_lyrics:num.track: header: expected 8 bytes of key "
                                  "count, found 5 bytes\n");
    }
    EXPECT_FALSE(fs::exists("x"));
}

TEST_F(TracksProgram, MissingFilesAndFoldersAreOneLine)
{
    EXPECT_EQ(Run({"compile", "no.txt", "-o", "d"}).mErrors, "no.txt: No such file or directory\n");
    EXPECT_EQ(Run({"compile", ".", "-o", "d"}).mErrors, ".: not a regular file\n");
    EXPECT_EQ(Run({"dump", "none"}).mErrors, "none: no such folder\n");
    EXPECT_EQ(Run({"dump", "."}).mErrors, ".: no track files here\n");
    EXPECT_EQ(Run({"dump", "none"}).mStatus, 1);
}

TEST_F(TracksProgram, MisuseIsToldApartFromFaults)
{
    EXPECT_EQ(Run({}).mStatus, 2);
    EXPECT_EQ(Run({"paint"}).mStatus, 2);
    EXPECT_EQ(Run({"compile", "t.txt"}).mStatus, 2);
    EXPECT_EQ(Run({"dump", ".", "extra"}).mStatus, 2);
    EXPECT_EQ(Run({"--help"}).mStatus, 0);
    EXPECT_THAT(Run({"--help"}).mOutput, HasSubstr("captions"));
}
