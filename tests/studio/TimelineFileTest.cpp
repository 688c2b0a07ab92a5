#include "studio/TimelineFile.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using studio::cTimelineFile;
using testing::HasSubstr;

namespace
{
const std::string text = "tempo 120\r\n"
                         "track a linear   # the first\r\n"
                         "  0   1\r\n"
                         "\t8   2.50 # half\r\n"
                         "track b\n"
                         "  4   1";
const std::string tracks = "track a\n  0 5\n";

class TimelineFile : public testing::Test
{
protected:
    TimelineFile() { test::WriteFile("show.txt", text); }

    static timeline::cEdits Move(const cTimelineFile &file, const char *track, int row, int to)
    {
        timeline::cEdits edits;
        edits.mChanges.push_back({file.Document().FindKey(track, row)->mId, to, {}, {}, ""});
        return edits;
    }

    test::cTemporaryFolder mFolder;
    std::string mRefusal;
};

TEST_F(TimelineFile, ChangeIsInTheFileAndEveryOtherByteStays)
{
    cTimelineFile file("show.txt", tracks);
    ASSERT_TRUE(file.Apply(Move(file, "a", 8, 16), mRefusal)) << mRefusal;
    std::string expected = text;
    expected.replace(expected.find("\t8   2.50"), 9, "\t16  2.50");
    EXPECT_EQ(test::ReadFile("show.txt"), expected);
}

TEST_F(TimelineFile, UndoGoesBackToTheFirstByteAndRedoForward)
{
    cTimelineFile file("show.txt", tracks);
    for (int row = 16; row < 80; row += 8)
        ASSERT_TRUE(file.Apply(Move(file, "a", row - 8, row), mRefusal));
    const std::string last = test::ReadFile("show.txt");
    for (int i = 0; i < 100; i++)
        EXPECT_TRUE(file.Undo(mRefusal));
    EXPECT_EQ(test::ReadFile("show.txt"), text);
    for (int i = 0; i < 100; i++)
        EXPECT_TRUE(file.Redo(mRefusal));
    EXPECT_EQ(test::ReadFile("show.txt"), last);
}

TEST_F(TimelineFile, WhatSomebodyElseHasWrittenIsNotOverwritten)
{
    cTimelineFile file("show.txt", tracks);
    const std::string other = text + "\n  9 9\n";
    test::WriteFile("show.txt", other);
    EXPECT_FALSE(file.Apply(Move(file, "a", 8, 16), mRefusal));
    EXPECT_NE(mRefusal, "");
    EXPECT_EQ(test::ReadFile("show.txt"), other);
    EXPECT_EQ(file.Document().Text(), text); // nothing has changed here either
    file.ReadAgain();
    EXPECT_EQ(file.Document().Text(), other);
    EXPECT_TRUE(file.Apply(Move(file, "a", 8, 16), mRefusal)) << mRefusal;
}

TEST_F(TimelineFile, LastGoodTextStandsWhileTheFileHasFaults)
{
    cTimelineFile file("show.txt", tracks);
    const int generation = file.Generation();
    for (const char *broken : {"track a\n  0 what\n  x\n", "", "  \n", "track a\n  0"}) {
        test::WriteFile("show.txt", broken);
        file.ReadAgain();
        EXPECT_FALSE(file.Faults().empty()) << broken;
        EXPECT_EQ(file.Document().Text(), text);
        EXPECT_FALSE(file.Apply(Move(file, "a", 8, 16), mRefusal));
        EXPECT_THAT(mRefusal, HasSubstr("fault"));
    }
    fs::remove("show.txt");
    file.ReadAgain();
    EXPECT_EQ(file.Faults().size(), 1u);
    EXPECT_EQ(file.Generation(), generation);
    test::WriteFile("show.txt", text);
    file.ReadAgain();
    EXPECT_TRUE(file.Faults().empty());
    EXPECT_TRUE(file.Apply(Move(file, "a", 8, 16), mRefusal)) << mRefusal;
}

TEST_F(TimelineFile, TracksStandForATextThatHasNeverBeenGood)
{
    test::WriteFile("show.txt", "nonsense\n");
    cTimelineFile file("show.txt", tracks);
    EXPECT_EQ(file.Faults().size(), 1u);
    EXPECT_EQ(file.Document().FindTrack("a")->mKeys[0].mKey.value, 5.0f);
    EXPECT_FALSE(file.Apply(Move(file, "a", 0, 16), mRefusal));
    test::WriteFile("show.txt", text);
    file.ReadAgain();
    EXPECT_EQ(file.Document().Text(), text);
    EXPECT_TRUE(file.Apply(Move(file, "a", 8, 16), mRefusal)) << mRefusal;
}

TEST_F(TimelineFile, WithoutAFileNothingCanBeChanged)
{
    cTimelineFile file("", tracks);
    EXPECT_FALSE(file.Apply(Move(file, "a", 0, 16), mRefusal));
    EXPECT_THAT(mRefusal, HasSubstr("--timeline"));
    EXPECT_THAT(file.Document().Describe(file.Document().FindKey("a", 0)->mId).mFixed,
                HasSubstr("--timeline"));
    EXPECT_FALSE(file.Undo(mRefusal));
}

TEST_F(TimelineFile, RefusalNamesTheLineAndLeavesNoStepOfUndo)
{
    cTimelineFile file("show.txt", tracks);
    EXPECT_FALSE(file.Apply(Move(file, "a", 8, 0), mRefusal)); // onto the other one
    EXPECT_THAT(mRefusal, HasSubstr("line "));
    EXPECT_FALSE(file.Document().CanUndo());
    EXPECT_EQ(test::ReadFile("show.txt"), text);
}
} // namespace
