#include "tools/timeline/Document.h"

#include "show/Time.h"
#include "tools/timeline/KeyLine.h"
#include "tools/timeline/KeyWriter.h"
#include "tools/timeline/SectionEditor.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <set>
#include <utility>

namespace timeline
{
namespace
{
bool IsSameValue(float a, float b)
{
    return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b); // the sign of zero counts
}

bool IsSame(const sync_key &a, const sync_key &b)
{
    return a.row == b.row && IsSameValue(a.value, b.value) && a.type == b.type;
}

bool IsSame(const cPlacedTrack &placed, const std::vector<sync_key> &keys)
{
    return std::equal(placed.mKeys.begin(), placed.mKeys.end(), keys.begin(), keys.end(),
                      [](const cPlacedKey &a, const sync_key &b) { return IsSame(a.mKey, b); });
}

bool IsSame(const cPlacedTrack &placed, const std::vector<cShowKey> &keys)
{
    return std::equal(
        placed.mKeys.begin(), placed.mKeys.end(), keys.begin(), keys.end(),
        [](const cPlacedKey &a, const cShowKey &b) { return IsSame(a.mKey, b.mKey); });
}

// "photo." of "photo.duck": names that belong together.
std::string FamilyOf(const std::string &name)
{
    const size_t dot = name.rfind('.');
    return dot == std::string::npos ? "" : name.substr(0, dot + 1);
}

bool IsName(std::string_view word)
{
    return !word.empty() && (word[0] == '_' || (word[0] >= 'a' && word[0] <= 'z') ||
                             (word[0] >= 'A' && word[0] <= 'Z'));
}

cSpan SpanOf(std::string_view line, size_t word)
{
    const size_t length = WordOf(line, word).size();
    return {length == 0 ? 0 : int(ColumnOf(line, word)) + 1, int(length)};
}
} // namespace

std::unique_ptr<cDocument> cDocument::Open(std::string_view text, tTextFaults &faults)
{
    std::unique_ptr<cDocument> document(new cDocument(text));
    if (!document->Read(faults))
        document.reset();
    return document;
}

// Reading
// ---------------------------------------------------------------------------------------------

bool cDocument::Read(tTextFaults &faults)
{
    cTimeline timeline = ParseTimeline(mText.Bytes(), faults);
    const std::vector<cPlacedTrack> placed = Place(timeline, faults);
    if (!faults.empty())
        return false;
    mTimeline = std::move(timeline);
    TakeTracks(placed);
    IndexLines();
    return true;
}

void cDocument::TakeTracks(const std::vector<cPlacedTrack> &placed)
{
    mTracks.clear();
    for (const cPlacedTrack &track : placed) {
        mTracks.push_back({track.mName, {}});
        mTracks.back().mKeys.reserve(track.mKeys.size());
        for (const cPlacedKey &key : track.mKeys)
            mTracks.back().mKeys.push_back(
                {{mText.At(key.mPlace.mLine - 1).mId, key.mCopy}, key.mKey});
    }
}

void cDocument::IndexLines()
{
    mText.Settle();
    mOrigins.clear();
    mOriginOfLine.assign(size_t(mText.Count()), -1);
    for (size_t i = 0; i < mTimeline.mSections.size(); i++) {
        const std::vector<cBlock> &blocks = mTimeline.mSections[i].mBlocks;
        for (size_t j = 0; j < blocks.size(); j++) {
            for (size_t k = 0; k < blocks[j].mKeys.size(); k++) {
                mOriginOfLine[size_t(blocks[j].mKeys[k].mPlace.mLine) - 1] = int(mOrigins.size());
                mOrigins.push_back({int(i), int(j), int(k)});
            }
        }
    }
}

// After a text that is known to be good has come back.
void cDocument::Reread()
{
    tTextFaults faults;
    Read(faults);
}

// Looking
// ---------------------------------------------------------------------------------------------

const cShowTrack *cDocument::FindTrack(std::string_view name) const
{
    const auto found = std::lower_bound(
        mTracks.begin(), mTracks.end(), name,
        [](const cShowTrack &track, std::string_view n) { return track.mName < n; });
    return found != mTracks.end() && found->mName == name ? &*found : nullptr;
}

const cShowKey *cDocument::FindKey(std::string_view track, int row) const
{
    const cShowTrack *found = FindTrack(track);
    if (!found)
        return nullptr;
    const auto key =
        std::lower_bound(found->mKeys.begin(), found->mKeys.end(), row,
                         [](const cShowKey &k, int wanted) { return k.mKey.row < wanted; });
    return key != found->mKeys.end() && key->mKey.row == row ? &*key : nullptr;
}

