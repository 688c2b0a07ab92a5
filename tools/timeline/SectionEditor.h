#pragma once

#include "tools/timeline/Document.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace timeline
{
/// Time put into a show, or taken out of it: what becomes of rows.
struct cTimeChange
{
    int mRow = 0, mCount = 0;
    bool mIsInsert = true;

    /// Where `row` comes to lie; nothing: it goes.
    std::optional<long long> RowOf(long long row) const;

    /// What becomes of one copy of a section, which begins at `start` and ends before `end`.
    enum class eFate
    {
        Stays,
        Moves, ///< as a whole
        IsCut, ///< its keys one by one, and its length
        Goes
    };
    eFate FateOf(long long start, long long end) const;
    /// Where a copy that moves or is cut begins then.
    long long StartOf(long long start) const;
};

/// Changes of a document that are about sections: their lines, and copies of their bodies.
class cSectionEditor
{
public:
    explicit cSectionEditor(cDocument &document) : mDocument(document) {}

    /// As those of cDocument.
    bool Detach(cKeyId key, cKeyId &detached, cTextFault &refusal);
    bool ChangeTime(const cTimeChange &change, cTextFault &refusal);

private:
    /// One copy of a section.
    struct cCopy
    {
        size_t mSection = 0, mPlacement = 0;
        long long mIndex = 0; ///< in its placement
        long long mStart = 0, mEnd = 0;
    };

    bool DetachCopy(const cCopy &copy, tLineId line, tLineId &detached, cTextFault &refusal);
    bool DetachOthers(const cCopy &copy, cTextFault &refusal);
    void SplitLine(const cCopy &copy, const std::string &newName);
    int InsertBody(size_t section, const std::string &head, tLineId line, tLineId &made);

    bool DetachCut(const cTimeChange &change, cTextFault &refusal);
    bool SplitSeries(const cTimeChange &change, cTextFault &refusal);
    bool MoveAll(const cTimeChange &change, cTextFault &refusal);
    void MoveSection(size_t section, const cTimeChange &change);
    void SplitBefore(const cCopy &copy);
    void CutSection(const cSection &section, const cCopy &copy, const cTimeChange &change);
    void MoveKeys(size_t section, const cTimeChange &change, long long start, long long newStart);
    std::vector<cTrack> Expected(const cTimeChange &change) const;
    bool HasRoom(const cTimeChange &change, cTextFault &refusal) const;

    std::vector<cCopy> CopiesOf(size_t section) const;
    cCopy CopyOf(cKeyId key) const;
    long long LengthOf(const cSection &section) const;
    const cSection &SectionOf(const cCopy &copy) const;
    const cPlacement &PlacementOf(const cCopy &copy) const;
    bool IsOwnPlace(const cCopy &copy) const; ///< its section's own line puts it there
    std::string FreeName(const std::string &wanted, const std::string &like) const;
    std::string Series(std::string_view line, long long start, long long count) const;
    bool Finish(const std::vector<cTrack> &expected, cTextFault &refusal);
    size_t SectionCount() const { return mDocument.mTimeline.mSections.size(); }

    cDocument &mDocument;
    tPatches mDone;             ///< of the step in hand
    std::vector<tLineId> mGone; ///< that the last step takes out
};
} // namespace timeline
