#include "tools/timeline/Document.h"
#include "tests/support/TestFiles.h"
#include "tests/timeline/Editing.h"
#include "tools/timeline/Operations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::HasSubstr;
using timeline::cDocument;

namespace
{
const std::string song = "tempo 120 8 4\n"
                         "off = -1\n"
                         "photo.duck = 0\n"
                         "photo.heart = 28   # the last one\n"
                         "lyric.0 = 0\n"
                         "\n"
                         "section pulse length 0:1\n"
                         "  track size linear\n"
                         "    0:0:0   1\n"
                         "    0:0:7   0.5\n"
                         "\n"
                         "repeat pulse at 4:0 every 0:1 times 4   # four on the floor\n"
                         "repeat pulse at 8:0\n"
                         "\n"
                         "section verse at 2:0 length 8:0\n"
                         "  track image\n"
                         "    0:0:0   photo.duck    # comes in\n"
                         "    2:0:0   off\n"
                         "  track size linear\n"
                         "    0:0:0   0     smoothstep\n"
                         "    1:0:0   0.25  hold\n";
} // namespace

TEST(Document, ATextWithFaultsIsNotOpened)
{
    timeline::tTextFaults faults;
    EXPECT_EQ(cDocument::Open("track a\n 0 x\n 1 y\n", faults), nullptr);
    EXPECT_EQ(faults.size(), 2u);
}

TEST(Document, AnyTextWithoutFaultsComesBackByteForByte)
{
    for (const std::string text :
         {"", "\n", "track a", "track a\r\n 0 1\r\n", "\r\r\n\n\t\ntrack a\n"})
        EXPECT_EQ(test::Open(text)->Text(), text);
    const std::string show = test::ReadFile(VYR_SOURCE_DIR "/content/timeline.txt");
    EXPECT_EQ(test::Open(show)->Text(), show);
}

TEST(Document, KeysKnowWhereTheyAreWritten)
{
    const auto document = test::Open(song);
    const timeline::cKeyText key = document->Describe(document->FindKey("image", 64)->mId);
    EXPECT_EQ(key.mLine, 17);
    EXPECT_EQ(key.mTime.mColumn, 5);
    EXPECT_EQ(key.mTime.mLength, 5);
    EXPECT_EQ(key.mValue.mColumn, 13);
    EXPECT_EQ(key.mValue.mLength, 10);
    EXPECT_EQ(key.mInterpolation.mLength, 0);
    EXPECT_EQ(key.mValueName, "photo.duck");
    EXPECT_EQ(key.mSection, "verse");
    EXPECT_EQ(key.mSectionLine, 15);
    EXPECT_EQ(key.mCopies, 1);
    EXPECT_EQ(key.mFixed, "");
}

TEST(Document, KeysOfARepeatedSectionKnowTheirCopies)
{
    const auto document = test::Open(song);
    const timeline::cKeyId third = document->FindKey("size", 128 + 16)->mId;
    EXPECT_EQ(third.mCopy, 2);
    EXPECT_EQ(document->Describe(third).mCopies, 5);
    EXPECT_EQ(document->CopiesOf(third).size(), 5u);
    EXPECT_EQ(document->FindKey({third.mLine, 4})->mKey.row, 256);
    EXPECT_EQ(document->FindKey({third.mLine, 5}), nullptr);
}

TEST(Document, AKeyThatCannotBeWrittenSaysWhy)
{
    const auto document = test::Open(song);
    document->SetFixed("the file is read-only");
    const timeline::cKeyId key = document->FindKey("image", 64)->mId;
    EXPECT_EQ(document->Describe(key).mFixed, "the file is read-only");
    timeline::cTextFault refusal;
    EXPECT_FALSE(document->Apply(timeline::DeleteKeys({key}), refusal));
    EXPECT_EQ(refusal.mWhat, "the file is read-only");
    EXPECT_EQ(document->Text(), song);
}

// One line changes, and of that only the word; what stands behind keeps its column.
TEST(Document, AValueIsWrittenInItsPlace)
{
    test::cEditing editing(song);
    EXPECT_EQ(editing.Do("set image 2:0 photo.heart"),
              "-    0:0:0   photo.duck    # comes in\n+    0:0:0   photo.heart   # comes in\n");
    EXPECT_EQ(editing.Do("set size 3:0 0.125"),
              "-    1:0:0   0.25  hold\n+    1:0:0   0.125 hold\n");
    EXPECT_EQ(editing.Do("set size 3:0 0.125 linear"),
              "-    1:0:0   0.125 hold\n+    1:0:0   0.125 linear\n");
}

