#include "show/Tempo.h"
#include "show/Time.h"
#include "tests/timeline/Editing.h"

#include <gtest/gtest.h>

#include <bit>
#include <map>
#include <random>
#include <set>

using timeline::cDocument;
using timeline::cKeyId;

namespace
{
using tRandom = std::mt19937;

int Pick(tRandom &random, int count) { return int(random() % unsigned(count)); }

template <typename T>
const T &PickOne(tRandom &random, const std::vector<T> &all)
{
    return all[random() % all.size()];
}

/// Writes timelines as people do: with comments, tabs, several units, and no two sections alike.
class cGenerator
{
public:
    explicit cGenerator(tRandom &random)
        : mRandom(random), mEnd(Pick(random, 3) == 0 ? "\r\n" : "\n"),
          mIndent(PickOne<std::string>(random, {"", " ", "    ", "\t"})),
          mGap(PickOne<std::string>(random, {" ", "  ", "\t", "    "}))
    {}

    std::string Text()
    {
        Line("# ein Stück: über \xE2\x99\xAB");
        if (Pick(mRandom, 2))
            Line("tempo 120 8 4");
        Line("off = -1");
        Line("photo.duck=0   # and a comment");
        Line("photo.heart = 28");
        Line("");
        Blocks(0, 200);
        for (int i = 0; i < 3; i++)
            Section(i);
        if (Pick(mRandom, 3) == 0)
            mText.resize(mText.size() - mEnd.size());
        return mText;
    }

private:
    void Line(const std::string &content) { mText += content + mEnd; }

    std::string Comment()
    {
        return Pick(mRandom, 4) ? "" : mGap + "# Ä" + std::to_string(Pick(mRandom, 99));
    }

    // Rows of the second: 16, in texts with a tempo only.
    std::string Time(int row)
    {
        const bool hasSeconds = mText.find("tempo") != std::string::npos;
        const std::string like = PickOne<std::string>(
            mRandom, {"1", "1:0:0", "1:0:0", "1:0", hasSeconds ? "1.5s" : "1"});
        return vyr::FormatRowLike(row, like, vyr::TempoOf(120.0));
    }

    std::string Value(const std::string &track)
    {
        if (track == "image")
            return PickOne<std::string>(mRandom, {"off", "photo.duck", "photo.heart", "5"});
        return PickOne<std::string>(mRandom, {"0", "-0", "0.50", "1e-3", "12345.678", "-7"});
    }

    void Blocks(int from, int length)
    {
        for (const std::string track : {"image", "\"a b\"", "x"}) {
            if (Pick(mRandom, 3) == 0)
                continue;
            Line(mIndent + "track " + track +
                 PickOne<std::string>(mRandom, {"", " linear", "  hold"}) + Comment());
            std::set<int> rows;
            for (int i = Pick(mRandom, 6); i > 0; i--)
                rows.insert(from + Pick(mRandom, length));
            for (int row : rows)
                Line(mIndent + mIndent + Time(row) + mGap + Value(track) +
                     PickOne<std::string>(mRandom, {"", "", mGap + "smoothstep", mGap + "hold"}) +
                     Comment());
            if (Pick(mRandom, 3) == 0)
                Line(PickOne<std::string>(mRandom, {"", "\t", "# ----"}));
        }
    }

    // The first one once, the others several times; none meets another or the whole show's keys.
    void Section(int number)
    {
        const std::string name = "part" + std::to_string(number);
        const int start = 1000 * (number + 1);
        if (number == 0)
            Line("section " + name + " at " + Time(start) + " length 200");
        else if (number == 1)
            Line("section " + name + " at " + Time(start) + " length 100  every 100 times 3  # x");
        else
            Line("section " + name + " length " + Time(120));
        Blocks(0, 99);
        Line("");
        if (number == 2)
            Line("repeat " + name + " at " + Time(start) + "  every 128 times 2" + Comment());
        if (number > 0)
            Line("repeat " + name + " at " + Time(start + 500));
    }

