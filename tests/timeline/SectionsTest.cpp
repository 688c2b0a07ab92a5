#include "tools/timeline/Sections.h"
#include "tests/support/TestFiles.h"
#include "tests/timeline/Editing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using testing::HasSubstr;

namespace
{
const std::string song = "section pulse length 0:1\n"
                         "  track size linear\n"
                         "    0:0:0   1       # comes\n"
                         "\n"
                         "    0:0:7   0.5\n"
                         "\n"
                         "# the song\n"
                         "repeat pulse  at 4:0   every 0:1 times 4   # four on the floor\n"
                         "repeat pulse  at 8:0\n"
                         "track size\n"
                         "  0:0:0  9\n";

std::string After(const std::string &text, const std::string &edit)
{
    test::cEditing editing(text);
    editing.Do(edit);
    return editing.mDocument->Text();
}

// Track, row, value.
using tKeys = std::vector<std::tuple<std::string, int, float>>;
tKeys KeysOf(const std::string &text)
{
    tKeys keys;
    for (const timeline::cTrack &track : test::CompileText(text))
        for (const sync_key &key : track.mKeys)
            keys.push_back({track.mName, key.row, key.value});
    return keys;
}

std::vector<std::string> Ruler(const timeline::cDocument &document)
{
    std::vector<std::string> sections;
    for (const timeline::cSectionSpan &span : timeline::SectionsOf(document.Timeline()))
        sections.push_back(span.mName + " " + std::to_string(int(span.mFrom)) + "-" +
                           std::to_string(int(span.mTo)));
    return sections;
}
} // namespace

TEST(Detach, ACopyInTheMiddleOfASeriesGetsLinesOfItsOwn)
{
    const std::string after = After(song, "detach size 4:1:7");
    EXPECT_EQ(after, "section pulse length 0:1\n"
                     "  track size linear\n"
                     "    0:0:0   1       # comes\n"
                     "\n"
                     "    0:0:7   0.5\n"
                     "section pulse-2 length 0:1\n"
                     "  track size linear\n"
                     "    0:0:0   1       # comes\n"
                     "\n"
                     "    0:0:7   0.5\n"
                     "\n"
                     "# the song\n"
                     "repeat pulse  at 4:0   # four on the floor\n"
                     "repeat pulse-2 at 4:1\n"
                     "repeat pulse  at 4:2   every 0:1 times 2\n"
                     "repeat pulse  at 8:0\n"
                     "track size\n"
                     "  0:0:0  9\n");
    EXPECT_EQ(KeysOf(after), KeysOf(song));
}

TEST(Detach, FromItsEndsASeriesIsOnlyMadeShorter)
{
    EXPECT_THAT(After(song, "detach size 4:0"),
                HasSubstr("repeat pulse-2 at 4:0   # four on the floor\n"
                          "repeat pulse  at 4:1   every 0:1 times 3\n"));
    EXPECT_THAT(After(song, "detach size 4:3"),
                HasSubstr("repeat pulse  at 4:0   every 0:1 times 3   # four on the floor\n"
                          "repeat pulse-2 at 4:3\n"));
    EXPECT_THAT(After(song, "detach size 8:0"), HasSubstr("repeat pulse-2 at 8:0\n"));
}

TEST(Detach, TheCopyChangesAloneFromThenOn)
{
    test::cEditing editing(song);
    timeline::cKeyId detached;
    timeline::cTextFault refusal;
    ASSERT_TRUE(
        editing.mDocument->Detach(editing.mDocument->FindKey("size", 143)->mId, detached, refusal));
    EXPECT_EQ(editing.mDocument->FindKey(detached)->mKey.row, 143);
    EXPECT_EQ(editing.mDocument->Describe(detached).mCopies, 1);
    EXPECT_EQ(editing.Do("set size 4:1:7 0.25"), "-    0:0:7   0.5\n+    0:0:7   0.25\n");
    EXPECT_EQ(editing.mDocument->FindKey("size", 135)->mKey.value, 0.5f);
    editing.mDocument->Undo();
    editing.mDocument->Undo();
    EXPECT_EQ(editing.mDocument->Text(), song);
}