TEST(Document, WhatStaysTheSameKeepsItsSpelling)
{
    test::cEditing editing("track a linear\n 016 +1\n");
    EXPECT_EQ(editing.mDocument, nullptr); // no sign before a number
    test::cEditing other("track a linear\n  016  1.500e0\t# x\n");
    EXPECT_EQ(other.Do("set a 16 1.5"), "");
    EXPECT_EQ(other.Do("move a 16 24"), "-  016  1.500e0\t# x\n+  24   1.500e0\t# x\n");
    EXPECT_EQ(other.Do("set a 24 2"), "-  24   1.500e0\t# x\n+  24   2\t# x\n");
}

TEST(Document, ValuesThatHaveANameAreWrittenByIt)
{
    test::cEditing editing(song);
    EXPECT_EQ(editing.Do("set image 3:0 28"), "+    1:0:0   photo.heart\n");
    EXPECT_EQ(editing.Do("set image 3:0 0"), "-    1:0:0   photo.heart\n+    1:0:0   photo.duck\n");
    EXPECT_EQ(editing.Do("set image 3:0 -1"), "-    1:0:0   photo.duck\n+    1:0:0   off\n");
    // 0 is lyric.0 too, but the lane of photos has no lyrics; and a lane of numbers has no names.
    EXPECT_EQ(editing.Do("set size 3:0 0"), "-    1:0:0   0.25  hold\n+    1:0:0   0     hold\n");
}

TEST(Document, TimesStayInTheirUnit)
{
    test::cEditing editing(
        "tempo 120\ntrack rows\n 16 1\ntrack beats\n 0:2 1\ntrack all\n 0:2:0 1\n"
        "track seconds\n 1s 1\n");
    EXPECT_EQ(editing.Do("move rows 16 0:3"), "- 16 1\n+ 24 1\n");
    EXPECT_EQ(editing.Do("move beats 16 24"), "- 0:2 1\n+ 0:3 1\n");
    EXPECT_EQ(editing.Do("move beats 24 25"), "- 0:3 1\n+ 0:3:1 1\n");
    EXPECT_EQ(editing.Do("move all 16 2s"), "- 0:2:0 1\n+ 1:0:0 1\n");
    EXPECT_EQ(editing.Do("move seconds 16 24"), "- 1s 1\n+ 1.5s 1\n");
    EXPECT_EQ(editing.Do("move seconds 24 25"), "- 1.5s 1\n+ 1.56s 1\n"); // 1.6 s is row 26
}

TEST(Document, NewKeysAreLinesLikeTheirNeighbours)
{
    test::cEditing editing(song);
    EXPECT_EQ(editing.Do("set size 2:2 0.5"), "+    0:2:0   0.5   smoothstep\n");
    EXPECT_EQ(editing.Do("set image 2:2 28"), "+    0:2:0   photo.heart\n");
    test::cEditing tabs("track a\n\t0:0\t1\thold\t# x\r\n\t2:0\t3\r\n");
    EXPECT_EQ(tabs.Do("set a 1:0 2"), "+\t1:0\t2\thold\r\n");
    EXPECT_EQ(tabs.Do("set a 2:0 3 linear"), "-\t2:0\t3\r\n+\t2:0\t3\tlinear\r\n");
    test::cEditing plain("track a linear\n0 1\n128 2");
    EXPECT_EQ(plain.Do("set a 64 3"), "+64 3\n");
    EXPECT_EQ(plain.Do("set a 256 4"), "-128 2\n\\\n+128 2\n+256 4\n\\\n");
}

TEST(Document, ANewKeyGoesWhereItsTimeLies)
{
    test::cEditing editing(song);
    EXPECT_EQ(editing.Do("set size 9:0 2"), "+    7:0:0   2     linear\n"); // still in the verse
    EXPECT_THAT(editing.Do("set size 0:1 2"),
                testing::EndsWith("+track size\n+  0:1:0   2  smoothstep\n"));
    EXPECT_EQ(editing.Do("set size 0:2 3"), "+  0:2:0   3  smoothstep\n");
    EXPECT_EQ(test::Refusal(song, "set sise 0 1"),
              "0: expected a track of this timeline, found 'sise', nearest known name 'size'");
}

