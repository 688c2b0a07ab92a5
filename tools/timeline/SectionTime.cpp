#include "show/Time.h"
#include "tools/timeline/KeyLine.h"
#include "tools/timeline/Lexer.h"
#include "tools/timeline/SectionEditor.h"

#include <algorithm>
#include <limits>

// Time put in and taken out: the part of cSectionEditor that moves sections and keys.
namespace timeline
{
std::optional<long long> cTimeChange::RowOf(long long row) const
{
    if (row < mRow)
        return row;
    if (mIsInsert)
        return row + mCount;
    if (row < static_cast<long long>(mRow) + mCount)
        return std::nullopt;
    return row - mCount;
}

cTimeChange::eFate cTimeChange::FateOf(long long start, long long end) const
{
    const long long rangeEnd = static_cast<long long>(mRow) + (mIsInsert ? 0 : mCount);
    if (start >= rangeEnd)
        return eFate::Moves;
    if (end <= mRow)
        return eFate::Stays;
    const bool isInside = !mIsInsert && start >= mRow && end <= rangeEnd;
    return isInside ? eFate::Goes : eFate::IsCut;
}

long long cTimeChange::StartOf(long long start) const { return RowOf(start).value_or(mRow); }

// In three steps: copies that are cut get lines of their own; what moves and what stays are no
// longer in one series; then everything moves.
bool cSectionEditor::ChangeTime(const cTimeChange &change, cTextFault &refusal)
{
    if (!mDocument.mFixed.empty()) {
        refusal = {{}, mDocument.mFixed};
        return false;
    }
    if (!HasRoom(change, refusal))
        return false;
    mDocument.Begin();
    const bool isDone =
        DetachCut(change, refusal) && SplitSeries(change, refusal) && MoveAll(change, refusal);
    mDocument.End(isDone);
    return isDone;
}

bool cSectionEditor::HasRoom(const cTimeChange &change, cTextFault &refusal) const
{
    if (change.mCount <= 0) {
        refusal = {{}, "expected a length above 0, found " + std::to_string(change.mCount)};
        return false;
    }
    const long long most = std::numeric_limits<int>::max();
    long long last = static_cast<long long>(change.mRow) + change.mCount;
    for (size_t i = 1; i < SectionCount(); i++)
        for (const cCopy &copy : CopiesOf(i))
            last = std::max(last, copy.mEnd + change.mCount);
    for (const cShowTrack &track : mDocument.mTracks)
        if (!track.mKeys.empty())
            last =
                std::max(last, static_cast<long long>(track.mKeys.back().mKey.row) + change.mCount);
    if (last <= most)
        return true;
    refusal = {{}, "expected rows that fit into 32 bits, found " + std::to_string(last)};
    return false;
}

bool cSectionEditor::DetachCut(const cTimeChange &change, cTextFault &refusal)
{
    for (size_t i = 1; i < SectionCount(); i++) {
        const std::vector<cCopy> copies = CopiesOf(i);
        const auto cut = std::find_if(copies.begin(), copies.end(), [&](const cCopy &copy) {
            return change.FateOf(copy.mStart, copy.mEnd) == cTimeChange::eFate::IsCut;
        });
        if (copies.size() < 2 || cut == copies.end())
            continue;
        tLineId ignored = kNoLine;
        const bool isDone = IsOwnPlace(*cut) && PlacementOf(*cut).mCount == 1
                                ? DetachOthers(*cut, refusal)
                                : DetachCopy(*cut, kNoLine, ignored, refusal);
        return isDone && DetachCut(change, refusal); // sections have other numbers now
    }
    return true;
}

bool cSectionEditor::SplitSeries(const cTimeChange &change, cTextFault &refusal)
{
    for (size_t i = 1; i < SectionCount(); i++) {
        const std::vector<cCopy> copies = CopiesOf(i);
        for (size_t j = 1; j < copies.size(); j++) {
            const cCopy &copy = copies[j], &before = copies[j - 1];
            if (copy.mPlacement != before.mPlacement ||
                change.FateOf(copy.mStart, copy.mEnd) == change.FateOf(before.mStart, before.mEnd))
                continue;
            SplitBefore(copy);
            return Finish({}, refusal) && SplitSeries(change, refusal);
        }
    }
    return true;
}

// The series ends before `copy`, and another one begins with it.
void cSectionEditor::SplitBefore(const cCopy &copy)
{
    cText &text = mDocument.mText;
    const cPlacement &placement = PlacementOf(copy);
    const int index = placement.mPlace.mLine - 1;
    const std::string line(text.Content(index));
    std::string second(WithoutComment(line));
    if (IsOwnPlace(copy))
        second = "repeat " + QuoteName(SectionOf(copy).mName) + " at " +
                 std::string(OptionOf(line, "at")) + " every " +
                 std::string(OptionOf(line, "every")) + " times 1";
    const int behind = IsOwnPlace(copy) ? mDocument.LastLineOf(copy.mSection) : index + 1;
    text.Insert(behind, Series(second, copy.mStart, placement.mCount - copy.mIndex), mDone);
    text.Replace(index, Series(line, placement.mStart, copy.mIndex), mDone);
}

bool cSectionEditor::MoveAll(const cTimeChange &change, cTextFault &refusal)
{
    const std::vector<cTrack> expected = Expected(change);
    // Lines that go are noted and taken out last, so that numbers stay good.
    mGone.clear();
    MoveKeys(0, change, 0, 0);
    for (size_t i = 1; i < SectionCount(); i++)
        MoveSection(i, change);
    for (const tLineId line : mGone)
        mDocument.mText.Remove(mDocument.mText.Find(line), mDone);
    return Finish(expected, refusal);
}

void cSectionEditor::MoveSection(size_t index, const cTimeChange &change)
{
    cText &text = mDocument.mText;
    const cSection &section = mDocument.mTimeline.mSections[index];
    for (const cCopy &copy : CopiesOf(index)) {
        const cTimeChange::eFate fate = change.FateOf(copy.mStart, copy.mEnd);
        if (copy.mIndex > 0 || fate == cTimeChange::eFate::Stays)
            continue; // a series is moved by its first copy
        const int line = PlacementOf(copy).mPlace.mLine - 1;
        const std::string content(text.Content(line));
        if (fate == cTimeChange::eFate::Goes && !IsOwnPlace(copy)) {
            mGone.push_back(text.At(line).mId);
        } else if (fate == cTimeChange::eFate::Goes) {
            text.Replace(line,
                         RemoveOption(RemoveOption(RemoveOption(content, "times"), "every"), "at"),
                         mDone);
        } else {
            const long long start = change.StartOf(copy.mStart);
            text.Replace(line, Series(content, start, PlacementOf(copy).mCount), mDone);
            if (fate == cTimeChange::eFate::IsCut)
                CutSection(section, copy, change);
        }
    }
}

// The only copy of its section.
void cSectionEditor::CutSection(const cSection &section, const cCopy &copy,
                                const cTimeChange &change)
{
    const long long start = change.StartOf(copy.mStart);
    MoveKeys(copy.mSection, change, copy.mStart, start);
    if (!section.mLength)
        return;
    // To where its end comes, or to where time goes on.
    const long long length = change.RowOf(copy.mEnd).value_or(change.mRow) - start;
    const std::string line(mDocument.ContentOf(section.mLine));
    const std::string time =
        FormatRowLike(int(length), OptionOf(line, "length"), mDocument.Tempo());
    mDocument.mText.Replace(section.mLine - 1, SetOption(line, "length", time), mDone);
}

// Of a section that is put once, at `start`, and will be at `newStart`.
void cSectionEditor::MoveKeys(size_t index, const cTimeChange &change, long long start,
                              long long newStart)
{
    cText &text = mDocument.mText;
    for (const cBlock &block : mDocument.mTimeline.mSections[index].mBlocks) {
        for (size_t i = 0; i < block.mKeys.size(); i++) {
            const cKey &key = block.mKeys[i];
            const std::optional<long long> row = change.RowOf(start + key.mRow);
            const int line = key.mPlace.mLine - 1;
            if (!row) {
                mGone.push_back(text.At(line).mId);
            } else if (*row - newStart != key.mRow) {
                const std::string content(text.Content(line));
                const std::string time = FormatRowLike(
                    int(*row - newStart), WordOf(content, kTimeWord), mDocument.Tempo());
                text.Replace(line,
                             ReplaceWord(content, kTimeWord, time,
                                         mDocument.IsAligned(block, i, kValueWord)),
                             mDone);
            }
        }
    }
}

// A key goes where its row goes, but with its section where that moves, stays or goes as a whole:
// then a key on the very end of a section stays with it.
std::vector<cTrack> cSectionEditor::Expected(const cTimeChange &change) const
{
    std::vector<std::vector<cCopy>> copies;
    for (size_t i = 0; i < SectionCount(); i++)
        copies.push_back(CopiesOf(i));
    std::vector<cTrack> tracks;
    for (const cShowTrack &track : mDocument.mTracks) {
        tracks.push_back({track.mName, {}});
        for (const cShowKey &key : track.mKeys) {
            const size_t section = size_t(mDocument.OriginOf(key.mId.mLine)->mSection);
            const cCopy &copy = copies[section][size_t(key.mId.mCopy)];
            const cTimeChange::eFate fate =
                section == 0 ? cTimeChange::eFate::IsCut : change.FateOf(copy.mStart, copy.mEnd);
            std::optional<long long> row = key.mKey.row;
            if (fate == cTimeChange::eFate::IsCut)
                row = change.RowOf(*row);
            else if (fate == cTimeChange::eFate::Moves)
                row = *row + change.StartOf(copy.mStart) - copy.mStart;
            else if (fate == cTimeChange::eFate::Goes)
                row = std::nullopt;
            if (row)
                tracks.back().mKeys.push_back({int(*row), key.mKey.value, key.mKey.type});
        }
        std::stable_sort(tracks.back().mKeys.begin(), tracks.back().mKeys.end(),
                         [](const sync_key &a, const sync_key &b) { return a.row < b.row; });
    }
    return tracks;
}
} // namespace timeline
