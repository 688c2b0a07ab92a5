#include "studio/Lanes.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <sstream>

namespace studio
{
namespace
{
std::string LowerCase(std::string text)
{
    for (char &c : text)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

bool Matches(const std::string &name, const std::string &search)
{
    std::istringstream words(LowerCase(search));
    const std::string lower = LowerCase(name);
    for (std::string word; words >> word;)
        if (lower.find(word) == std::string::npos)
            return false;
    return true;
}

std::vector<sync_key> KeysOf(const timeline::cShowTrack &track)
{
    std::vector<sync_key> keys;
    keys.reserve(track.mKeys.size());
    for (const timeline::cShowKey &key : track.mKeys)
        keys.push_back(key.mKey);
    return keys;
}

// The page grows with the values, and shrinks only when somebody asks: nothing moves under a hand.
void FitValues(cLane &lane, bool isNew)
{
    const std::vector<sync_key> &keys = lane.mCurve.Keys();
    if (keys.empty())
        return;
    const auto [low, high] = std::ranges::minmax(keys, {}, &sync_key::value);
    if (!isNew && low.value >= lane.mLow && high.value <= lane.mHigh)
        return;
    lane.mLow = isNew ? low.value : std::min(lane.mLow, low.value);
    lane.mHigh = isNew ? high.value : std::max(lane.mHigh, high.value);
    if (lane.mLow == lane.mHigh) {
        lane.mLow -= 0.5f;
        lane.mHigh += 0.5f;
    }
}
} // namespace

bool cLane::IsCounting() const
{
    const std::vector<sync_key> &keys = mCurve.Keys();
    return IsPicking() || (!keys.empty() && std::ranges::all_of(keys, [](const sync_key &key) {
               return key.type == SYNC_KEY_HOLD && key.value == std::floor(key.value);
           }));
}

void cLanes::Take(const vyr::cShowDescription &show, const timeline::cDocument &document)
{
    std::vector<std::string> names = show.mTracks;
    for (const timeline::cShowTrack &track : document.Tracks())
        if (std::ranges::find(names, track.mName) == names.end())
            names.push_back(track.mName);

    std::vector<cLane> before = std::move(mLanes);
    mLanes.clear();
    for (const std::string &name : names) {
        const auto old = std::ranges::find(before, name, &cLane::mTrack);
        const bool isNew = old == before.end();
        cLane lane = isNew ? cLane{} : std::move(*old);
        lane.mTrack = name;
        const auto choice =
            std::ranges::find(show.mChoices, name, &vyr::cShowDescription::cChoice::mTrack);
        lane.mFiles = choice == show.mChoices.end() ? std::vector<std::string>{} : choice->mFiles;
        const timeline::cShowTrack *track = document.FindTrack(name);
        const bool isShows = std::ranges::find(show.mTracks, name) != show.mTracks.end();
        lane.mProblem = !track     ? "the timeline does not have this track: it is 0 throughout"
                        : !isShows ? "the show does not have this track: nothing follows it"
                                   : "";
        lane.mIds.clear();
        if (track)
            for (const timeline::cShowKey &key : track->mKeys)
                lane.mIds.push_back(key.mId);
        lane.mCurve = cLaneCurve(track ? KeysOf(*track) : std::vector<sync_key>{});
        FitValues(lane, isNew);
        mLanes.push_back(std::move(lane));
    }
}

void cLanes::TakePreview(const std::vector<timeline::cTrack> &changed)
{
    for (const timeline::cTrack &track : changed)
        if (cLane *lane = Find(track.mName)) {
            lane->mCurve = cLaneCurve(track.mKeys);
            lane->mIds.clear();
        }
}

cLane *cLanes::Find(const std::string &track)
{
    const auto found = std::ranges::find(mLanes, track, &cLane::mTrack);
    return found == mLanes.end() ? nullptr : &*found;
}

std::vector<cLane *> cLanes::Shown(const std::string &search)
{
    const bool isAnyAlone = std::ranges::any_of(mLanes, &cLane::mIsSolo);
    std::vector<cLane *> shown;
    for (cLane &lane : mLanes)
        if (!lane.mIsHidden && (!isAnyAlone || lane.mIsSolo) && Matches(lane.mTrack, search))
            shown.push_back(&lane);
    return shown;
}
} // namespace studio