    tRandom &mRandom;
    const std::string mEnd, mIndent, mGap;
    std::string mText;
};

using tKeys = std::map<std::pair<std::string, int>, std::pair<uint32_t, int>>;

// What a text compiles to, by track and row.
tKeys KeysOf(const std::string &text)
{
    tKeys keys;
    for (const timeline::cTrack &track : test::CompileText(text))
        for (const sync_key &key : track.mKeys)
            keys[{track.mName, key.row}] = {std::bit_cast<uint32_t>(key.value), key.type};
    return keys;
}

struct cNamed
{
    std::string mTrack;
    timeline::cShowKey mKey;
};

std::vector<cNamed> AllKeys(const cDocument &document)
{
    std::vector<cNamed> keys;
    for (const timeline::cShowTrack &track : document.Tracks())
        for (const timeline::cShowKey &key : track.mKeys)
            keys.push_back({track.mName, key});
    return keys;
}

/// One random edit, what it is to mean, and how many lines it may change.
class cRandomEdit
{
public:
    cRandomEdit(tRandom &random, const cDocument &document)
        : mRandom(random), mDocument(document), mWanted(KeysOf(document.Text()))
    {
        mEdits.mPattern = Pick(random, 8) != 0;
        const std::vector<cNamed> keys = AllKeys(document);
        for (int i = 1 + Pick(random, 3); i > 0 && !keys.empty(); i--)
            Add(PickOne(random, keys));
        if (keys.empty() || Pick(random, 3) == 0)
            AddNew();
    }

    timeline::cEdits mEdits;

    // The keys as they are to be, where the edit is done.
    tKeys Wanted() const
    {
        tKeys wanted = mWanted;
        for (const auto &place : mGone)
            wanted.erase(place);
        for (const auto &[place, key] : mCome)
            wanted[place] = key;
        return wanted;
    }

    size_t Lines() const { return mEdits.mChanges.size() + mEdits.mDeleted.size(); }

private:
    void Add(const cNamed &named)
    {
        if (!mLines.insert(named.mKey.mId.mLine).second)
            return;
        if (Pick(mRandom, 4) == 0) {
            mEdits.mDeleted.push_back(named.mKey.mId);
            for (const cKeyId &copy : mDocument.CopiesOf(named.mKey.mId))
                mGone.insert({named.mTrack, mDocument.FindKey(copy)->mKey.row});
            return;
        }
        timeline::cKeyChange change{named.mKey.mId, {}, {}, {}, ""};
        sync_key to = named.mKey.mKey;
        if (Pick(mRandom, 2))
            change.mRow = to.row += Pick(mRandom, 41) - 20;
        if (Pick(mRandom, 2))
            change.mValue = to.value = NewValue(named.mTrack);
        if (Pick(mRandom, 3) == 0)
            to.type = *(change.mType = static_cast<signed char>(Pick(mRandom, 4)));
        mEdits.mChanges.push_back(change);
        for (const cKeyId &copy : mDocument.CopiesOf(named.mKey.mId)) {
            const int row = mDocument.FindKey(copy)->mKey.row;
            mGone.insert({named.mTrack, row});
            mCome[{named.mTrack, row + to.row - named.mKey.mKey.row}] = {
                std::bit_cast<uint32_t>(to.value), to.type};
        }
    }

    float NewValue(const std::string &track)
    {
        return track == "image" ? PickOne<float>(mRandom, {-1.0f, 0.0f, 28.0f, 3.0f})
                                : PickOne<float>(mRandom, {0.1f, -0.0f, 3e20f, 1.0f});
    }