TEST(Document, AKeyThatLeavesItsSectionGetsALineElsewhere)
{
    test::cEditing editing("section a at 0:0 length 1:0\n track x\n  0:0 1\n"
                           "section b at 1:0 length 1:0\n track x\n  0:2 3\n");
    EXPECT_EQ(editing.Do("move x 0:0 1:1"), "-  0:0 1\n+  0:1 1\n");
    EXPECT_EQ(editing.Do("move x 1:1 1:3"), "-  0:1 1\n+  0:3 1\n");
}

TEST(Document, ARowTakesOneKey)
{
    EXPECT_EQ(test::Refusal(song, "move image 2:0 4:0"),
              "18: expected a free row for the key, found this one on row 128 (4:0:0) of 'image'");
    test::cEditing editing(song);
    timeline::cEdits edits =
        timeline::MoveKeys(*editing.mDocument, {editing.mDocument->FindKey("image", 64)->mId}, 64);
    edits.mReplace = true;
    EXPECT_EQ(editing.Apply(edits), "-    0:0:0   photo.duck    # comes in\n"
                                    "-    2:0:0   off\n+    2:0:0   photo.duck    # comes in\n");
}

// Two that change places are no collision.
TEST(Document, KeysMayPassEachOther)
{
    test::cEditing editing("track a\n 0 1\n 8 2\n");
    const timeline::cKeyId first = editing.mDocument->FindKey("a", 0)->mId,
                           second = editing.mDocument->FindKey("a", 8)->mId;
    timeline::cEdits edits;
    edits.mChanges = {{first, 8, {}, {}, ""}, {second, 0, {}, {}, ""}};
    EXPECT_EQ(editing.Apply(edits), "- 0 1\n- 8 2\n+ 8 1\n+ 0 2\n");
    EXPECT_EQ(editing.mDocument->FindKey(first)->mKey.row, 8); // an id is its line's
}

TEST(Document, AKeyOfARepeatedSectionIsRefusedUnlessAllCopiesAreMeant)
{
    EXPECT_EQ(test::Refusal(song, "set size 4:1 2"),
              "9: expected a key of its own, found one of section 'pulse' (line 7), which is put 5 "
              "times");
    test::cEditing editing(song, true);
    EXPECT_EQ(editing.Do("set size 4:1 2"), "-    0:0:0   1\n+    0:0:0   2\n");
    EXPECT_EQ(editing.Do("move size 4:1:7 4:1:6"), "-    0:0:7   0.5\n+    0:0:6   0.5\n");
    EXPECT_EQ(editing.mDocument->FindKey("size", 256 + 6)->mKey.value, 0.5f);
    EXPECT_EQ(editing.Do("set size 4:1:3 7"), "+    0:0:3   7\n");
    EXPECT_EQ(editing.mDocument->FindKey("size", 256 + 3)->mKey.value, 7.0f);
    EXPECT_EQ(editing.Do("delete size 8:0:3"), "-    0:0:3   7\n");
    EXPECT_EQ(test::Refusal(song, "move size 4:1 6:0", true),
              "9: expected a time within section 'pulse', 0 to 0:1:0, found 56 rows");
}

TEST(Document, TwoCopiesOfALineMayMoveTogetherAndNotApart)
{
    test::cEditing editing(song);
    const timeline::cKeyId first = editing.mDocument->FindKey("size", 128)->mId,
                           second = editing.mDocument->FindKey("size", 136)->mId;
    timeline::cEdits together = timeline::MoveKeys(*editing.mDocument, {first, second}, 1);
    together.mPattern = true;
    timeline::cEdits apart = timeline::StretchKeys(*editing.mDocument, {first, second}, 128, 1.5);
    apart.mPattern = true;
    timeline::cTextFault refusal;
    EXPECT_FALSE(editing.mDocument->Apply(apart, refusal));
    EXPECT_EQ(refusal.mWhat, "expected one change of this line, found two different ones");
    EXPECT_EQ(editing.Apply(together), "-    0:0:0   1\n+    0:0:1   1\n");
}

