#include "tools/timeline/SectionEditor.h"

#include "show/Time.h"
#include "tools/support/Faults.h"
#include "tools/timeline/KeyLine.h"
#include "tools/timeline/Lexer.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace timeline
{
namespace
{
bool Refuse(cTextFault &refusal, int line, const std::string &why)
{
    refusal = {{line, line > 0 ? 1 : 0}, why};
    return false;
}

// A copy of a section's lines must not declare names and tracks once more.
bool IsDeclaration(std::string_view line)
{
    return WordOf(line, 1) == "=" || WordOf(line, 0) == "tracks";
}

// Whether a blank line stands above line `index` and its comments.
bool StandsApart(const cText &text, int index)
{
    const auto isBlank = [&](int i) {
        return text.Content(i).find_first_not_of(" \t\r") == std::string_view::npos;
    };
    index--;
    while (index >= 0 && CountWords(text.Content(index)) == 0 && !isBlank(index))
        index--;
    return index >= 0 && isBlank(index);
}

std::string Rename(std::string_view line, const std::string &name)
{
    return ReplaceWord(line, 1, QuoteName(name), false);
}
} // namespace

// Copies
// ---------------------------------------------------------------------------------------------

const cSection &cSectionEditor::SectionOf(const cCopy &copy) const
{
    return mDocument.mTimeline.mSections[copy.mSection];
}

const cPlacement &cSectionEditor::PlacementOf(const cCopy &copy) const
{
    return SectionOf(copy).mPlacements[copy.mPlacement];
}

bool cSectionEditor::IsOwnPlace(const cCopy &copy) const
{
    return PlacementOf(copy).mPlace.mLine == SectionOf(copy).mLine;
}

// Up to its last key where it says none.
long long cSectionEditor::LengthOf(const cSection &section) const
{
    long long length = section.mLength.value_or(0);
    for (const cBlock &block : section.mBlocks)
        for (const cKey &key : block.mKeys)
            if (!section.mLength)
                length = std::max(length, key.mRow + 1LL);
    return length;
}

std::vector<cSectionEditor::cCopy> cSectionEditor::CopiesOf(size_t index) const
{
    const cSection &section = mDocument.mTimeline.mSections[index];
    const long long length = LengthOf(section);
    std::vector<cCopy> copies;
    for (size_t i = 0; i < section.mPlacements.size(); i++) {
        const cPlacement &placement = section.mPlacements[i];
        for (long long j = 0; j < placement.mCount; j++) {
            const long long start = placement.mStart + j * placement.mStep;
            copies.push_back({index, i, j, start, start + length});
        }
    }
    return copies;
}

// Of a key that is there.
cSectionEditor::cCopy cSectionEditor::CopyOf(cKeyId key) const
{
    const size_t section = size_t(mDocument.OriginOf(key.mLine)->mSection);
    return CopiesOf(section)[size_t(key.mCopy)];
}

// A name that no section has: `wanted` where it is free, else `like` with a number.
std::string cSectionEditor::FreeName(const std::string &wanted, const std::string &like) const
{
    const auto isTaken = [&](const std::string &name) {
        return std::any_of(mDocument.mTimeline.mSections.begin(),
                           mDocument.mTimeline.mSections.end(),
                           [&](const cSection &section) { return section.mName == name; });
    };
    std::string name = wanted;
    for (int number = 2; isTaken(name); number++)
        name = like + "-" + std::to_string(number);
    return name;
}

// `line` with a first copy at `start` and `count` copies in all.
std::string cSectionEditor::Series(std::string_view line, long long start, long long count) const
{
    const std::string_view at = OptionOf(line, "at");
    const std::string time = FormatRowLike(int(start), at.empty() ? "0:0" : at, mDocument.Tempo());
    std::string changed = time == at ? std::string(line) : SetOption(line, "at", time);
    if (count == 1)
        return RemoveOption(RemoveOption(changed, "times"), "every");
    return SetOption(changed, "times", std::to_string(count));
}

bool cSectionEditor::Finish(const std::vector<cTrack> &expected, cTextFault &refusal)
{
    return mDocument.Finish(std::exchange(mDone, {}), expected, refusal);
}

// Detach
// ---------------------------------------------------------------------------------------------

bool cSectionEditor::Detach(cKeyId key, cKeyId &detached, cTextFault &refusal)
{
    if (!mDocument.mFixed.empty())
        return Refuse(refusal, 0, mDocument.mFixed);
    if (!mDocument.FindKey(key))
        return Refuse(refusal, 0, "expected a key that is still there, found none");
    const cCopy copy = CopyOf(key);
    if (cDocument::CopiesOf(SectionOf(copy)) == 1)
        return Refuse(refusal, mDocument.NumberOf(key.mLine),
                      "expected a key of a section that is put several times, found one that "
                      "stands alone");
    detached = {key.mLine, 0};
    if (IsOwnPlace(copy) && PlacementOf(copy).mCount == 1)
        return DetachOthers(copy, refusal);
    return DetachCopy(copy, key.mLine, detached.mLine, refusal);
}

// The copy becomes a section of its own, beside the one it was of: a pattern that is put once, or,
// where the section has a place of its own, one with a place, so that rulers go on showing it.
bool cSectionEditor::DetachCopy(const cCopy &copy, tLineId line, tLineId &detached,
                                cTextFault &refusal)
{
    const cSection &section = SectionOf(copy);
    const std::string &shown = PlacementOf(copy).mName;
    const std::string name = FreeName(section.mIsPattern ? section.mName : shown, section.mName);
    const std::string_view own = WithoutComment(mDocument.ContentOf(section.mLine));
    std::string head = RemoveOption(RemoveOption(Rename(own, name), "times"), "every");
    if (!section.mIsPattern)
        head = Series(head, copy.mStart, 1);
    SplitLine(copy, section.mIsPattern ? name : "");
    const int end = InsertBody(copy.mSection, head, line, detached);
    const cPlacement &placement = PlacementOf(copy);
    const long long after = placement.mCount - 1 - copy.mIndex;
    if (IsOwnPlace(copy) && copy.mIndex > 0 && after > 0) {
        const std::string sample = "repeat " + QuoteName(section.mName) + " at " +
                                   std::string(OptionOf(own, "at")) + " every " +
                                   std::string(OptionOf(own, "every")) + " times 1";
        mDocument.mText.Insert(end, Series(sample, copy.mStart + placement.mStep, after), mDone);
    }
    return Finish({}, refusal);
}

// Takes the copy out of the series that its line says. With `newName` a section of that name is put
// there instead.
void cSectionEditor::SplitLine(const cCopy &copy, const std::string &newName)
{
    const cPlacement &placement = PlacementOf(copy);
    cText &text = mDocument.mText;
    const int index = placement.mPlace.mLine - 1;
    const std::string line(text.Content(index)), plain(WithoutComment(line));
    const long long before = copy.mIndex, after = placement.mCount - 1 - copy.mIndex;
    const long long next = copy.mStart + placement.mStep;
    if (IsOwnPlace(copy)) {
        text.Replace(
            index, before > 0 ? Series(line, placement.mStart, before) : Series(line, next, after),
            mDone);
        return;
    }
    std::vector<std::string> lines;
    if (before > 0)
        lines.push_back(Series(lines.empty() ? line : plain, placement.mStart, before));
    if (!newName.empty())
        lines.push_back(Series(Rename(lines.empty() ? line : plain, newName), copy.mStart, 1));
    if (after > 0)
        lines.push_back(Series(lines.empty() ? line : plain, next, after));
    if (lines.empty())
        return text.Remove(index, mDone);
    text.Replace(index, lines[0], mDone);
    for (size_t i = 1; i < lines.size(); i++)
        text.Insert(index + int(i), lines[i], mDone);
}

// Puts a copy of the section's body behind it, under the line `head`; `made` is the copy of `line`.
// Answers where it ends. What follows a section's last line is another section, a repeat or
// nothing, so the new lines take nothing over.
int cSectionEditor::InsertBody(size_t index, const std::string &head, tLineId line, tLineId &made)
{
    cText &text = mDocument.mText;
    const int begin =
        mDocument.mTimeline.mSections[index].mLine; // its line's number: the next index
    const int end = mDocument.LastLineOf(index);
    std::vector<std::pair<std::string, bool>> lines; // and whether it is `line`
    for (int i = begin; i < end; i++)
        if (!IsDeclaration(text.Content(i)))
            lines.push_back({std::string(text.Content(i)), text.At(i).mId == line});
    int at = end;
    if (StandsApart(text, begin - 1))
        text.Insert(at++, "", mDone);
    text.Insert(at++, head, mDone);
    for (const auto &[content, isLine] : lines) {
        const tLineId id = text.Insert(at++, content, mDone);
        if (isLine)
            made = id;
    }
    return at;
}

// The section's own place can't be taken from it. It keeps that one alone, and all its other copies
// become those of another section with the same body.
bool cSectionEditor::DetachOthers(const cCopy &copy, cTextFault &refusal)
{
    const cSection section = SectionOf(copy);
    const cPlacement &first = section.mPlacements[1];
    const std::string name = FreeName(first.mName, section.mName);
    cText &text = mDocument.mText;
    std::string head = Rename(WithoutComment(mDocument.ContentOf(section.mLine)), name);
    head = SetOption(head, "at", OptionOf(mDocument.ContentOf(first.mPlace.mLine), "at"));
    for (const char *option : {"every", "times"}) {
        const std::string value(OptionOf(mDocument.ContentOf(first.mPlace.mLine), option));
        head = value.empty() ? RemoveOption(head, option) : SetOption(head, option, value);
    }
    for (size_t i = section.mPlacements.size() - 1; i >= 2; i--) {
        const cPlacement &placement = section.mPlacements[i];
        const std::string line(mDocument.ContentOf(placement.mPlace.mLine));
        std::string renamed = Rename(line, name);
        if (placement.mName != name)
            renamed = SetOption(renamed, "as", QuoteName(placement.mName));
        text.Replace(placement.mPlace.mLine - 1, renamed, mDone);
    }
    text.Remove(first.mPlace.mLine - 1, mDone);
    tLineId ignored = kNoLine;
    InsertBody(copy.mSection, head, kNoLine, ignored);
    return Finish({}, refusal);
}
} // namespace timeline
