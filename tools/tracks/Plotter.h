#pragma once

#include "sync/track.h"
#include "tools/support/Lyrics.h"
#include "tools/support/Music.h"
#include "tools/timeline/Sections.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tracks
{
/// Everything that a plot shows; only the tracks, which must be legal, have to be there.
struct cPlotInput
{
    std::string mTitle;
    vyr::cTempo mTempo;    ///< without seconds the page has none, and no music
    double mLastRow = 1.0; ///< the show ends there; above 0
    std::vector<const sync_track *> mTracks;
    std::vector<timeline::cSectionSpan> mSections;
    timeline::tValueNames mValueNames; ///< what the timeline calls the values of a track
    std::vector<tools::cLyricSpan> mLyrics;
    std::map<int, std::string> mWords;          ///< of the lyrics
    std::optional<tools::cMusicMeasure> mMusic; ///< with its curves
};

/// An SVG page with all tracks over one time axis: sections, bars and seconds, the music's waveform
/// and loudness, the words, then a lane a track with its keys and its curve as the player gives it.
std::string PlotShow(const cPlotInput &input);

/// The same page for `track` alone, large, with the value of every key where there is room.
std::string PlotOneTrack(const cPlotInput &input, const sync_track &track);
} // namespace tracks
