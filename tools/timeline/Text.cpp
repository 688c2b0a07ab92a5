#include "tools/timeline/Text.h"

#include <algorithm>

namespace timeline
{
namespace
{
const int maximumMoved = 5000; // lines; searching around a place is quicker than writing down all
const size_t maximumCompared = 4'000'000; // pairs of lines; beyond, all of them count as new

std::vector<std::string_view> SplitLines(std::string_view bytes)
{
    std::vector<std::string_view> lines;
    while (!bytes.empty()) {
        const size_t end = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
        lines.push_back(bytes.substr(0, end));
        bytes.remove_prefix(end);
    }
    return lines;
}

size_t EndLength(std::string_view line)
{
    if (line.ends_with("\r\n"))
        return 2;
    return line.ends_with('\n') ? 1 : 0;
}

/// Which lines two stretches of text have in common.
class cMatch
{
public:
    // All of `before`, and those of `after` from `first` to before `end`.
    cMatch(const std::vector<cTextLine> &before, const std::vector<std::string_view> &after,
           size_t first, size_t end)
        : mBefore(before), mAfter(after), mFirst(first), mRows(before.size()), mColumns(end - first)
    {
        if (mRows * mColumns <= maximumCompared)
            Fill();
    }

    // Gives the lines of `made`, one for each of the new text, the identity of their equals.
    void Keep(std::vector<cTextLine> &made) const
    {
        if (mLengths.empty())
            return;
        for (size_t i = 0, j = 0; i < mRows && j < mColumns;) {
            if (IsEqual(i, j))
                made[j++].mId = mBefore[i++].mId;
            else if (Length(i + 1, j) >= Length(i, j + 1))
                i++;
            else
                j++;
        }
    }

private:
    bool IsEqual(size_t i, size_t j) const { return mBefore[i].mBytes == mAfter[mFirst + j]; }

    // Of the longest common part from line i and line j on.
    int Length(size_t i, size_t j) const { return mLengths[i * (mColumns + 1) + j]; }

    void Fill()
    {
        mLengths.assign((mRows + 1) * (mColumns + 1), 0);
        for (size_t i = mRows; i-- > 0;)
            for (size_t j = mColumns; j-- > 0;)
                mLengths[i * (mColumns + 1) + j] =
                    IsEqual(i, j) ? Length(i + 1, j + 1) + 1
                                  : std::max(Length(i + 1, j), Length(i, j + 1));
    }

