#pragma once

#include "sync/track.h"
#include "tools/support/Lyrics.h"
#include "tools/support/Music.h"
#include "tools/tracks/Timeline.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tracks
{
/// A stretch of the show with a name; rows.
struct cPlotSection
{
    std::string mName;
    double mFrom = 0.0, mTo = 0.0;
};

/// Everything that a plot shows; only the tracks, which must be legal, have to be there.
struct cPlotInput
{
    std::string mTitle;
    cTempo mTempo;         ///< without seconds the page has none, and no music
    double mLastRow = 1.0; ///< the show ends there; above 0
    std::vector<const sync_track *> mTracks;
    std::vector<cPlotSection> mSections;
    tValueNames mValueNames; ///< what the timeline calls the values of a track
    std::vector<tools::cLyricSpan> mLyrics;
    std::map<int, std::string> mWords;          ///< of the lyrics
    std::optional<tools::cMusicMeasure> mMusic; ///< with its curves
};

/// The sections of `timeline` that have a place and a length, and their repetitions, by their
/// start. Patterns are left out: they would hide the sections that they lie in.
std::vector<cPlotSection> SectionsOf(const cTimeline &timeline);

/// An SVG page with all tracks over one time axis: sections, bars and seconds, the music's waveform
/// and loudness, the words, then a lane a track with its keys and its curve as the player gives it.
std::string PlotShow(const cPlotInput &input);

/// The same page for `track` alone, large, with the value of every key where there is room.
std::string PlotOneTrack(const cPlotInput &input, const sync_track &track);
} // namespace tracks
