#include "tools/timeline/KeyPlan.h"

#include "show/Time.h"
#include "tools/support/Faults.h"
#include "tools/timeline/KeyLine.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>

namespace timeline
{
namespace
{
bool Refuse(cTextFault &refusal, int line, int column, const std::string &why)
{
    refusal = {{line, column}, why};
    return false;
}

bool FitsRow(long long row)
{
    return row >= std::numeric_limits<int>::min() && row <= std::numeric_limits<int>::max();
}

// A row that does not fit is found when the text is compiled.
int ToRow(long long row)
{
    return int(std::clamp<long long>(row, std::numeric_limits<int>::min(),
                                     std::numeric_limits<int>::max()));
}

bool IsSameValue(float a, float b)
{
    return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
}

std::string InLine(int line) { return "line " + std::to_string(line); }

/// A place for a new key: how well it suits.
struct cFit
{
    bool mHasTrack = false; ///< the section has keys of the track
    bool mIsInside = false; ///< not on the section's very end
    long long mStart = 0;   ///< of the section; the whole show begins before all

    auto operator<=>(const cFit &) const = default;
};
} // namespace

cKeyPlan::cKeyPlan(const cDocument &document, const cEdits &edits)
    : mDocument(document), mEdits(edits), mPlanOfLine(size_t(document.mText.EndOfIds()), nullptr)
{}

bool cKeyPlan::Make(cTextFault &refusal)
{
    for (const cKeyId &id : mEdits.mDeleted)
        if (!PlanDeletion(id, refusal))
            return false;
    for (const cKeyChange &change : mEdits.mChanges)
        if (!PlanChange(change, refusal))
            return false;
    for (const cNewKey &key : mEdits.mNew)
        if (!PlanNew(key, refusal))
            return false;
    std::stable_sort(mNew.begin(), mNew.end(),
                     [](const cNewLine &a, const cNewLine &b) { return a.mShowRow < b.mShowRow; });
    return ResolveCollisions(refusal);
}

// A plan that changes nothing yet.
bool cKeyPlan::MakePlan(cKeyId id, cLinePlan &plan, cTextFault &refusal) const
{
    const cDocument::cOrigin *origin = mDocument.OriginOf(id.mLine);
    if (!origin || !mDocument.FindKey(id))
        return Refuse(refusal, 0, 0, "expected a key that is still there, found none");
    const cSection &section = mDocument.SectionOf(*origin);
    const cKey &key = mDocument.KeyOf(*origin);
    const int copies = cDocument::CopiesOf(section);
    if (copies > 1 && !mEdits.mPattern)
        return Refuse(refusal, key.mPlace.mLine, key.mPlace.mColumn,
                      "expected a key of its own, found one of section " +
                          tools::Quote(section.mName) + " (" + InLine(section.mLine) +
                          "), which is put " + std::to_string(copies) + " times");
    plan = {id.mLine, origin, key.mRow, key.mValue, key.mType, "", false};
    return true;
}

// Of two copies of one line both may be named, where they are to change alike.
bool cKeyPlan::AddPlan(const cLinePlan &plan, cTextFault &refusal)
{
    const auto [entry, isNew] = mPlans.emplace(plan.mLine, plan);
    const cLinePlan &other = entry->second;
    const bool isSame = other.mRow == plan.mRow && IsSameValue(other.mValue, plan.mValue) &&
                        other.mType == plan.mType && other.mIsDeleted == plan.mIsDeleted;
    const cPlace &place = mDocument.KeyOf(*plan.mOrigin).mPlace;
    if (!isNew && !isSame)
        return Refuse(refusal, place.mLine, place.mColumn,
                      "expected one change of this line, found two different ones");
    mPlanOfLine[size_t(plan.mLine)] = &entry->second;
    mTracks[mDocument.BlockOf(*plan.mOrigin).mTrack];
    return true;
}

bool cKeyPlan::PlanDeletion(cKeyId id, cTextFault &refusal)
{
    cLinePlan plan;
    if (!MakePlan(id, plan, refusal))
        return false;
    plan.mIsDeleted = true;
    return AddPlan(plan, refusal);
}

bool cKeyPlan::PlanChange(const cKeyChange &change, cTextFault &refusal)
{
    cLinePlan plan;
    if (!MakePlan(change.mKey, plan, refusal))
        return false;
    const cKey &key = mDocument.KeyOf(*plan.mOrigin);
    const std::string &track = mDocument.BlockOf(*plan.mOrigin).mTrack;
    const bool isByName = mDocument.mTimeline.mNames.count(change.mWord) != 0;
    if (change.mValue && (!IsSameValue(*change.mValue, key.mValue) || isByName)) {
        plan.mValue = *change.mValue;
        plan.mWord = change.mWord.empty() ? mDocument.WordFor(track, plan.mValue, key.mPlace.mLine)
                                          : change.mWord;
    }
    plan.mType = change.mType.value_or(key.mType);
    return (!change.mRow || PlanRow(change, plan, refusal)) && AddPlan(plan, refusal);
}

// In its section where it stays in there; else the line goes, and comes again where the row lies.
bool cKeyPlan::PlanRow(const cKeyChange &change, cLinePlan &plan, cTextFault &refusal)
{
    const cSection &section = mDocument.SectionOf(*plan.mOrigin);
    const cPlace &place = mDocument.KeyOf(*plan.mOrigin).mPlace;
    const cShowKey &shown = *mDocument.FindKey(change.mKey);
    const long long row = static_cast<long long>(plan.mRow) + *change.mRow - shown.mKey.row;
    const bool isWithin = !section.mLength || (row >= 0 && row <= *section.mLength);
    if (isWithin && FitsRow(row)) {
        plan.mRow = int(row);
        return true;
    }
    if (!FitsRow(row) || cDocument::CopiesOf(section) > 1)
        return Refuse(refusal, place.mLine, place.mColumn,
                      "expected a time within section " + tools::Quote(section.mName) + ", 0 to " +
                          FormatRow(section.mLength.value_or(0), mDocument.Tempo()) + ", found " +
                          std::to_string(row) + " rows");
    cNewLine line;
    line.mTrack = mDocument.BlockOf(*plan.mOrigin).mTrack;
    line.mShowRow = *change.mRow;
    line.mValue = plan.mValue;
    line.mType = plan.mType;
    line.mWord =
        plan.mWord.empty() ? WordOf(mDocument.ContentOf(place.mLine), kValueWord) : plan.mWord;
    plan.mIsDeleted = true;
    if (!FindHome(line, refusal))
        return false;
    mNew.push_back(line);
    return true;
}

bool cKeyPlan::PlanNew(const cNewKey &key, cTextFault &refusal)
{
    if (!mDocument.FindTrack(key.mTrack))
        return Refuse(refusal, 0, 0,
                      "expected a track of this timeline, found " + tools::Quote(key.mTrack));
    const cShowKey *there = mDocument.FindKey(key.mTrack, key.mRow);
    const bool isLeaving = there && mPlans.count(there->mId.mLine) != 0;
    if (there && !isLeaving)
        return PlanChange({there->mId, {}, key.mValue, key.mType, key.mWord}, refusal);
    cNewLine line;
    line.mTrack = key.mTrack;
    line.mShowRow = key.mRow;
    line.mValue = key.mValue;
    line.mType = key.mType.value_or(TypeBefore(key.mTrack, key.mRow));
    line.mWord = key.mWord;
    if (!FindHome(line, refusal))
        return false;
    mNew.push_back(line);
    mTracks[key.mTrack];
    return true;
}

signed char cKeyPlan::TypeBefore(const std::string &track, int row) const
{
    const std::vector<cShowKey> &keys = mDocument.FindTrack(track)->mKeys;
    const auto after =
        std::upper_bound(keys.begin(), keys.end(), row,
                         [](int wanted, const cShowKey &key) { return wanted < key.mKey.row; });
    if (after != keys.begin())
        return static_cast<signed char>((after - 1)->mKey.type);
    return after != keys.end() ? static_cast<signed char>(after->mKey.type)
                               : static_cast<signed char>(SYNC_KEY_HOLD);
}

// The section that suits best: with keys of the track, and the one that has begun last.
bool cKeyPlan::FindHome(cNewLine &line, cTextFault &refusal) const
{
    const std::vector<cSection> &sections = mDocument.mTimeline.mSections;
    std::optional<cFit> best;
    for (size_t i = 0; i < sections.size(); i++) {
        const cSection &section = sections[i];
        if (cDocument::CopiesOf(section) > 1 && !mEdits.mPattern)
            continue;
        const bool hasTrack = BlockFor(section, line.mTrack, 0) >= 0;
        for (const cPlacement &placement : section.mPlacements) {
            long long start = placement.mStart, row = line.mShowRow - start;
            const long long step = std::max(placement.mStep, 1LL);
            const long long copy = std::clamp(row / step, 0LL, placement.mCount - 1);
            start += copy * placement.mStep;
            row -= copy * placement.mStep;
            const bool isWhole = i == 0;
            if (!FitsRow(row) || (!isWhole && row < 0) ||
                (section.mLength && row > *section.mLength))
                continue;
            const cFit fit{hasTrack, !section.mLength || row < *section.mLength,
                           isWhole ? std::numeric_limits<long long>::min() : start};
            if (best && *best >= fit)
                continue;
            best = fit;
            line.mSection = i;
            line.mRow = int(row);
        }
    }
    line.mBlock = BlockFor(sections[line.mSection], line.mTrack, line.mRow);
    return best || Refuse(refusal, 0, 0, "expected a row that fits into 32 bits");
}

// Of several blocks the one that has the last key before `row`; -1 where there is none.
int cKeyPlan::BlockFor(const cSection &section, const std::string &track, int row) const
{
    int best = -1;
    long long bestRow = std::numeric_limits<long long>::min();
    for (size_t i = 0; i < section.mBlocks.size(); i++) {
        if (section.mBlocks[i].mTrack != track)
            continue;
        if (best < 0)
            best = int(i);
        for (const cKey &key : section.mBlocks[i].mKeys) {
            if (key.mRow > row || key.mRow <= bestRow)
                continue;
            bestRow = key.mRow;
            best = int(i);
        }
    }
    return best;
}

// Two on one row
// ---------------------------------------------------------------------------------------------

bool cKeyPlan::ResolveCollisions(cTextFault &refusal)
{
    for (auto &[name, keys] : mTracks) {
        keys = PlannedKeys(*mDocument.FindTrack(name));
        for (size_t i = 1; i < keys.size(); i++) {
            if (keys[i].mKey.row != keys[i - 1].mKey.row)
                continue;
            if (!ResolveCollision(name, keys[i - 1], keys[i], refusal))
                return false;
            keys = PlannedKeys(*mDocument.FindTrack(name));
            i = 0;
        }
    }
    return true;
}

// The one that has been moved there stays; of two such ones the first.
bool cKeyPlan::ResolveCollision(const std::string &track, cPlanned &first, cPlanned &second,
                                cTextFault &refusal)
{
    const cPlanned &loser = first.mIsEdited ? second : first;
    const cPlace place = loser.mLine == kNoLine
                             ? cPlace{}
                             : mDocument.KeyOf(*mDocument.OriginOf(loser.mLine)).mPlace;
    const std::string row =
        std::to_string(loser.mKey.row) + " (" + FormatRow(loser.mKey.row, mDocument.Tempo()) + ")";
    if (!mEdits.mReplace)
        return Refuse(refusal, place.mLine, place.mColumn,
                      loser.mIsEdited
                          ? "expected one key a row, found two that would come to row " + row +
                                " of " + tools::Quote(track)
                          : "expected a free row for the key, found this one on row " + row +
                                " of " + tools::Quote(track));
    if (loser.mIsEdited) {
        Drop(loser);
        return true;
    }
    cLinePlan plan;
    if (!MakePlan({loser.mLine, 0}, plan, refusal))
        return false;
    plan.mIsDeleted = true;
    return AddPlan(plan, refusal);
}

void cKeyPlan::Drop(const cPlanned &key)
{
    if (key.mLine != kNoLine)
        mPlans.at(key.mLine).mIsDeleted = true;
    else
        mNew[size_t(key.mNew)].mIsDropped = true;
}

cKeyPlan::tPlanned cKeyPlan::PlannedKeys(const cShowTrack &track) const
{
    tPlanned keys;
    keys.reserve(track.mKeys.size() + mNew.size());
    for (const cShowKey &key : track.mKeys) {
        const cLinePlan *plan = mPlanOfLine[size_t(key.mId.mLine)];
        if (plan && plan->mIsDeleted)
            continue;
        cPlanned planned{key.mKey, key.mId.mLine, -1, plan != nullptr};
        if (plan) {
            const long long delta =
                static_cast<long long>(plan->mRow) - mDocument.KeyOf(*plan->mOrigin).mRow;
            planned.mKey = {ToRow(key.mKey.row + delta), plan->mValue, plan->mType};
        }
        keys.push_back(planned);
    }
    for (size_t i = 0; i < mNew.size(); i++) {
        const cNewLine &line = mNew[i];
        if (line.mTrack != track.mName || line.mIsDropped)
            continue;
        for (const cPlacement &placement : mDocument.mTimeline.mSections[line.mSection].mPlacements)
            for (long long copy = 0; copy < placement.mCount; copy++)
                keys.push_back({{ToRow(placement.mStart + copy * placement.mStep + line.mRow),
                                 line.mValue, line.mType},
                                kNoLine,
                                int(i),
                                true});
    }
    const auto isEarlier = [](const cPlanned &a, const cPlanned &b) {
        return a.mKey.row < b.mKey.row;
    };
    if (!std::is_sorted(keys.begin(), keys.end(), isEarlier))
        std::stable_sort(keys.begin(), keys.end(), isEarlier);
    return keys;
}

std::vector<cTrack> cKeyPlan::Expected() const
{
    std::vector<cTrack> tracks;
    for (const auto &[name, keys] : mTracks) {
        tracks.push_back({name, {}});
        tracks.back().mKeys.reserve(keys.size());
        for (const cPlanned &key : keys)
            tracks.back().mKeys.push_back(key.mKey);
    }
    return tracks;
}
} // namespace timeline
