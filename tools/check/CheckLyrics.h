#pragma once

#include "tools/check/Findings.h"
#include "tools/support/TrackFolder.h"

namespace check
{
inline constexpr double kShortestLyric = 1.0;  ///< seconds on the screen, half opaque or more
inline constexpr double kLowestContrast = 4.5; ///< to 1

/// The lyric images can be read: long enough on the screen, and their letters stand out (see
/// LetterContrast). Warns of pictures that the show never shows. After CheckImages, whose pixels it
/// measures.
void CheckLyrics(tools::cTrackFolder &folder, cFindings &findings);
} // namespace check