// A ruler shows sections that have a place: it must show the same after one of them is detached.
TEST(Detach, SectionsWithAPlaceStayOnTheRuler)
{
    const std::string text = "section verse at 4:0 length 4:0   # loud\n track a\n  0:0 1\n"
                             "repeat verse at 10:0 as verse2\nrepeat verse at 20:0\n"
                             "repeat verse at 30:0 as verse4\n";
    test::cEditing editing(text);
    const auto ruler = Ruler(*editing.mDocument);
    editing.Do("detach a 10:0");
    EXPECT_EQ(Ruler(*editing.mDocument), ruler);
    EXPECT_THAT(
        editing.mDocument->Text(),
        HasSubstr("\n  0:0 1\nsection verse2 at 10:0 length 4:0\n track a\n  0:0 1\nrepeat"));
    editing.mDocument->Undo();
    editing.Do("detach a 4:0"); // the section's own place: the others go
    EXPECT_EQ(Ruler(*editing.mDocument), ruler);
    EXPECT_EQ(editing.mDocument->Text(),
              "section verse at 4:0 length 4:0   # loud\n track a\n  0:0 1\n"
              "section verse2 at 10:0 length 4:0\n track a\n  0:0 1\n"
              "repeat verse2 at 20:0 as verse\nrepeat verse2 at 30:0 as verse4\n");
    EXPECT_EQ(KeysOf(editing.mDocument->Text()), KeysOf(text));
}

TEST(Detach, ASeriesOfTheSectionsOwnLineIsSplitToo)
{
    EXPECT_THAT(
        After("section s at 1:0 length 1:0 every 1:0 times 5\n track a\n  0:0 1\n", "detach a 3:0"),
        "section s at 1:0 length 1:0 every 1:0 times 2\n track a\n  0:0 1\n"
        "section s-2 at 3:0 length 1:0\n track a\n  0:0 1\n"
        "repeat s at 4:0 every 1:0 times 2\n");
    EXPECT_EQ(
        After("section s at 1:0 length 1:0 every 1:0 times 2\n track a\n  0:0 1\n", "detach a 1:0"),
        "section s at 2:0 length 1:0\n track a\n  0:0 1\n"
        "section s-2 at 1:0 length 1:0\n track a\n  0:0 1\n");
}

TEST(Detach, AKeyThatStandsAloneHasNothingToBeDetachedFrom)
{
    EXPECT_EQ(test::Refusal(song, "detach size 0"),
              "11: expected a key of a section that is put several times, found one that stands "
              "alone");
}

TEST(Detach, DeclarationsInTheBodyAreNotMadeTwice)
{
    const std::string after = After("tracks a\nsection s\nx = 1\ntracks b\ntrack a\n 0 x\n"
                                    "repeat s at 0\nrepeat s at 8\n",
                                    "detach a 8");
    EXPECT_EQ(after, "tracks a\nsection s\nx = 1\ntracks b\ntrack a\n 0 x\n"
                     "section s-2\ntrack a\n 0 x\nrepeat s at 0\nrepeat s-2 at 8\n");
}

namespace
{
const std::string show = "section tick length 0:1\n"
                         "  track t\n"
                         "    0  1\n"
                         "repeat tick at 2:0 every 1:0 times 8\n"
                         "section verse at 4:0 length 4:0\n"
                         "  track v linear\n"
                         "    0:0:0   0\n"
                         "    2:0:0   1\n"
                         "    4:0:0   2\n"
                         "section chorus at 8:0 length 4:0\n"
                         "  track v\n"
                         "    0:0:1   3\n";
}

TEST(InsertTime, WhatBeginsThereComesLaterAndTheSectionBeforeItStaysAsItIs)
{
    test::cEditing editing(show);
    EXPECT_EQ(editing.Do("insert 8:0 2:0"), "-repeat tick at 2:0 every 1:0 times 8\n"
                                            "+repeat tick at 2:0 every 1:0 times 6\n"
                                            "+repeat tick at 10:0 every 1:0 times 2\n"
                                            "-section chorus at 8:0 length 4:0\n"
                                            "+section chorus at 10:0 length 4:0\n");
}

TEST(InsertTime, ASectionThatItLiesInBecomesLonger)
{
    test::cEditing editing(show);
    EXPECT_EQ(editing.Do("insert 6:0 1:0"), "-repeat tick at 2:0 every 1:0 times 8\n"
                                            "-section verse at 4:0 length 4:0\n"
                                            "+repeat tick at 2:0 every 1:0 times 4\n"
                                            "+repeat tick at 7:0 every 1:0 times 4\n"
                                            "+section verse at 4:0 length 5:0\n"
                                            "-    2:0:0   1\n"
                                            "-    4:0:0   2\n"
                                            "-section chorus at 8:0 length 4:0\n"
                                            "+    3:0:0   1\n"
                                            "+    5:0:0   2\n"
                                            "+section chorus at 9:0 length 4:0\n");
    editing.mDocument->Undo();
    EXPECT_EQ(editing.mDocument->Text(), show); // one step
}

