#pragma once

#include "show/Tempo.h"
#include "sync/track.h"

#include <string>
#include <vector>

namespace tracks
{
/// The timeline text that compiles to exactly these tracks, which must be legal. It says `tempo`
/// where that has seconds.
std::string Dump(const std::vector<const sync_track *> &tracks, const vyr::cTempo &tempo);

/// "row,value" lines of `track` (legal) from row `from` to row `to`, every `step` rows.
std::string SampleAsCsv(const sync_track &track, double from, double to, double step);
} // namespace tracks
