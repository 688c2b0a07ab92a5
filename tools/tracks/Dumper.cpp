#include "tools/tracks/Dumper.h"

#include "show/Time.h"
#include "tools/timeline/Lexer.h"
#include "tools/timeline/Timeline.h"

#include <charconv>

namespace tracks
{
namespace
{
// Columns line up in any show of usual length, and a longer number moves only its own line.
const size_t timeWidth = 9, valueWidth = 10;

void AppendPadded(std::string &text, const std::string &word, size_t width)
{
    text += word;
    text.append(word.size() < width ? width - word.size() : 0, ' ');
}

void AppendTrack(std::string &text, const sync_track &track, const vyr::cTempo &tempo)
{
    text += "\ntrack " + timeline::QuoteName(track.name) + "\n";
    for (int i = 0; i < track.num_keys; i++) {
        const sync_key &key = track.keys[i];
        text += "  ";
        AppendPadded(text, vyr::FormatRow(key.row, tempo), timeWidth);
        text += ' ';
        AppendPadded(text, vyr::FormatValue(key.value), valueWidth);
        text += ' ';
        text += timeline::kInterpolations[key.type];
        text += '\n';
    }
}

std::string FormatNumber(double value)
{
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}
} // namespace

std::string Dump(const std::vector<const sync_track *> &tracks, const vyr::cTempo &tempo)
{
    std::string text = "# time is bar:beat:row, " + std::to_string(tempo.mBeatsPerBar) +
                       " beats a bar, " + std::to_string(tempo.mRowsPerBeat) + " rows a beat\n";
    if (tempo.HasSeconds())
        text += "tempo " + vyr::FormatTempo(tempo) + "\n";
    for (const sync_track *track : tracks)
        AppendTrack(text, *track, tempo);
    return text;
}

std::string SampleAsCsv(const sync_track &track, double from, double to, double step)
{
    std::string text = "row,value\n";
    for (long long i = 0; from + double(i) * step <= to; i++) {
        const double row = from + double(i) * step;
        text += FormatNumber(row) + "," + vyr::FormatValue(sync_get_val(&track, row)) + "\n";
    }
    return text;
}
} // namespace tracks
