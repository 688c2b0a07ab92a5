#include "tools/timeline/Text.h"
#include "tools/timeline/Diff.h"
#include "tools/timeline/KeyLine.h"

#include <gtest/gtest.h>

#include <random>

using timeline::cText;
using timeline::tPatches;

TEST(Text, LinesEndAsTheyDidBefore)
{
    tPatches done;
    cText text("a\r\nb\nc");
    text.Insert(1, "x", done);
    text.Insert(3, "y", done);
    text.Insert(5, "z", done);
    text.Replace(0, "A", done);
    EXPECT_EQ(text.Bytes(), "A\r\nx\r\nb\ny\nc\nz");
    text.Remove(5, done);
    EXPECT_EQ(text.Bytes(), "A\r\nx\r\nb\ny\nc"); // the last line still has no end
    text.Undo(done);
    EXPECT_EQ(text.Bytes(), "a\r\nb\nc");
    text.Redo(done);
    EXPECT_EQ(text.Bytes(), "A\r\nx\r\nb\ny\nc");
}

TEST(Text, AnEmptyTextTakesLines)
{
    tPatches done;
    cText text;
    EXPECT_EQ(text.Count(), 0);
    text.Insert(0, "a", done);
    EXPECT_EQ(text.Bytes(), "a\n");
    text.Remove(0, done);
    EXPECT_EQ(text.Bytes(), "");
}

TEST(Text, LinesKeepTheirIdentityThroughEditsOfOthers)
{
    tPatches done;
    cText text("a\nb\nc\n");
    const timeline::tLineId c = text.At(2).mId;
    text.Insert(0, "x", done);
    text.Remove(1, done);
    text.Replace(2, "C", done);
    EXPECT_EQ(text.Find(c), 2);
    text.Remove(2, done);
    EXPECT_EQ(text.Find(c), -1);
    text.Undo(done);
    EXPECT_EQ(text.Find(c), 2);
}

TEST(Text, BecomesAnotherOneAndKeepsWhatIsInBoth)
{
    tPatches done;
    cText text("a\nb\nc\nd\n");
    const timeline::tLineId b = text.At(1).mId, d = text.At(3).mId;
    text.Become("x\nb\ny\nc\nz", done);
    EXPECT_EQ(text.Bytes(), "x\nb\ny\nc\nz");
    EXPECT_EQ(text.Find(b), 1);
    EXPECT_EQ(text.Find(d), -1);
    text.Undo(done);
    EXPECT_EQ(text.Bytes(), "a\nb\nc\nd\n");
    EXPECT_EQ(text.Find(d), 3);
}

TEST(Diff, OfNothingIsEmpty)
{
    const cText text("a\n");
    EXPECT_EQ(timeline::UnifiedDiff("f", text, text), "");
}

TEST(Diff, HasThreeLinesOfContext)
{
    const cText before("1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n13\n14\n");
    cText after = before;
    tPatches done;
    after.Replace(4, "five", done);
    after.Remove(12, done);
    after.Insert(13, "fifteen", done);
    EXPECT_EQ(timeline::UnifiedDiff("f", before, after),
              "--- f\n+++ f\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n"
              "-5\n+five\n 6\n 7\n 8\n"
              "@@ -10,5 +10,5 @@\n 10\n 11\n 12\n-13\n"
              " 14\n+fifteen\n");
}

TEST(KeyLine, WhatFollowsAWordKeepsItsColumnWhereItHasOne)
{
    EXPECT_EQ(timeline::ReplaceWord("  0:0  1   # x", 1, "0.125", false), "  0:0  0.125 # x");
    EXPECT_EQ(timeline::ReplaceWord("  0:0  1   # x", 0, "10:0", false), "  10:0 1   # x");
    EXPECT_EQ(timeline::ReplaceWord("  10:0 1 hold", 0, "8:0", true), "  8:0  1 hold");
    EXPECT_EQ(timeline::ReplaceWord("  10:0 1 hold", 0, "8:0", false), "  8:0 1 hold");
    EXPECT_EQ(timeline::ReplaceWord("0\t1\t\thold", 1, "12345678", true), "0\t12345678\t\thold");
    EXPECT_EQ(timeline::ReplaceWord("0 1#x", 1, "22", true), "0 22#x");
    EXPECT_EQ(timeline::ReplaceWord("0  1   ", 1, "22", true), "0  22   ");
}

TEST(KeyLine, AWordIsAddedBeforeTheComment)
{
    EXPECT_EQ(timeline::AppendWord("0  1        # x", "hold", 7), "0  1   hold # x");
    EXPECT_EQ(timeline::AppendWord("0 1", "hold", 0), "0 1 hold");
    EXPECT_EQ(timeline::AppendWord("0   1 #x", "hold", 0), "0   1  hold #x");
    EXPECT_EQ(timeline::AppendWord("0\t1", "hold", 9), "0\t1\thold");
}

TEST(KeyLine, OptionsAreSetAndTakenOut)
{
    const std::string line = "repeat a  at 4:0  every 1:0 times 3  # x";
    EXPECT_EQ(timeline::OptionOf(line, "every"), "1:0");
    EXPECT_EQ(timeline::OptionOf(line, "as"), "");
    EXPECT_EQ(timeline::SetOption(line, "at", "10:0"), "repeat a  at 10:0 every 1:0 times 3  # x");
    EXPECT_EQ(timeline::SetOption(line, "as", "b"), "repeat a  at 4:0  every 1:0 times 3 as b # x");
    EXPECT_EQ(timeline::RemoveOption(line, "every"), "repeat a  at 4:0 times 3  # x");
    EXPECT_EQ(timeline::RemoveOption(line, "as"), line);
    // A section may be called as an option is.
    EXPECT_EQ(timeline::OptionOf("repeat at at 8", "at"), "8");
}
