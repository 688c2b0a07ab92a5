#include "show/Show.h"

#include "base/Assert.h"
#include "sync/track.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

namespace vyr
{
namespace
{
using tTexts = std::vector<std::string>;

// Far beyond any show; below it, rows in millionths stay whole numbers.
const double maximumRow = 1e9;
const double maximumRowsPerSecond = 1e6;
const int maximumRowsPerBar = 1'000'000;

bool IsWithin(double value, double limit) { return value > 0 && value <= limit; }

bool IsInsideFolder(const std::string &file)
{
    const auto path = std::filesystem::path(file).lexically_normal();
    return !path.empty() && path.is_relative() && *path.begin() != "..";
}

// A track's name is part of its file's.
bool IsTrackName(const std::string &name)
{
    return !name.empty() && name.size() < 200 && name.find('/') == std::string::npos &&
           name.find('\0') == std::string::npos;
}

void CheckNumbers(const cShowDescription &description, tTexts &faults)
{
    if (!IsWithin(description.mRowsPerSecond, maximumRowsPerSecond))
        faults.push_back("no tempo: mRowsPerSecond is not above 0 and at most a million");
    if (description.mRowsPerBeat < 1 || description.mBeatsPerBar < 1 ||
        double(description.mRowsPerBeat) * description.mBeatsPerBar > maximumRowsPerBar)
        faults.push_back("mRowsPerBeat and mBeatsPerBar are not 1 or more, or make bars of more "
                         "than a million rows");
    if (!IsWithin(description.mLastRow, maximumRow))
        faults.push_back("no length: mLastRow is not above 0 and at most a billion");
}

void CheckTracks(const cShowDescription &description, tTexts &faults)
{
    if (description.mTracks.empty())
        faults.push_back("no tracks");
    std::set<std::string> names;
    for (const std::string &name : description.mTracks) {
        if (!IsTrackName(name))
            faults.push_back("track '" + name + "': not a name that a file can have");
        if (!names.insert(name).second)
            faults.push_back("track '" + name + "' is named twice");
    }
}

void CheckFile(const std::string &file, tTexts &faults)
{
    if (!IsInsideFolder(file))
        faults.push_back("file '" + file + "': not a path under the show's folder");
}

void CheckChoices(const cShowDescription &description, tTexts &faults)
{
    std::set<std::string> names;
    for (const auto &choice : description.mChoices) {
        const std::string what = "choice '" + choice.mTrack + "'";
        if (std::ranges::find(description.mTracks, choice.mTrack) == description.mTracks.end())
            faults.push_back(what + ": no track of the show has this name");
        if (!names.insert(choice.mTrack).second)
            faults.push_back(what + " is named twice");
        if (choice.mFiles.empty())
            faults.push_back(what + ": no files to choose from");
        for (const std::string &file : choice.mFiles)
            CheckFile(file, faults);
    }
}
} // namespace

cShow::cShow() = default;
cShow::~cShow() = default;

bool cShow::ReachesLater(double) const { return false; }

const sync_track *cShow::GetTrack(int track) const
{
    VYR_ASSERT("Show", size_t(track) < mLoadedTracks.size() &&
                           "cShow::Sample(): No such track, or the tracks are not loaded yet.");
    return mLoadedTracks[size_t(track)];
}

float cShow::SampleTrack(const sync_track *track, double row) { return sync_get_val(track, row); }

tTexts FindFaults(const cShowDescription &description)
{
    tTexts faults;
    if (description.mTitle.empty())
        faults.push_back("no title");
    if (description.mMusic.empty())
        faults.push_back("no music");
    else
        CheckFile(description.mMusic, faults);
    CheckNumbers(description, faults);
    CheckTracks(description, faults);
    for (const std::string &file : description.mFiles)
        CheckFile(file, faults);
    CheckChoices(description, faults);
    return faults;
}
} // namespace vyr
