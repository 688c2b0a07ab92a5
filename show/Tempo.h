#pragma once

#include <string>

namespace vyr
{
struct cShowDescription;

/// How a show counts time: its rows in seconds, beats and bars. A tempo that is not known has
/// the usual beats and bars, and no seconds.
struct cTempo
{
    double mRowsPerSecond = 0.0; ///< 0: not known, and Seconds and Rows must not be asked
    int mRowsPerBeat = 8, mBeatsPerBar = 4;

    bool HasSeconds() const { return mRowsPerSecond > 0.0; }
    int RowsPerBar() const { return mRowsPerBeat * mBeatsPerBar; }
    double Seconds(double row) const { return row / mRowsPerSecond; }
    double Rows(double seconds) const { return seconds * mRowsPerSecond; }

    bool operator==(const cTempo &) const = default;
};

/// What a tempo may be: beats a minute, rows a beat (from 1), beats a bar (from 1).
inline constexpr double kMinimumBeatsPerMinute = 1.0, kMaximumBeatsPerMinute = 10'000.0;
inline constexpr int kMaximumRowsPerBeat = 1000, kMaximumBeatsPerBar = 1000;

/// The tempo of `beatsPerMinute`; all three within the limits above.
cTempo TempoOf(double beatsPerMinute, int rowsPerBeat = 8, int beatsPerBar = 4);
cTempo TempoOf(const cShowDescription &description);

/// "132 8 4": what stands after `tempo` in a timeline, so that reading it gives `tempo` again,
/// which has seconds.
std::string FormatTempo(const cTempo &tempo);
} // namespace vyr
