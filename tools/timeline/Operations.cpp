#include "tools/timeline/Operations.h"

#include "show/Time.h"
#include "tools/timeline/KeyLine.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <set>

namespace timeline
{
namespace
{
int ToRow(double row)
{
    return int(std::clamp(std::round(row), double(std::numeric_limits<int>::min()),
                          double(std::numeric_limits<int>::max())));
}

// The edits that give each key the row that `rowOf` says. Of the copies of a line one is enough,
// where they go equally far; where they don't, both are there, and the document refuses them.
cEdits ToRows(const cDocument &document, const tKeyIds &keys,
              const std::function<double(int)> &rowOf)
{
    cEdits edits;
    std::set<std::pair<tLineId, double>> seen;
    for (const cKeyId &id : keys) {
        const cShowKey *key = document.FindKey(id);
        if (!key)
            continue;
        const int row = ToRow(rowOf(key->mKey.row));
        if (seen.insert({id.mLine, double(row) - key->mKey.row}).second)
            edits.mChanges.push_back({id, row, {}, {}, ""});
    }
    return edits;
}

// A name may mean something else here, or nothing.
bool IsGoodWord(const cDocument &document, const cClip::cEntry &entry)
{
    float value = 0.0f;
    std::string ignored;
    if (vyr::ParseValue(entry.mWord, value, ignored))
        return true;
    const auto declared = document.Timeline().mNames.find(entry.mWord);
    return declared != document.Timeline().mNames.end() && declared->second == entry.mValue;
}

// One of each line.
tKeyIds OneOfEach(const tKeyIds &keys)
{
    tKeyIds ones;
    std::set<tLineId> seen;
    for (const cKeyId &id : keys)
        if (seen.insert(id.mLine).second)
            ones.push_back(id);
    return ones;
}
} // namespace

cEdits MoveKeys(const cDocument &document, const tKeyIds &keys, int rows)
{
    return ToRows(document, keys, [&](int row) { return double(row) + rows; });
}

cEdits StretchKeys(const cDocument &document, const tKeyIds &keys, int pivot, double factor)
{
    return ToRows(document, keys, [&](int row) { return pivot + (double(row) - pivot) * factor; });
}

cEdits QuantiseKeys(const cDocument &document, const tKeyIds &keys, int grid)
{
    return ToRows(document, keys,
                  [&](int row) { return std::round(double(row) / grid) * double(grid); });
}

cEdits SetInterpolation(const tKeyIds &keys, signed char type)
{
    cEdits edits;
    for (const cKeyId &id : OneOfEach(keys))
        edits.mChanges.push_back({id, {}, {}, type, ""});
    return edits;
}

cEdits SetValue(const tKeyIds &keys, float value)
{
    cEdits edits;
    for (const cKeyId &id : OneOfEach(keys))
        edits.mChanges.push_back({id, {}, value, {}, ""});
    return edits;
}

cEdits AddToValues(const cDocument &document, const tKeyIds &keys, float amount)
{
    cEdits edits;
    for (const cKeyId &id : OneOfEach(keys))
        if (const cShowKey *key = document.FindKey(id))
            edits.mChanges.push_back({id, {}, key->mKey.value + amount, {}, ""});
    return edits;
}

cEdits DeleteKeys(const tKeyIds &keys)
{
    cEdits edits;
    edits.mDeleted = OneOfEach(keys);
    return edits;
}

cClip CopyKeys(const cDocument &document, const tKeyIds &keys)
{
    cClip clip;
    clip.mRow = std::numeric_limits<int>::max();
    for (const cKeyId &id : keys) {
        const cShowKey *key = document.FindKey(id);
        if (!key)
            continue;
        const std::string_view line = document.Lines().Content(document.Lines().Find(id.mLine));
        clip.mEntries.push_back({document.Describe(id).mTrack, key->mKey.row, key->mKey.value,
                                 static_cast<signed char>(key->mKey.type),
                                 std::string(WordOf(line, kValueWord))});
        clip.mRow = std::min(clip.mRow, key->mKey.row);
    }
    for (cClip::cEntry &entry : clip.mEntries)
        entry.mOffset -= clip.mRow;
    return clip;
}

cEdits PasteKeys(const cDocument &document, const cClip &clip, int row,
                 std::vector<std::string> &missing)
{
    cEdits edits;
    std::set<std::string> unknown;
    for (const cClip::cEntry &entry : clip.mEntries) {
        if (!document.FindTrack(entry.mTrack)) {
            unknown.insert(entry.mTrack);
            continue;
        }
        edits.mNew.push_back({entry.mTrack, ToRow(double(row) + double(entry.mOffset)),
                              entry.mValue, entry.mType,
                              IsGoodWord(document, entry) ? entry.mWord : ""});
    }
    missing.assign(unknown.begin(), unknown.end());
    return edits;
}

cEdits DuplicateKeys(const cDocument &document, const tKeyIds &keys, int rows)
{
    const cClip clip = CopyKeys(document, keys);
    std::vector<std::string> none;
    return PasteKeys(document, clip, clip.mRow + rows, none);
}
} // namespace timeline