    const std::vector<cTextLine> &mBefore;
    const std::vector<std::string_view> &mAfter;
    const size_t mFirst, mRows, mColumns;
    std::vector<int> mLengths;
};
} // namespace

std::string_view cTextLine::Content() const
{
    return std::string_view(mBytes).substr(0, mBytes.size() - EndLength(mBytes));
}

std::string_view cTextLine::End() const
{
    return std::string_view(mBytes).substr(mBytes.size() - EndLength(mBytes));
}

cText::cText(std::string_view bytes)
{
    for (std::string_view line : SplitLines(bytes)) {
        mOrder.push_back(int(mLines.size()));
        mLines.push_back(NewLine(line));
    }
}

std::string cText::Bytes() const
{
    std::string bytes;
    for (tLineId id : mOrder)
        bytes += mLines[size_t(id)].mBytes;
    return bytes;
}

// Where the line was when places were last written down, or so many lines around it as have come
// and gone since.
int cText::Find(tLineId id) const
{
    if (id < 0 || size_t(id) >= mLines.size())
        return -1;
    if (mPlaces.size() < mLines.size() || mMoved > maximumMoved)
        WriteDownPlaces();
    const int place = mPlaces[size_t(id)];
    for (int distance = 0; place >= 0 && distance <= mMoved; distance++)
        for (const int index : {place - distance, place + distance})
            if (index >= 0 && index < Count() && mOrder[size_t(index)] == id)
                return index;
    return -1;
}

void cText::WriteDownPlaces() const
{
    mPlaces.assign(mLines.size(), -1);
    for (size_t i = 0; i < mOrder.size(); i++)
        mPlaces[size_t(mOrder[i])] = int(i);
    mMoved = 0;
}

void cText::Replace(int index, std::string_view content, tPatches &done)
{
    const cTextLine &line = At(index);
    Do({index, {line}, {{line.mId, std::string(content) + std::string(line.End())}}}, done);
}

tLineId cText::Insert(int index, std::string_view content, tPatches &done)
{
    const std::string end(LineEndFor(index));
    const bool isBehindOpenEnd = index == Count() && index > 0 && At(index - 1).End().empty();
    cTextLine line = NewLine(content);
    const tLineId id = line.mId;
    if (isBehindOpenEnd) {
        const cTextLine &last = At(index - 1);
        Do({index - 1, {last}, {{last.mId, last.mBytes + end}, line}}, done);
    } else {
        line.mBytes += end;
        Do({index, {}, {line}}, done);
    }
    return id;
}

void cText::Remove(int index, tPatches &done)
{
    const cTextLine &line = At(index);
    const bool isOpenEnd = line.End().empty() && index > 0;
    if (!isOpenEnd)
        return Do({index, {line}, {}}, done);
    const cTextLine &before = At(index - 1);
    Do({index - 1, {before, line}, {{before.mId, std::string(before.Content())}}}, done);
}

void cText::Become(std::string_view bytes, tPatches &done)
{
    const std::vector<std::string_view> lines = SplitLines(bytes);
    size_t first = 0, beforeEnd = mOrder.size(), afterEnd = lines.size();
    while (first < beforeEnd && first < afterEnd && At(int(first)).mBytes == lines[first])
        first++;
    while (beforeEnd > first && afterEnd > first &&
           At(int(beforeEnd) - 1).mBytes == lines[afterEnd - 1]) {
        beforeEnd--;
        afterEnd--;
    }
    if (first == beforeEnd && first == afterEnd)
        return;
    cPatch patch{int(first), {}, {}};
    for (size_t i = first; i < beforeEnd; i++)
        patch.mBefore.push_back(At(int(i)));
    for (size_t i = first; i < afterEnd; i++)
        patch.mAfter.push_back(NewLine(lines[i]));
    cMatch(patch.mBefore, lines, first, afterEnd).Keep(patch.mAfter);
    Do(std::move(patch), done);
}

void cText::Undo(const tPatches &patches)
{
    for (auto patch = patches.rbegin(); patch != patches.rend(); ++patch)
        Exchange(patch->mFirst, patch->mAfter.size(), patch->mBefore);
}

void cText::Redo(const tPatches &patches)
{
    for (const cPatch &patch : patches)
        Exchange(patch.mFirst, patch.mBefore.size(), patch.mAfter);
}

void cText::Do(cPatch patch, tPatches &done)
{
    Exchange(patch.mFirst, patch.mBefore.size(), patch.mAfter);
    done.push_back(std::move(patch));
}

void cText::Exchange(int first, size_t count, const std::vector<cTextLine> &lines)
{
    std::vector<tLineId> ids;
    for (const cTextLine &line : lines) {
        const size_t id = size_t(line.mId);
        mLines.resize(std::max(mLines.size(), id + 1));
        mLines[id] = line;
        ids.push_back(line.mId);
    }
    const auto begin = mOrder.begin() + first;
    if (count == ids.size()) {
        std::copy(ids.begin(), ids.end(), begin);
    } else {
        mOrder.erase(begin, begin + long(count));
        mOrder.insert(mOrder.begin() + first, ids.begin(), ids.end());
    }
    if (mPlaces.empty())
        return;
    mMoved += int(std::max(count, ids.size()));
    mPlaces.resize(mLines.size(), -1);
    for (size_t i = 0; i < ids.size(); i++)
        mPlaces[size_t(ids[i])] = first + int(i);
}

// That of the line before, else of the one after: a text may have several kinds.
std::string_view cText::LineEndFor(int index) const
{
    for (int i = std::min(index, Count()) - 1; i >= 0 && i >= index - 2; i--)
        if (!At(i).End().empty())
            return At(i).End();
    return index < Count() && !At(index).End().empty() ? At(index).End() : "\n";
}
} // namespace timeline
