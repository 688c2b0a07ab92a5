#include "tools/check/CheckTracks.h"

#include "base/Truncate.h"
#include "tools/support/Nearest.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace check
{
namespace
{
/// One track under test.
struct cSubject
{
    std::string mFile;
    const tools::cLoadedTrack &mLoaded;
    int mEntryCount; ///< that it chooses from; 0 when it chooses nothing
    double mLastRow; ///< of the show
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

std::string Range(const cSubject &subject)
{
    return "an index below " + std::to_string(subject.mEntryCount) + " (or -1 for none)";
}

// As a show makes an index of a value; what is off is off whatever the number.
bool IsIndexWithin(const cSubject &subject, float value)
{
    return vyr::TruncateToInt(double(value)) < subject.mEntryCount;
}

void CheckRow(const cSubject &subject, int key)
{
    const int row = subject.Key(key).row;
    if (row > subject.mLastRow)
        subject.Fault(key, "expected a row up to " + Decimal(subject.mLastRow, 0) +
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
        subject.Fault(key, "expected " + Range(subject) + ", found " + Number(value));
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
        subject.Fault(key,
                      "expected " + Range(subject) + " up to the next key, found " + Number(value));
    subject.Warn(key, "moves through other entries on its way to the next key: hold would not");
}

void CheckKeys(const cSubject &subject)
{
    const bool isPicking = subject.mEntryCount > 0;
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

// Of the files that `track` chooses from.
int EntryCount(const vyr::cShowDescription &show, const std::string &track)
{
    for (const auto &choice : show.mChoices)
        if (choice.mTrack == track)
            return int(choice.mFiles.size());
    return 0;
}
} // namespace

void CheckTracks(const vyr::cShowDescription &show, tools::cTrackFolder &folder,
                 cFindings &findings)
{
    const std::vector<std::string> &known = show.mTracks;
    for (const std::string &name : known) {
        const tools::cLoadedTrack loaded = folder.Load(name, findings.mFaults);
        if (loaded.mTrack && loaded.mTrack->num_keys == 0)
            findings.Warn(folder.FileOf(name).string(), "", "has no keys: it is 0 everywhere");
        CheckKeys({folder.FileOf(name).string(), loaded, EntryCount(show, name), show.mLastRow,
                   findings});
    }
    for (const std::string &name : folder.Names())
        if (std::find(known.begin(), known.end(), name) == known.end())
            findings.Fault(folder.FileOf(name).string(), "",
                           "no one reads this track" + tools::NearestHint(name, known) +
                               ": remove the file, or give it the name of a track of the show");
}
} // namespace check
