#pragma once

#include "show/ShowFolder.h"
#include "tools/record/FlashMeter.h"
#include "tools/record/Manifest.h"

#include <string>

namespace record
{
/// Writes what `meter` found in the frames of `piece` to `file` and completes it: a line a stretch
/// of flashes with its rows, its times and the track that moved most in the second before. Throws
/// cFailure.
void WriteFlashReport(cTextFile &file, const cFlashMeter &meter, const cFrameGrid &grid,
                      const cFrameRange &piece, const vyr::cShowFolder &show);

/// The name of the track that moved most in the second up to `frame`, each measured by its own
/// whole range, those that choose pictures by the number of changes; "none" when none moved.
std::string FindBusiestTrack(const vyr::cShowFolder &show, const cFrameGrid &grid, int64_t frame);
} // namespace record