TEST(Document, ALineDoesNotGrowPastItsLimit)
{
    const std::string text = "name = 1\ntrack a\n 0 1 #" + std::string(4089, 'x') + "\n";
    EXPECT_EQ(test::Refusal(text, "set a 0 0.125"),
              "3: expected a line of at most 4096 bytes, which the change would exceed");
}

// Its copies light up while a hand drags, and the text has not changed yet.
TEST(Document, APreviewIsWhatTheEditWillBe)
{
    test::cEditing editing(song);
    timeline::cEdits edits =
        timeline::MoveKeys(*editing.mDocument, {editing.mDocument->FindKey("size", 136)->mId}, 2);
    edits.mPattern = true;
    std::vector<timeline::cTrack> preview;
    timeline::cTextFault refusal;
    ASSERT_TRUE(editing.mDocument->Preview(edits, preview, refusal));
    EXPECT_EQ(editing.mDocument->Text(), song);
    ASSERT_EQ(preview.size(), 1u);
    editing.Apply(edits);
    const auto compiled = test::CompileText(editing.mDocument->Text());
    EXPECT_EQ(timeline::TrackFileBytes(compiled[1]), timeline::TrackFileBytes(preview[0]));
}

TEST(Document, NothingOfAnEditIsDoneWhereAPartOfItCannotBe)
{
    test::cEditing editing(song);
    timeline::cEdits edits;
    edits.mDeleted = {editing.mDocument->FindKey("image", 64)->mId};
    edits.mNew = {{"nothing", 0, 0.0f, {}, ""}};
    timeline::cTextFault refusal;
    EXPECT_FALSE(editing.mDocument->Apply(edits, refusal));
    EXPECT_EQ(editing.mDocument->Text(), song);
    EXPECT_FALSE(editing.mDocument->CanUndo());
}

TEST(Document, UndoAndRedoAreStepByStepAndKeysKeepTheirIds)
{
    test::cEditing editing(song);
    cDocument &document = *editing.mDocument;
    const timeline::cKeyId key = document.FindKey("image", 64)->mId;
    editing.Do("move image 2:0 3:0");
    const std::string moved = document.Text();
    editing.Do("delete image 3:0");
    EXPECT_EQ(document.FindKey(key), nullptr);
    document.Undo();
    EXPECT_EQ(document.Text(), moved);
    EXPECT_EQ(document.FindKey(key)->mKey.row, 96);
    document.Undo();
    EXPECT_EQ(document.Text(), song);
    EXPECT_FALSE(document.CanUndo());
    document.Redo();
    EXPECT_EQ(document.Text(), moved);
    editing.Do("set image 3:0 off");
    EXPECT_FALSE(document.CanRedo()); // another way has been taken
}

TEST(Document, AGroupIsOneStep)
{
    test::cEditing editing(song);
    cDocument &document = *editing.mDocument;
    document.Begin();
    editing.Do("move image 2:0 3:0");
    document.Begin();
    editing.Do("delete image 3:0");
    document.End(false);
    EXPECT_NE(document.FindKey("image", 96), nullptr);
    editing.Do("set size 3:0 9");
    document.End(true);
    document.Undo();
    EXPECT_EQ(document.Text(), song);
    EXPECT_FALSE(document.CanUndo());
}

// Somebody saves another text while a hand drags: the dragged key is found again where its line has
// stayed, and is gone where it has not.
TEST(Document, ATextFromOutsideKeepsTheKeysOfLinesThatAreInBoth)
{
    test::cEditing editing(song);
    cDocument &document = *editing.mDocument;
    const timeline::cKeyId duck = document.FindKey("image", 64)->mId,
                           off = document.FindKey("image", 128)->mId;
    std::string other = "# a new head\n" + song;
    other = "tempo 120 8 4\n" + other.substr(0, 13) + other.substr(27);
    other.replace(other.find("2:0:0   off"), 11, "2:1:0   off");
    timeline::tTextFaults faults;
    ASSERT_TRUE(document.Become(other, faults)) << faults[0].mWhat;
    EXPECT_EQ(document.Text(), other);
    ASSERT_NE(document.FindKey(duck), nullptr);
    EXPECT_EQ(document.FindKey(off), nullptr);
    EXPECT_FALSE(document.Become("half a fi", faults));
    EXPECT_EQ(document.Text(), other);
    document.Undo();
    EXPECT_EQ(document.Text(), song);
    EXPECT_EQ(document.FindKey(off)->mKey.row, 128);
}
