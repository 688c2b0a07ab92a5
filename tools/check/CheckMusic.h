#pragma once

#include "show/Show.h"
#include "tools/check/Findings.h"

namespace check
{
/// What the show's music has to measure.
inline constexpr double kLoudness = -14.0;        ///< LUFS, of the whole
inline constexpr double kLoudnessTolerance = 1.0; ///< LU
inline constexpr double kHighestTruePeak = -1.0;  ///< dBTP
inline constexpr double kLongestSilence = 0.2;    ///< seconds at the start

/// The music: as long as the show, at the rate and with the channels that the clock counts on, as
/// loud as it should be, and unclipped.
void CheckMusic(const vyr::cShowDescription &show, cFindings &findings);
} // namespace check