const cShowKey *cDocument::FindKey(cKeyId id) const
{
    const cOrigin *origin = OriginOf(id.mLine);
    if (!origin)
        return nullptr;
    int copy = 0;
    for (const cPlacement &placement : SectionOf(*origin).mPlacements) {
        if (id.mCopy < copy + placement.mCount) {
            const long long start = placement.mStart + (id.mCopy - copy) * placement.mStep;
            return FindKey(BlockOf(*origin).mTrack, int(start + KeyOf(*origin).mRow));
        }
        copy += int(placement.mCount);
    }
    return nullptr;
}

cKeyText cDocument::Describe(cKeyId id) const
{
    const cOrigin &origin = *OriginOf(id.mLine);
    const cSection &section = SectionOf(origin);
    const int index = mText.Find(id.mLine);
    const std::string_view line = mText.Content(index);
    cKeyText text;
    text.mLine = index + 1;
    text.mTime = SpanOf(line, kTimeWord);
    text.mValue = SpanOf(line, kValueWord);
    text.mInterpolation = SpanOf(line, kInterpolationWord);
    text.mTrack = BlockOf(origin).mTrack;
    const std::string_view value = WordOf(line, kValueWord);
    text.mValueName = IsName(value) ? value : "";
    text.mSection = section.mName;
    text.mSectionLine = section.mLine;
    text.mCopies = CopiesOf(section);
    text.mFixed = mFixed;
    return text;
}

std::vector<cKeyId> cDocument::CopiesOf(cKeyId id) const
{
    std::vector<cKeyId> copies;
    const cOrigin *origin = OriginOf(id.mLine);
    for (int i = 0; origin && i < CopiesOf(SectionOf(*origin)); i++)
        copies.push_back({id.mLine, i});
    return copies;
}

std::string cDocument::WordFor(std::string_view track, float value, int line) const
{
    const auto used = mTimeline.mValueNames.find(std::string(track));
    if (used == mTimeline.mValueNames.end())
        return vyr::FormatValue(value);
    std::set<std::string> families;
    for (const auto &[ofName, name] : used->second)
        families.insert(FamilyOf(name));
    families.erase("");
    std::string best;
    for (const auto &[name, ofName] : mTimeline.mNames) {
        if (!IsSameValue(ofName, value) || (line > 0 && mTimeline.mNameLines.at(name) >= line))
            continue;
        const auto exact = used->second.find(value);
        if (exact != used->second.end() && exact->second == name)
            return name;
        if (best.empty() && families.count(FamilyOf(name)))
            best = name;
    }
    return best.empty() ? vyr::FormatValue(value) : best;
}

const cDocument::cOrigin *cDocument::OriginOf(tLineId id) const
{
    const int line = mText.Find(id);
    const int origin = line < 0 ? -1 : mOriginOfLine[size_t(line)];
    return origin < 0 ? nullptr : &mOrigins[size_t(origin)];
}

const cSection &cDocument::SectionOf(const cOrigin &origin) const
{
    return mTimeline.mSections[size_t(origin.mSection)];
}

const cBlock &cDocument::BlockOf(const cOrigin &origin) const
{
    return SectionOf(origin).mBlocks[size_t(origin.mBlock)];
}

const cKey &cDocument::KeyOf(const cOrigin &origin) const
{
    return BlockOf(origin).mKeys[size_t(origin.mKey)];
}

int cDocument::CopiesOf(const cSection &section)
{
    long long count = 0;
    for (const cPlacement &placement : section.mPlacements)
        count += placement.mCount;
    return int(std::min<long long>(count, std::numeric_limits<int>::max()));
}

// The last line that belongs to it, from 1. The whole show without keys: the last one that says
// something before the first section; 0 where there is none.
int cDocument::LastLineOf(size_t index) const
{
    const cSection &section = mTimeline.mSections[index];
    int last = section.mLine;
    for (const cBlock &block : section.mBlocks) {
        last = std::max(last, block.mLine);
        for (const cKey &key : block.mKeys)
            last = std::max(last, key.mPlace.mLine);
    }
    if (last > 0)
        return last;
    last = mTimeline.mSections.size() > 1 ? mTimeline.mSections[1].mLine - 1 : mText.Count();
    while (last > 0 && CountWords(ContentOf(last)) == 0)
        last--;
    return last;
}

