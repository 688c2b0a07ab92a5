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
const std::string song = "# a song\r\n"
                         "tempo 120\r\n"
                         "section pulse length 0:1\r\n"
                         "  track size linear\r\n"
                         "    0:0:0   1   # boom\r\n"
                         "repeat pulse at 4:0 every 0:1 times 4\r\n"
                         "track \"a b\"\r\n"
                         "\t0:0\t-1\t\r\n"
                         "\t1:0\t2";

/// Runs the real vyr-tracks edit on a song.
class EditProgram : public testing::Test
{
protected:
    EditProgram() { test::WriteFile("song.txt", song); }

    test::cProcessResult Edit(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {VYR_TRACKS, "edit", "song.txt"});
        return test::Run(arguments);
    }

    static std::string Text() { return test::ReadFile("song.txt"); }

    void ExpectUnchanged(const test::cProcessResult &result, int status, const std::string &error)
    {
        EXPECT_EQ(result.mStatus, status);
        EXPECT_EQ(result.mErrors, error);
        EXPECT_EQ(Text(), song);
    }

    test::cTemporaryFolder mFolder;
};

std::string Replaced(std::string text, const std::string &part, const std::string &by)
{
    return text.replace(text.find(part), part.size(), by);
}
} // namespace

TEST_F(EditProgram, ChangesTheTextInItsPlace)
{
    EXPECT_EQ(Edit({"set", "a b", "0:0", "-0.5"}).mStatus, 0);
    EXPECT_EQ(Text(), Replaced(song, "\t-1\t", "\t-0.5\t"));
    EXPECT_EQ(Edit({"move", "a b", "1:0", "1s"}).mStatus, 0);
    EXPECT_EQ(Text(), Replaced(Replaced(song, "\t-1\t", "\t-0.5\t"), "\t1:0\t2", "\t0:2\t2"));
    EXPECT_EQ(Edit({"delete", "a b", "0:2"}).mStatus, 0);
    EXPECT_EQ(Text(), Replaced(Replaced(song, "\t-1\t", "\t-0.5\t"), "\r\n\t1:0\t2", ""));
}

TEST_F(EditProgram, WritesToAnotherFileWhereItIsNamed)
{
    EXPECT_EQ(Edit({"set", "a b", "1:0", "3", "linear", "-o", "new/other.txt"}).mStatus, 0);
    EXPECT_EQ(Text(), song);
    EXPECT_EQ(test::ReadFile("new/other.txt"), song.substr(0, song.size() - 1) + "3\tlinear");
}

TEST_F(EditProgram, ADryRunPrintsADiffThatPatchTakes)
{
    const auto result = Edit({"--dry-run", "set", "a b", "2:0", "5"});
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_EQ(Text(), song);
    EXPECT_THAT(result.mOutput, StartsWith("--- song.txt\n+++ song.txt\n@@ -6,4 +6,5 @@\n"));
    test::WriteFile("d.diff", result.mOutput);
    ASSERT_EQ(test::Run({"git", "init", "-q"}).mStatus, 0);
    const auto patched = test::Run({"git", "apply", "-p0", "--whitespace=nowarn", "d.diff"});
    EXPECT_EQ(patched.mStatus, 0) << patched.mErrors;
    const std::string byPatch = Text();
    test::WriteFile("song.txt", song);
    Edit({"set", "a b", "2:0", "5"});
    EXPECT_EQ(Text(), byPatch);
    EXPECT_EQ(Text(), song + "\r\n\t2:0\t5");
    EXPECT_EQ(Edit({"--dry-run", "set", "a b", "2:0", "5"}).mOutput, "");
}

TEST_F(EditProgram, AKeyOfARepeatedSectionNeedsPattern)
{
    ExpectUnchanged(Edit({"set", "size", "4:1", "2"}), 1,
                    "song.txt:5:5: expected a key of its own, found one of section 'pulse' (line "
                    "3), which is put 4 times\n");
    EXPECT_EQ(Edit({"--pattern", "set", "size", "4:1", "2"}).mStatus, 0);
    EXPECT_EQ(Text(), Replaced(song, "   1   # boom", "   2   # boom"));
}

TEST_F(EditProgram, ACopyCanBeDetachedAndTimePutIn)
{
    EXPECT_EQ(Edit({"detach", "size", "4:1"}).mStatus, 0);
    EXPECT_THAT(Text(), HasSubstr("repeat pulse-2 at 4:1\r\n"));
    EXPECT_EQ(Edit({"set", "size", "4:1", "7"}).mStatus, 0);
    EXPECT_EQ(Edit({"insert", "0:2", "1:0"}).mStatus, 0);
    EXPECT_THAT(Text(), HasSubstr("repeat pulse-2 at 5:1\r\n"));
    EXPECT_THAT(Text(), testing::EndsWith("\t0:0\t-1\t\r\n\t2:0\t2"));
    EXPECT_EQ(Edit({"remove", "0:2", "1:0"}).mStatus, 0);
    EXPECT_THAT(Text(), testing::EndsWith("\t1:0\t2"));
}

TEST_F(EditProgram, AScriptIsDoneWholeAndInItsOrder)
{
    test::WriteFile("edits", "# two edits\n\nset \"a b\" 3:0 1   # new\nmove \"a b\" 3:0 2:0\r\n");
    EXPECT_EQ(Edit({"--script", "edits"}).mStatus, 0);
    EXPECT_EQ(Text(), song + "\r\n\t2:0\t1");
}

