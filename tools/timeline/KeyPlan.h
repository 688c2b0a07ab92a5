#pragma once

#include "tools/timeline/Document.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace timeline
{
/// What one cEdits means: which tracks become what, and which lines change, come and go for it. How
/// they are written is cKeyWriter's; neither knows of the other, so that comparing the tracks of
/// the written text with those of the plan finds what went wrong.
class cKeyPlan
{
public:
    /// What becomes of a line.
    struct cLinePlan
    {
        tLineId mLine = kNoLine;
        const cDocument::cOrigin *mOrigin = nullptr;
        int mRow = 0; ///< in its section
        float mValue = 0.0f;
        signed char mType = 0;
        std::string mWord;       ///< for the value; empty: it stays
        bool mIsDeleted = false; ///< on purpose, or since it gets another place
    };

    /// A line to be made.
    struct cNewLine
    {
        std::string mTrack;
        int mShowRow = 0, mRow = 0; ///< of the show, in its section
        float mValue = 0.0f;
        signed char mType = 0;
        std::string mWord;
        size_t mSection = 0;
        int mBlock = -1; ///< -1: the section has none of this track yet
        bool mIsDropped = false;
    };

    /// Both must outlive this. The document must not change before the plan is written.
    cKeyPlan(const cDocument &document, const cEdits &edits);

    /// False with the reason where the edits can't be done.
    bool Make(cTextFault &refusal);

    /// The tracks that the edits change, as they are to become.
    std::vector<cTrack> Expected() const;
    const std::map<tLineId, cLinePlan> &Lines() const { return mPlans; }
    /// Of line `number`, from 1; null: it stays.
    const cLinePlan *PlanOf(int number) const
    {
        return mPlanOfLine[size_t(mDocument.IdOf(number))];
    }
    const std::vector<cNewLine> &NewLines() const { return mNew; } ///< by their rows

private:
    /// A key as it is to be: of which line.
    struct cPlanned
    {
        sync_key mKey;
        tLineId mLine = kNoLine; ///< of the document; kNoLine: of mNew
        int mNew = -1;
        bool mIsEdited = false;
    };
    using tPlanned = std::vector<cPlanned>;

    bool PlanDeletion(cKeyId id, cTextFault &refusal);
    bool PlanChange(const cKeyChange &change, cTextFault &refusal);
    bool PlanNew(const cNewKey &key, cTextFault &refusal);
    bool PlanRow(const cKeyChange &change, cLinePlan &plan, cTextFault &refusal);
    bool MakePlan(cKeyId id, cLinePlan &plan, cTextFault &refusal) const;
    bool AddPlan(const cLinePlan &plan, cTextFault &refusal);
    bool ResolveCollisions(cTextFault &refusal);
    bool ResolveCollision(const std::string &track, cPlanned &first, cPlanned &second,
                          cTextFault &refusal);
    void Drop(const cPlanned &key);
    tPlanned PlannedKeys(const cShowTrack &track) const;

    bool FindHome(cNewLine &line, cTextFault &refusal) const;
    int BlockFor(const cSection &section, const std::string &track, int row) const;
    signed char TypeBefore(const std::string &track, int row) const;

    const cDocument &mDocument;
    const cEdits &mEdits;
    std::map<tLineId, cLinePlan> mPlans;
    std::vector<cLinePlan *> mPlanOfLine; ///< the same by line; null: it stays
    std::vector<cNewLine> mNew;
    std::map<std::string, tPlanned> mTracks; ///< that change, as they are to be
};
} // namespace timeline
