#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace timeline
{
/// Names a line for as long as it is there, through edits, undo and redo: its number may change,
/// its identity does not. No two lines of a text ever have the same one.
using tLineId = int;
inline constexpr tLineId kNoLine = -1;

struct cTextLine
{
    tLineId mId = kNoLine;
    std::string mBytes; ///< with its line end, which the last line may lack

    std::string_view Content() const; ///< without "\n" or "\r\n"
    std::string_view End() const;     ///< "\n", "\r\n" or ""
};

/// Lines that stand where others stood. It can be applied and taken back.
struct cPatch
{
    int mFirst = 0; ///< from 0
    std::vector<cTextLine> mBefore, mAfter;
};

/// What one edit did to a text, in its order.
using tPatches = std::vector<cPatch>;

/// An author's text, line by line and byte by byte. Lines are counted from 0 here. Every change
/// notes in `done` how it is taken back, leaves all other bytes, and keeps what is special about
/// the end of the text: a last line without line end stays one.
class cText
{
public:
    explicit cText(std::string_view bytes = "");

    std::string Bytes() const;
    int Count() const { return int(mOrder.size()); }
    const cTextLine &At(int index) const { return mLines[size_t(mOrder[size_t(index)])]; }
    std::string_view Content(int index) const { return At(index).Content(); }
    /// Where the line `id` stands now; -1 when it is not there.
    int Find(tLineId id) const;
    /// Above all identities that lines have or had.
    tLineId EndOfIds() const { return mNextId; }
    /// Makes Find quick again after lines have come and gone.
    void Settle() { mPlaces.clear(); }

    /// Gives line `index` another content; its line end and its identity stay.
    void Replace(int index, std::string_view content, tPatches &done);
    /// Makes a new line before line `index` (Count() for the end), with its neighbour's line end.
    tLineId Insert(int index, std::string_view content, tPatches &done);
    void Remove(int index, tPatches &done);
    /// Makes this text `bytes`. Lines that are in both keep their identity.
    void Become(std::string_view bytes, tPatches &done);

    void Undo(const tPatches &patches);
    void Redo(const tPatches &patches);

private:
    void Do(cPatch patch, tPatches &done);
    void Exchange(int first, size_t count, const std::vector<cTextLine> &lines);
    void WriteDownPlaces() const;
    cTextLine NewLine(std::string_view bytes) { return {mNextId++, std::string(bytes)}; }
    std::string_view LineEndFor(int index) const;

    std::deque<cTextLine> mLines; ///< by their identity, those that have gone too
    std::vector<tLineId> mOrder;  ///< of those that are there
    tLineId mNextId = 0;
    mutable std::vector<int> mPlaces; ///< by identity, as they were; empty: not written down yet
    mutable int mMoved = 0;           ///< how many lines have come or gone since
};
} // namespace timeline