TEST_F(EditProgram, AScriptWithFaultsIsNotDoneAndNamesThemAll)
{
    test::WriteFile("edits", "set \"a b\" 3:0 1\nmove x 0 1\nset \"a b\" 1:9 0\nset \"a b\" 3:0\n"
                             "delete \"a b\" 3:1\nset size 4:0 1\nset \"a b\" 3:0 y\npaint it\n");
    ExpectUnchanged(
        Edit({"--script", "edits"}), 1,
        "edits:2:6: expected a track of this timeline, found 'x'\n"
        "edits:3:11: expected a beat from 0 to 3 behind the bar, found '1:9'\n"
        "edits:4:14: expected a value or a time, found nothing\n"
        "edits:5:14: expected a key of 'a b' there, found '3:1', the nearest one is at 3:0:0\n"
        "edits:6:1: song.txt:5:5: expected a key of its own, found one of section 'pulse' (line "
        "3), "
        "which is put 4 times\n"
        "edits:7:15: expected a value: a number or a declared name, found 'y'\n"
        "edits:8:1: expected set, move, delete, detach, insert or remove, found 'paint'\n");
}

TEST_F(EditProgram, AScriptMayComeFromStandardInput)
{
    const auto result = test::Run({"sh", "-c",
                                   std::string("printf 'delete \"a b\" 0\\n' | ") + VYR_TRACKS +
                                       " edit song.txt --script -"});
    EXPECT_EQ(result.mStatus, 0) << result.mErrors;
    EXPECT_EQ(Text(), Replaced(song, "\t0:0\t-1\t\r\n", ""));
}

TEST_F(EditProgram, WhatCannotBeDoneIsToldApartFromMisuse)
{
    ExpectUnchanged(Edit({"set", "b a", "0", "1"}), 1,
                    "song.txt: expected a track of this timeline, found 'b a', nearest known name "
                    "'a b'\n");
    ExpectUnchanged(Edit({"delete", "a b", "5"}), 1,
                    "song.txt: expected a key of 'a b' there, found '5', the nearest one is at "
                    "0:0:0\n");
    ExpectUnchanged(Edit({"set", "a b", "0", "1", "liner"}), 2,
                    "expected hold, linear, smoothstep or quadratic, found 'liner'\n");
    ExpectUnchanged(Edit({"set", "a b", "0:9", "1"}), 2,
                    "expected a beat from 0 to 3 behind the bar, found '0:9'\n");
    ExpectUnchanged(Edit({"insert", "0", "-4"}), 2, "expected a time above 0, found '-4'\n");
    ExpectUnchanged(Edit({"move", "a b"}), 2, "expected a time, found nothing\n");
    ExpectUnchanged(Edit({"move"}), 2, "expected a track, found nothing\n");
    ExpectUnchanged(Edit({"insert"}), 2, "expected a time, found nothing\n");
    ExpectUnchanged(Edit({"delete", "a b", "0", "1"}), 2,
                    "expected the end of the edit, found '1'\n");
    ExpectUnchanged(Edit({}), 2, "expected an edit or --script FILE, and not both\n");
    ExpectUnchanged(Edit({"delete", "a b", "0", "--script", "x"}), 2,
                    "expected an edit or --script FILE, and not both\n");
    ExpectUnchanged(Edit({"--script", "none"}), 1, "none: No such file or directory\n");
}

TEST_F(EditProgram, ATimelineWithFaultsIsNotEdited)
{
    test::WriteFile("song.txt", "track a\n 0 x\n 1 2\n");
    const auto result = Edit({"delete", "a", "1"});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_EQ(result.mErrors, "song.txt:2:4: expected a declared name, found 'x'\n");
    EXPECT_EQ(Text(), "track a\n 0 x\n 1 2\n");
    fs::remove("song.txt");
    EXPECT_EQ(Edit({"delete", "a", "1"}).mErrors, "song.txt: No such file or directory\n");
}

// As `git diff` counts: ten changes of the show's own text are ten lines.
TEST_F(EditProgram, TenEditsOfTheShowAreTenChangedLines)
{
    const std::string show = test::ReadFile(VYR_SOURCE_DIR "/content/timeline.txt");
    test::WriteFile("song.txt", show);
    test::WriteFile("edits", "move flare:x 8:0:1 8:0:3\nmove flare:x 9:3 9:2\nset flare:y 4:0 0.5\n"
                             "set image:zemlogo 6:0:0 0.25\nset image:left 8:0 photo.duck\n"
                             "move lyrics:num 10:0 10:1\nset lyrics:x 10:0 50\n"
                             "set object:z 4:0 -6\nset fade:plasma 2:0 0.125 linear\n"
                             "move fade:fg_black 3:0 2:3:1\n");
    const auto result = Edit({"--script", "edits"});
    ASSERT_EQ(result.mStatus, 0) << result.mErrors;
    test::WriteFile("before.txt", show);
    const auto diff =
        test::Run({"git", "diff", "--no-index", "--numstat", "before.txt", "song.txt"});
    EXPECT_THAT(diff.mOutput, StartsWith("10\t10\t"));
}
