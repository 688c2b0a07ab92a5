#pragma once

#include "tools/timeline/KeyPlan.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace timeline
{
/// Writes a plan into the lines of a text.
class cKeyWriter
{
public:
    /// Both must outlive this.
    cKeyWriter(const cDocument &document, const cKeyPlan &plan) : mDocument(document), mPlan(plan)
    {}

    /// Changes the lines of `text`, which is the document's. False with the reason; what has been
    /// done by then is in `done`.
    bool Write(cText &text, tPatches &done, cTextFault &refusal);

private:
    bool WriteChange(cText &text, const cKeyPlan::cLinePlan &plan, tPatches &done,
                     cTextFault &refusal) const;
    size_t InterpolationColumn(const cBlock &block) const;

    /// A key's line while lines are being made.
    struct cStanding
    {
        int mRow = 0; ///< in its section
        tLineId mLine = kNoLine;
        int mNumber = 0; ///< of the document's line that it is, or that it has been put beside
    };

    /// Where the new keys of one track and section go.
    struct cPlaceOfKeys
    {
        tLineId mTrackLine = kNoLine;  ///< kNoLine: still to be made
        tLineId mLineBefore = kNoLine; ///< of the track line that is to be made; kNoLine: the top
        int mNumber = 0;               ///< of the one or the other
        std::string mIndent;           ///< of the track line
        signed char mDefaultType = SYNC_KEY_HOLD;
        size_t mInterpolationColumn = 0;
        std::vector<cStanding> mKeys;
    };
    void FindPlaces();
    void MakeBlocks(cText &text, tPatches &done);
    cPlaceOfKeys PlaceInBlock(const cKeyPlan::cNewLine &line) const;
    cPlaceOfKeys PlaceOfNewBlock(const cKeyPlan::cNewLine &line) const;
    bool WriteNew(cText &text, const cKeyPlan::cNewLine &line, tPatches &done, cTextFault &refusal);
    std::string ContentOfNew(const cText &text, const cKeyPlan::cNewLine &line,
                             const cPlaceOfKeys &place, const cStanding &like) const;
    static bool IsAligned(const cText &text, const cPlaceOfKeys &place, const cStanding &key);
    std::string WordOfNew(const cKeyPlan::cNewLine &line, int number) const;

    const cDocument &mDocument;
    const cKeyPlan &mPlan;
    using tPlaceKey = std::tuple<size_t, int, std::string>; ///< section, block, track
    std::map<tPlaceKey, cPlaceOfKeys> mPlaces;
};
} // namespace timeline