    void AddNew()
    {
        if (mDocument.Tracks().empty())
            return;
        mEdits.mPattern = false; // a new key of all copies is another test
        timeline::cNewKey key;
        key.mTrack = PickOne(mRandom, mDocument.Tracks()).mName;
        key.mRow = Pick(mRandom, 4000) - 100;
        key.mValue = NewValue(key.mTrack);
        key.mType = static_cast<signed char>(Pick(mRandom, 4));
        if (mDocument.FindKey(key.mTrack, key.mRow))
            return;
        mEdits.mNew.push_back(key);
        mCome[{key.mTrack, key.mRow}] = {std::bit_cast<uint32_t>(key.mValue), *key.mType};
    }

    tRandom &mRandom;
    const cDocument &mDocument;
    const tKeys mWanted;
    std::set<timeline::tLineId> mLines;
    std::set<std::pair<std::string, int>> mGone;
    tKeys mCome;
};

// What the plan allows, the text can say: nothing is refused for how it would be written.
bool IsOfThePlan(const std::string &refusal)
{
    for (const char *known :
         {"expected a key of its own", "expected a free row", "expected a time within section",
          "expected one key a row, found two that would come"})
        if (refusal.starts_with(known))
            return true;
    return false;
}

std::vector<std::string> LinesOf(const std::string &text)
{
    std::vector<std::string> lines{""};
    for (char c : text) {
        if (c == '\n')
            lines.emplace_back();
        else if (c != '\r')
            lines.back() += c;
    }
    return lines;
}

// Lines of `before` that are not in `after`, in order: those that have changed or gone.
size_t CountChanged(const std::vector<std::string> &before, const std::vector<std::string> &after)
{
    std::vector<std::vector<size_t>> common(before.size() + 1,
                                            std::vector<size_t>(after.size() + 1));
    for (size_t i = before.size(); i-- > 0;)
        for (size_t j = after.size(); j-- > 0;)
            common[i][j] = before[i] == after[j] ? common[i + 1][j + 1] + 1
                                                 : std::max(common[i + 1][j], common[i][j + 1]);
    return before.size() - common[0][0];
}
} // namespace

// 10,000 edits in all. After each, the text compiles to exactly the keys that were asked for, and
// no more lines have changed than keys were named; at the end it goes back to the first byte and
// forward to the last.
TEST(RandomEdits, ChangeOnlyWhatTheyNameAndCanBeTakenBack)
{
    tRandom random(2024);
    int done = 0, refused = 0;
    for (int round = 0; done < 10'000; round++) {
        ASSERT_LT(round, 4000);
        const std::string first = cGenerator(random).Text();
        const auto document = test::Open(first);
        ASSERT_NE(document, nullptr) << first;
        int steps = 0;
        for (int i = 0; i < 60; i++) {
            const std::string before = document->Text();
            const cRandomEdit edit(random, *document);
            timeline::cTextFault refusal;
            if (!document->Apply(edit.mEdits, refusal)) {
                ASSERT_EQ(document->Text(), before);
                ASSERT_TRUE(IsOfThePlan(refusal.mWhat)) << refusal.mWhat << "\n" << before;
                refused++;
                continue;
            }
            const std::string after = document->Text();
            ASSERT_EQ(KeysOf(after), edit.Wanted()) << before << "\n-----\n" << after;
            ASSERT_LE(CountChanged(LinesOf(before), LinesOf(after)), edit.Lines())
                << before << "\n-----\n"
                << after;
            steps += before == after ? 0 : 1;
            done++;
        }
        const std::string last = document->Text();
        EXPECT_EQ(first.ends_with('\n'), last.ends_with('\n'));
        for (int i = 0; i < steps; i++)
            document->Undo();
        ASSERT_EQ(document->Text(), first);
        ASSERT_FALSE(document->CanUndo());
        for (int i = 0; i < steps; i++)
            document->Redo();
        ASSERT_EQ(document->Text(), last);
        ASSERT_FALSE(document->CanRedo());
    }
    EXPECT_GT(refused, 100); // rows that are taken, copies, ends of sections
}
