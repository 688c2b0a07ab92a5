#include "show/Tempo.h"

#include "show/Show.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace vyr
{
namespace
{
double RowsPerSecond(double beatsPerMinute, int rowsPerBeat)
{
    return beatsPerMinute / 60.0 * rowsPerBeat;
}

std::string Shortest(double number)
{
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof text, number).ptr);
}

// Dividing does not always undo multiplying: the number may be one of the neighbours.
double BeatsPerMinute(const cTempo &tempo)
{
    const double near = tempo.mRowsPerSecond / tempo.mRowsPerBeat * 60.0;
    double lower = near, upper = near;
    for (int i = 0; i < 4; i++) {
        for (double candidate : {lower, upper})
            if (RowsPerSecond(candidate, tempo.mRowsPerBeat) == tempo.mRowsPerSecond)
                return candidate;
        lower = std::nextafter(lower, 0.0);
        upper = std::nextafter(upper, std::numeric_limits<double>::max());
    }
    return near;
}
} // namespace

cTempo TempoOf(double beatsPerMinute, int rowsPerBeat, int beatsPerBar)
{
    return {RowsPerSecond(beatsPerMinute, rowsPerBeat), rowsPerBeat, beatsPerBar};
}

cTempo TempoOf(const cShowDescription &description)
{
    return {description.mRowsPerSecond, description.mRowsPerBeat, description.mBeatsPerBar};
}

std::string FormatTempo(const cTempo &tempo)
{
    return Shortest(BeatsPerMinute(tempo)) + " " + std::to_string(tempo.mRowsPerBeat) + " " +
           std::to_string(tempo.mBeatsPerBar);
}
} // namespace vyr