TEST(InsertTime, ACopyThatItLiesInIsDetachedFirst)
{
    const std::string after = After("section s length 1:0\n track a\n  0:0 1\n  0:3 2\n"
                                    "repeat s at 0:0 every 1:0 times 3\n",
                                    "insert 1:2 1:0");
    EXPECT_EQ(after, "section s length 1:0\n track a\n  0:0 1\n  0:3 2\n"
                     "section s-2 length 2:0\n track a\n  0:0 1\n  1:3 2\n"
                     "repeat s at 0:0\nrepeat s-2 at 1:0\nrepeat s at 3:0\n");
}

TEST(InsertTime, MovesKeysOfTheWholeShowOneByOne)
{
    EXPECT_EQ(After("track a\n 0 1\n 1:0 2 # x\n 40 3\n", "insert 0:2 0:1:0"),
              "track a\n 0 1\n 1:1 2 # x\n 48 3\n");
}

TEST(InsertTime, RowsMustFit)
{
    EXPECT_EQ(test::Refusal("track a\n 2147483640 1\n", "insert 0 8"),
              "0: expected rows that fit into 32 bits, found 2147483648");
}

TEST(DeleteTime, TakesBackWhatAnInsertionHasMade)
{
    for (const char *at : {"0", "1:0", "4:0", "6:0", "8:0", "9:0", "40:0"}) {
        test::cEditing editing(show);
        editing.Do(std::string("insert ") + at + " 3:0");
        editing.Do(std::string("remove ") + at + " 3:0");
        EXPECT_EQ(KeysOf(editing.mDocument->Text()), KeysOf(show)) << at;
        EXPECT_EQ(Ruler(*editing.mDocument), Ruler(*test::Open(show))) << at;
    }
}

TEST(DeleteTime, CutsSectionsAtBothEnds)
{
    const std::string text = "section a at 0:0 length 2:0\n track x\n  0:0 1\n  1:1 2\n"
                             "section b at 2:0 length 2:0\n track x\n  0:0 3\n  1:1 4\n";
    EXPECT_EQ(After(text, "remove 1:0 2:0"), "section a at 0:0 length 1:0\n track x\n  0:0 1\n"
                                             "section b at 1:0 length 1:0\n track x\n  0:1 4\n");
}

TEST(DeleteTime, WhatLiesWithinItGoes)
{
    // A section that is put nowhere any more stays in the text, for other places.
    test::cEditing editing(show);
    EXPECT_EQ(editing.Do("remove 4:0 4:0"), "-repeat tick at 2:0 every 1:0 times 8\n"
                                            "-section verse at 4:0 length 4:0\n"
                                            "+repeat tick at 2:0 every 1:0 times 2\n"
                                            "+repeat tick at 4:0 every 1:0 times 2\n"
                                            "+section verse length 4:0\n"
                                            "-section chorus at 8:0 length 4:0\n"
                                            "+section chorus at 4:0 length 4:0\n");
}

// Rows of any kind of text, against what the rule says about the keys of the whole show.
TEST(DeleteTime, AndInsertionKeepTheShowOnEachSideOfIt)
{
    std::mt19937 random(5);
    int done = 0;
    for (int round = 0; round < 300; round++) {
        const int row = int(random() % 500), count = 1 + int(random() % 200);
        const bool isInsert = random() % 2;
        test::cEditing editing(show);
        timeline::cTextFault refusal;
        const bool isDone = isInsert ? editing.mDocument->InsertTime(row, count, refusal)
                                     : editing.mDocument->DeleteTime(row, count, refusal);
        if (!isDone)
            continue;
        done++;
        const tKeys before = KeysOf(show), after = KeysOf(editing.mDocument->Text());
        for (const auto &[track, at, value] : before) {
            const bool isBehind = at >= row + (isInsert ? 0 : count);
            const int moved = at < row ? at : at + (isInsert ? count : -count);
            const bool isThere =
                testing::Value(after, testing::Contains(std::tuple(track, moved, value)));
            if (at < row || isBehind) {
                const bool isEndOfSection = at == 256 && track == "v"; // stays with its section
                EXPECT_TRUE(isThere || isEndOfSection) << row << " " << count << " " << at;
            }
        }
        editing.mDocument->Undo();
        ASSERT_EQ(editing.mDocument->Text(), show);
    }
    EXPECT_GT(done, 250);
}

TEST(Show, OfTheRepositoryCanBeMadeLongerAndShorterAgain)
{
    const std::string text = test::ReadFile(VYR_SOURCE_DIR "/content/timeline.txt");
    for (const char *at : {"8:0", "23:3", "30:1:3", "70:0", "100:2"}) {
        test::cEditing editing(text);
        editing.Do(std::string("insert ") + at + " 4:0");
        editing.Do(std::string("remove ") + at + " 4:0");
        EXPECT_EQ(KeysOf(editing.mDocument->Text()), KeysOf(text)) << at;
    }
}
