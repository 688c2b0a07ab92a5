#pragma once

#include "tools/timeline/Text.h"

#include <compare>
#include <optional>
#include <string>
#include <vector>

namespace timeline
{
/// Names one key of the show: the line that it is written in and which copy of that line's section
/// it is (from 0, in the order of the text; 0 where the section is put once). It stays good through
/// edits, undo and redo, as long as the line is there.
struct cKeyId
{
    tLineId mLine = kNoLine;
    int mCopy = 0;

    auto operator<=>(const cKeyId &) const = default;
};

/// What is to change about a key; what is not set stays as it is, spelling included.
struct cKeyChange
{
    cKeyId mKey;
    std::optional<int> mRow; ///< of the show
    std::optional<float> mValue;
    std::optional<signed char> mType; ///< sync_key_type
    std::string
        mWord; ///< how mValue is to be spelled; empty: by its name, else the shortest number
};

/// A key to be made. Where the track has one on that row already, that one changes.
struct cNewKey
{
    std::string mTrack;
    int mRow = 0; ///< of the show
    float mValue = 0.0f;
    std::optional<signed char> mType; ///< not set: that of the key before it
    std::string mWord;                ///< as in cKeyChange
};

/// What is done at once, or not at all: one gesture, one step of undo.
struct cEdits
{
    std::vector<cKeyChange> mChanges; ///< a key once at most
    std::vector<cNewKey> mNew;
    std::vector<cKeyId> mDeleted;
    /// A key of a section that is put several times stands in one line. Unless this is set,
    /// changing it is refused; with it, all copies change alike.
    bool mPattern = false;
    /// A key that comes to another one's row is refused; with this, it takes that one's place.
    bool mReplace = false;

    bool IsEmpty() const { return mChanges.empty() && mNew.empty() && mDeleted.empty(); }
};
} // namespace timeline
