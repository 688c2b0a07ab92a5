#include "tools/timeline/Operations.h"
#include "tests/timeline/Editing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace
{
const std::string text = "heart = 28\n"
                         "track a\n"
                         "  0   0\n"
                         "  10  1\n"
                         "  21  heart\n"
                         "track b linear\n"
                         "  4   0.50  # half\n";

/// A document, and all its keys.
class Operations : public testing::Test
{
protected:
    Operations() : mEditing(text), mDocument(*mEditing.mDocument)
    {
        for (const timeline::cShowTrack &track : mDocument.Tracks())
            for (const timeline::cShowKey &key : track.mKeys)
                mKeys.push_back(key.mId);
    }

    std::vector<int> RowsAfter(const timeline::cEdits &edits)
    {
        mEditing.Apply(edits);
        std::vector<int> rows;
        for (const timeline::cKeyId &id : mKeys)
            rows.push_back(mDocument.FindKey(id) ? mDocument.FindKey(id)->mKey.row : -1);
        return rows;
    }

    test::cEditing mEditing;
    timeline::cDocument &mDocument;
    timeline::tKeyIds mKeys; // of a: 0, 10, 21; of b: 4
};
} // namespace

TEST_F(Operations, KeysMoveTogether)
{
    EXPECT_THAT(RowsAfter(timeline::MoveKeys(mDocument, mKeys, 3)), ElementsAre(3, 13, 24, 7));
}

TEST_F(Operations, DistancesFromThePivotAreStretched)
{
    EXPECT_THAT(RowsAfter(timeline::StretchKeys(mDocument, mKeys, 10, 0.5)),
                ElementsAre(5, 10, 16, 7)); // 15.5 goes up
    mDocument.Undo();
    EXPECT_THAT(RowsAfter(timeline::StretchKeys(mDocument, mKeys, 0, 2.0)),
                ElementsAre(0, 20, 42, 8));
    mDocument.Undo();
    EXPECT_THAT(RowsAfter(timeline::StretchKeys(mDocument, mKeys, 8, -1.0)), // turned round
                ElementsAre(16, 6, -5, 12));
}

TEST_F(Operations, RowsAreQuantised)
{
    EXPECT_THAT(RowsAfter(timeline::QuantiseKeys(mDocument, mKeys, 8)), ElementsAre(0, 8, 24, 8));
}

TEST_F(Operations, KeysThatWouldMeetAreRefused)
{
    timeline::cTextFault refusal;
    timeline::cEdits edits = timeline::QuantiseKeys(mDocument, mKeys, 32);
    EXPECT_FALSE(mDocument.Apply(edits, refusal));
    EXPECT_EQ(refusal.mWhat, "expected one key a row, found two that would come to row 0 (0:0:0) "
                             "of 'a'");
    edits.mReplace = true; // the first one stays
    EXPECT_THAT(RowsAfter(edits), ElementsAre(0, -1, 32, 0));
}

TEST_F(Operations, ValuesAndInterpolationsAreSet)
{
    EXPECT_EQ(mEditing.Apply(timeline::SetInterpolation({mKeys[0], mKeys[3]}, SYNC_KEY_LINEAR)),
              "-  0   0\n+  0   0  linear\n");
    EXPECT_EQ(mEditing.Apply(timeline::SetValue({mKeys[0], mKeys[1]}, 28.0f)),
              "-  0   0  linear\n-  10  1\n+  0   heart linear\n+  10  heart\n");
    EXPECT_EQ(mEditing.Apply(timeline::AddToValues(mDocument, {mKeys[3], mKeys[1]}, 0.25f)),
              "-  10  heart\n+  10  28.25\n-  4   0.50  # half\n+  4   0.75  # half\n");
    EXPECT_EQ(mEditing.Apply(timeline::DeleteKeys({mKeys[2], mKeys[2]})), "-  21  heart\n");
}

TEST_F(Operations, ClipsGoIntoTheTracksOfTheirNames)
{
    timeline::cClip clip = timeline::CopyKeys(mDocument, {mKeys[1], mKeys[2], mKeys[3]});
    EXPECT_EQ(clip.mRow, 4);
    clip.mEntries.push_back({"c", 0, 1.0f, 0, "1"});
    std::vector<std::string> missing;
    const timeline::cEdits edits = timeline::PasteKeys(mDocument, clip, 104, missing);
    EXPECT_THAT(missing, ElementsAre("c"));
    EXPECT_EQ(mEditing.Apply(edits), "+  110 1\n+  121 heart\n+  104 0.50\n");
}

// A name that means something else there is none.
TEST_F(Operations, AClipFromAnotherShowKeepsItsValues)
{
    const timeline::cClip clip = timeline::CopyKeys(mDocument, {mKeys[2]});
    for (const char *other : {"heart = 3\ntrack a\n 0 1\n", "track a\n 0 1\n"}) {
        test::cEditing editing(other);
        std::vector<std::string> missing;
        EXPECT_EQ(editing.Apply(timeline::PasteKeys(*editing.mDocument, clip, 8, missing)),
                  "+ 8 28\n");
    }
}

TEST_F(Operations, PastingOnAKeyChangesIt)
{
    const timeline::cClip clip = timeline::CopyKeys(mDocument, {mKeys[0]});
    std::vector<std::string> missing;
    EXPECT_EQ(mEditing.Apply(timeline::PasteKeys(mDocument, clip, 10, missing)),
              "-  10  1\n+  10  0\n");
}

TEST_F(Operations, DuplicatesStandBesideTheirLikes)
{
    EXPECT_EQ(mEditing.Apply(timeline::DuplicateKeys(mDocument, {mKeys[0], mKeys[1]}, 2)),
              "+  2   0\n+  12  1\n");
}

TEST_F(Operations, KeysThatAreGoneAreLeftOut)
{
    mEditing.Apply(timeline::DeleteKeys({mKeys[0]}));
    EXPECT_THAT(RowsAfter(timeline::MoveKeys(mDocument, mKeys, 1)), ElementsAre(-1, 11, 22, 5));
}
