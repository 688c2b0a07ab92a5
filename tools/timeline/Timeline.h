#pragma once

#include "show/Tempo.h"
#include "sync/track.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

/// The text timeline and what is made of it. docs/formats.md describes the language.
namespace timeline
{
using vyr::cTempo;

/// What is read at most. A text past a limit is refused, whatever it says.
inline constexpr size_t kMaximumTextBytes = 256u << 20;
inline constexpr size_t kMaximumLineBytes = 4096;
inline constexpr long long kMaximumKeys = 8'000'000; ///< of all tracks, repetitions unrolled
inline constexpr size_t kMaximumNameBytes = 244;     ///< longer ones make no file name (255 bytes)

/// Words of the four interpolations, indexed by sync_key_type.
inline constexpr const char *kInterpolations[] = {"hold", "linear", "smoothstep", "quadratic"};

/// A place in the text, both from 1; columns count bytes.
struct cPlace
{
    int mLine = 0, mColumn = 0;
};

/// One key as written: `mRow` counts from the start of its section.
struct cKey
{
    int mRow = 0;
    float mValue = 0.0f;
    signed char mType = SYNC_KEY_HOLD;
    cPlace mPlace;
};

/// The keys under one `track` line, in the order of the text.
struct cBlock
{
    std::string mTrack;
    std::vector<cKey> mKeys;
    signed char mDefaultType = SYNC_KEY_HOLD; ///< of keys that don't say theirs
    int mLine = 0;                            ///< of the `track` line
};

/// Where a section is put: at `mStart`, and then every `mStep` rows until it has been put `mCount`
/// times.
struct cPlacement
{
    std::string mName;
    long long mStart = 0, mStep = 0, mCount = 1; // rows, rows, times
    cPlace mPlace;

    bool operator<(const cPlacement &other) const { return mStart < other.mStart; }
};

/// A block of the timeline that is moved and repeated as a whole. One without a placement is a
/// pattern for others to repeat. The first section, without a name, is the whole show.
struct cSection
{
    std::string mName;
    std::optional<int> mLength; ///< rows; keys lie within
    int mLine = 0;              ///< of the `section` line; 0 for the whole show
    bool mIsPattern = true;     ///< its own line gives it no place; plots show only the others
    std::vector<cBlock> mBlocks;
    std::vector<cPlacement> mPlacements;
};

/// For each track, the names that its values were written with.
using tValueNames = std::map<std::string, std::map<float, std::string>>;

/// A parsed timeline.
struct cTimeline
{
    cTempo mTempo; ///< of its tempo line; without one it has no seconds
    std::map<std::string, float, std::less<>> mNames;
    std::map<std::string, int, std::less<>> mNameLines; ///< where each is declared
    std::vector<std::string>
        mTracks; ///< the declared ones; when there are any, there are no others
    std::vector<cSection> mSections;
    tValueNames mValueNames;
};

/// A finished track: keys ascending by row, one a row.
struct cTrack
{
    std::string mName;
    std::vector<sync_key> mKeys;
};
} // namespace timeline
