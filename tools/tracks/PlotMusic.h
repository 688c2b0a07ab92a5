#pragma once

#include "show/Tempo.h"
#include "tools/support/Music.h"
#include "tools/tracks/PlotLane.h"

namespace tracks
{
/// The music over the page's time axis, in a strip from `top`: its waveform above, its loudness
/// below (short-term as a line, momentary as an area). `tempo` has seconds.
void DrawMusic(cSvg &svg, const tools::cMusicMeasure &music, const vyr::cTempo &tempo,
               const cTimeAxis &axis, double top, double height);
} // namespace tracks
