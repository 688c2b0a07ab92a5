#pragma once

#include "tools/support/Files.h"
#include "tools/tracks/Parser.h"
#include "tools/tracks/Timeline.h"

#include <filesystem>
#include <vector>

namespace tracks
{
/// The tracks of `timeline`, sorted by name: its sections put where they belong. Keys that meet on
/// one row of a track, or leave the rows of 32 bits, are faults.
std::vector<cTrack> Compile(const cTimeline &timeline, tTextFaults &faults);

/// The bytes of a track's file (sync/data.h tells the layout).
std::string TrackFileBytes(const cTrack &track);

/// The track files of `tracks` in `folder`.
std::vector<tools::cOutput> TrackFiles(const std::vector<cTrack> &tracks,
                                       const std::filesystem::path &folder);
} // namespace tracks
