#pragma once

#include "tools/support/Files.h"
#include "tools/timeline/Parser.h"
#include "tools/timeline/Timeline.h"

#include <filesystem>
#include <vector>

namespace timeline
{
/// A key put on its row of the show, and where it comes from.
struct cPlacedKey
{
    sync_key mKey;
    cPlace mPlace; ///< of its line
    int mCopy = 0; ///< which copy of its section; counted over all placements in the text's order
};

/// A track with its keys ascending by row.
struct cPlacedTrack
{
    std::string mName;
    std::vector<cPlacedKey> mKeys;
};

/// The tracks of `timeline`, sorted by name: its sections put where they belong. Keys that meet on
/// one row of a track, or leave the rows of 32 bits, are faults.
std::vector<cPlacedTrack> Place(const cTimeline &timeline, tTextFaults &faults);

/// The same without the places: what the player plays.
cTrack WithoutPlaces(const cPlacedTrack &track);

/// All tracks, as Place gives them, without the places.
std::vector<cTrack> Compile(const cTimeline &timeline, tTextFaults &faults);

/// The bytes of a track's file (layout: sync/data.h).
std::string TrackFileBytes(const cTrack &track);

/// The track files of `tracks` in `folder`.
std::vector<tools::cOutput> TrackFiles(const std::vector<cTrack> &tracks,
                                       const std::filesystem::path &folder);
} // namespace timeline
