#include "tools/check/CheckTracks.h"

#include "base/Truncate.h"
#include "demo/Show.h"
#include "tools/support/Nearest.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace check
{
namespace
{
const int objectCount = 2;

/// One track under test.
struct cSubject
{
    std::string mName, mFile;
    const tools::cLoadedTrack &mLoaded;
    cFindings &mFindings;

    const sync_key &Key(int index) const { return mLoaded.mTrack->keys[index]; }
    void Fault(int key, const std::string &what) const
    {
        mFindings.Fault(mFile, tools::KeyPlace(*mLoaded.mTrack, key), what);
    }
    void Warn(int key, const std::string &what) const
    {
        mFindings.Warn(mFile, tools::KeyPlace(*mLoaded.mTrack, key), what);
    }
};

std::string Number(float value) { return Decimal(double(value), 4); }

std::string Range(const std::string &name)
{
    return name == demo::TrackName(demo::OBJECT_NUM)
               ? "-1, 0 or 1"
               : "an index below " + std::to_string(EntryCount(name)) + " (or -1 for none)";
}

// As the show makes an index of a value; what is off is off whatever the number.
bool IsIndexWithin(const cSubject &subject, float value)
{
    const int index = vyr::TruncateToInt(double(value));
    const bool isObject = subject.mName == demo::TrackName(demo::OBJECT_NUM);
    return index < EntryCount(subject.mName) && (!isObject || index >= -1);
}

void CheckRow(const cSubject &subject, int key)
{
    const int row = subject.Key(key).row;
    if (row > int(demo::kLastRow))
        subject.Fault(key, "expected a row up to " + std::to_string(int(demo::kLastRow)) +
                               ", where the show ends");
    if (row < 0)
        subject.Warn(key, "lies before the show's first row");
}

// Where the step to the next key is too large for a float, nothing between them has a value.
void CheckStep(const cSubject &subject, int key)
{
    const sync_key &from = subject.Key(key), &to = subject.Key(key + 1);
    if (from.type != SYNC_KEY_HOLD && !std::isfinite(to.value - from.value))
        subject.Fault(key, "expected a step to the next key that a float can hold, found " +
                               Number(from.value) + " to " + Number(to.value));
}

void CheckPickedKey(const cSubject &subject, int key)
{
    const float value = subject.Key(key).value;
    if (!IsIndexWithin(subject, value))
        subject.Fault(key, "expected " + Range(subject.mName) + ", found " + Number(value));
    else if (value != std::floor(value))
        subject.Warn(key, "picks entry " + std::to_string(int(value)) + " by the fraction " +
                              Number(value));
}

// Between two keys a curve stays between their values but for rounding, which counts most just
// before the second one.
void CheckPickedStep(const cSubject &subject, int key)
{
    const sync_key &from = subject.Key(key), &to = subject.Key(key + 1);
    if (from.type == SYNC_KEY_HOLD || from.value == to.value)
        return;
    const double justBefore = std::nextafter(double(to.row), double(from.row));
    const float value = sync_get_val(subject.mLoaded.mTrack, justBefore);
    if (IsIndexWithin(subject, from.value) && IsIndexWithin(subject, to.value) &&
        !IsIndexWithin(subject, value))
        subject.Fault(key, "expected " + Range(subject.mName) + " up to the next key, found " +
                               Number(value));
    subject.Warn(key, "moves through other entries on its way to the next key: hold would not");
}

void CheckKeys(const cSubject &subject)
{
    const bool isPicking = EntryCount(subject.mName) > 0;
    for (int i = 0; i < subject.mLoaded.mKeyCount; i++) {
        CheckRow(subject, i);
        if (isPicking && std::isfinite(subject.Key(i).value))
            CheckPickedKey(subject, i);
        if (!subject.mLoaded.mIsLegal || i + 1 == subject.mLoaded.mKeyCount)
            continue;
        CheckStep(subject, i);
        if (isPicking)
            CheckPickedStep(subject, i);
    }
}

std::vector<std::string> ShowTracks()
{
    std::vector<std::string> names;
    for (int i = 0; i < demo::TRACK_COUNT; i++)
        names.push_back(demo::TrackName(demo::eTrack(i)));
    return names;
}
} // namespace

int EntryCount(const std::string &name)
{
    for (demo::eTrack photo : {demo::IMAGE_LEFT, demo::IMAGE_RIGHT, demo::IMAGE_CENTER})
        if (name == demo::TrackName(photo))
            return demo::kPhotoCount;
    if (name == demo::TrackName(demo::LYRICS_NUM))
        return demo::kLyricCount;
    return name == demo::TrackName(demo::OBJECT_NUM) ? objectCount : 0;
}

void CheckTracks(tools::cTrackFolder &folder, cFindings &findings)
{
    const std::vector<std::string> known = ShowTracks();
    for (const std::string &name : known) {
        const tools::cLoadedTrack loaded = folder.Load(name, findings.mFaults);
        if (loaded.mTrack && loaded.mTrack->num_keys == 0)
            findings.Warn(folder.FileOf(name).string(), "", "has no keys: it is 0 everywhere");
        CheckKeys({name, folder.FileOf(name).string(), loaded, findings});
    }
    for (const std::string &name : folder.Names())
        if (std::find(known.begin(), known.end(), name) == known.end())
            findings.Fault(folder.FileOf(name).string(), "",
                           "no one reads this track" + tools::NearestHint(name, known) +
                               ": remove the file, or give it the name of a track of the show");
}
} // namespace check
