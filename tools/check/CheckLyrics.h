#pragma once

#include "show/Show.h"
#include "tools/check/Findings.h"
#include "tools/support/TrackFolder.h"

namespace check
{
inline constexpr double kShortestLyric = 1.0;  ///< seconds on the screen, half opaque or more
inline constexpr double kLowestContrast = 4.5; ///< to 1

/// The images of the show's words (FindWordTracks) can be read: long enough on the screen, and
/// their letters stand out (see LetterContrast). Warns of pictures that no choice ever picks. After
/// CheckImages, whose pixels it measures.
void CheckLyrics(const vyr::cShowDescription &show, tools::cTrackFolder &folder,
                 cFindings &findings);
} // namespace check