// Whether a word of the key stands in one column with that of a key above or below.
bool cDocument::IsAligned(const cBlock &block, size_t key, size_t word) const
{
    const std::string_view line = ContentOf(block.mKeys[key].mPlace.mLine);
    const auto isLike = [&](size_t other) {
        const std::string_view otherLine = ContentOf(block.mKeys[other].mPlace.mLine);
        return CountWords(otherLine) > word && ColumnOf(otherLine, word) == ColumnOf(line, word);
    };
    return (key > 0 && isLike(key - 1)) || (key + 1 < block.mKeys.size() && isLike(key + 1));
}

// Changing
// ---------------------------------------------------------------------------------------------

bool cDocument::Apply(const cEdits &edits, cTextFault &refusal)
{
    if (!mFixed.empty()) {
        refusal = {{}, mFixed};
        return false;
    }
    cKeyPlan plan(*this, edits);
    if (!plan.Make(refusal))
        return false;
    tPatches done;
    if (cKeyWriter(*this, plan).Write(mText, done, refusal))
        return Finish(std::move(done), plan.Expected(), refusal);
    mText.Undo(done);
    return false;
}

bool cDocument::Preview(const cEdits &edits, std::vector<cTrack> &changed,
                        cTextFault &refusal) const
{
    cKeyPlan plan(*this, edits);
    if (!plan.Make(refusal))
        return false;
    changed = plan.Expected();
    return true;
}

// Compares what the changed text means with what was asked for: `expected` for the tracks that it
// has, the old keys for all others.
bool cDocument::Finish(tPatches done, const std::vector<cTrack> &expected, cTextFault &refusal)
{
    if (done.empty())
        return true;
    tTextFaults faults;
    cTimeline timeline = ParseTimeline(mText.Bytes(), faults);
    const std::vector<cPlacedTrack> placed = Place(timeline, faults);
    if (faults.empty() && !MeansTheSame(placed, expected))
        faults.push_back({{}, "expected a change that leaves all other keys, found none"});
    if (!faults.empty()) {
        refusal = faults.front();
        mText.Undo(done);
        return false;
    }
    mTimeline = std::move(timeline);
    TakeTracks(placed);
    IndexLines();
    Note(std::move(done));
    return true;
}

bool cDocument::MeansTheSame(const std::vector<cPlacedTrack> &placed,
                             const std::vector<cTrack> &expected) const
{
    if (placed.size() != mTracks.size())
        return false;
    for (size_t i = 0; i < placed.size(); i++) {
        const auto asked = std::find_if(expected.begin(), expected.end(), [&](const cTrack &track) {
            return track.mName == placed[i].mName;
        });
        if (placed[i].mName != mTracks[i].mName)
            return false;
        if (asked == expected.end() ? !IsSame(placed[i], mTracks[i].mKeys)
                                    : !IsSame(placed[i], asked->mKeys))
            return false;
    }
    return true;
}

bool cDocument::Become(std::string_view text, tTextFaults &faults)
{
    tPatches done;
    mText.Become(text, done);
    if (done.empty())
        return true;
    if (!Read(faults)) {
        mText.Undo(done);
        return false;
    }
    Note(std::move(done));
    return true;
}

bool cDocument::Detach(cKeyId key, cKeyId &detached, cTextFault &refusal)
{
    return cSectionEditor(*this).Detach(key, detached, refusal);
}

bool cDocument::InsertTime(int row, int count, cTextFault &refusal)
{
    return cSectionEditor(*this).ChangeTime({row, count, true}, refusal);
}

bool cDocument::DeleteTime(int row, int count, cTextFault &refusal)
{
    return cSectionEditor(*this).ChangeTime({row, count, false}, refusal);
}

// Steps
// ---------------------------------------------------------------------------------------------

void cDocument::Note(tPatches done)
{
    if (mGroupStarts.empty())
        mHistory.Add(std::move(done));
    else
        std::move(done.begin(), done.end(), std::back_inserter(mGroup));
}

void cDocument::Begin() { mGroupStarts.push_back(mGroup.size()); }

void cDocument::End(bool keep)
{
    const auto start = mGroup.begin() + long(mGroupStarts.back());
    mGroupStarts.pop_back();
    if (!keep && start != mGroup.end()) {
        mText.Undo({start, mGroup.end()});
        mGroup.erase(start, mGroup.end());
        Reread();
    }
    if (mGroupStarts.empty() && !mGroup.empty())
        mHistory.Add(std::exchange(mGroup, {}));
}

void cDocument::Undo()
{
    if (!CanUndo())
        return;
    mHistory.Undo(mText);
    Reread();
}

void cDocument::Redo()
{
    if (!CanRedo())
        return;
    mHistory.Redo(mText);
    Reread();
}
} // namespace timeline
