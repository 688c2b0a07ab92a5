#pragma once

#include "tools/timeline/Document.h"

#include <string>
#include <vector>

/// What a hand does to many keys at once, each as the edits of one step: cDocument::Apply does
/// them, cDocument::Preview shows them. Rows are the show's. Keys that are not there any more are
/// left out; of several copies of one line that change alike, one stands for all.
namespace timeline
{
using tKeyIds = std::vector<cKeyId>;

/// All keys by the same number of rows.
cEdits MoveKeys(const cDocument &document, const tKeyIds &keys, int rows);

/// Distances from `pivot` grow by `factor`; to the nearest row.
cEdits StretchKeys(const cDocument &document, const tKeyIds &keys, int pivot, double factor);

/// To the nearest multiple of `grid` rows, above 0, from row 0 on.
cEdits QuantiseKeys(const cDocument &document, const tKeyIds &keys, int grid);

cEdits SetInterpolation(const tKeyIds &keys, signed char type);
cEdits SetValue(const tKeyIds &keys, float value);
/// By the same amount each.
cEdits AddToValues(const cDocument &document, const tKeyIds &keys, float amount);
cEdits DeleteKeys(const tKeyIds &keys);

/// Keys taken out of their show, to be put somewhere else.
struct cClip
{
    struct cEntry
    {
        std::string mTrack;
        long long mOffset = 0; ///< rows from the clip's first key
        float mValue = 0.0f;
        signed char mType = 0;
        std::string mWord; ///< that the value was written by
    };
    std::vector<cEntry> mEntries;
    int mRow = 0; ///< of the first key, where it was taken
};
cClip CopyKeys(const cDocument &document, const tKeyIds &keys);

/// Each key into the track of its name, the first at `row`. A key that is on such a row already
/// changes. Tracks that this timeline does not have are left out, and named in `missing`.
cEdits PasteKeys(const cDocument &document, const cClip &clip, int row,
                 std::vector<std::string> &missing);

/// The same keys again, `rows` later.
cEdits DuplicateKeys(const cDocument &document, const tKeyIds &keys, int rows);
} // namespace timeline
