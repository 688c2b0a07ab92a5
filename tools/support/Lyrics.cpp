#include "tools/support/Lyrics.h"

#include "base/Truncate.h"
#include "tools/support/Files.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <sstream>

namespace tools
{
namespace
{
const int samplesPerRow = 8;
const size_t maximumLyricsBytes = 1u << 20;

// The lyric shown at `row`, or -1.
int LyricAt(const sync_track &number, const sync_track &fade, float opacity, double row)
{
    const int lyric = vyr::TruncateToInt(double(sync_get_val(&number, row)));
    return lyric >= 0 && sync_get_val(&fade, row) >= opacity ? lyric : -1;
}

void AddFault(const std::string &file, int line, size_t offset, const std::string &what,
              tFaults &faults)
{
    const std::string place = std::to_string(line) + ":" + std::to_string(offset + 1);
    faults.push_back({file + ":" + place, "", what});
}

void ReadLyric(const std::string &file, int number, std::string line,
               std::map<int, std::string> &lyrics, tFaults &faults)
{
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    if (line.find_first_not_of(" \t") == std::string::npos || line[0] == '#')
        return;
    int lyric = -1;
    const auto parsed = std::from_chars(line.data(), line.data() + line.size(), lyric);
    const auto length = size_t(parsed.ptr - line.data());
    if (parsed.ec != std::errc() || lyric < 0)
        return AddFault(file, number, 0, "expected a lyric's number, found " + Quote(line), faults);
    const size_t text = line.find_first_not_of(" \t", length);
    if (text == std::string::npos || text == length)
        return AddFault(file, number, length,
                        "expected a space and the words, found " + Quote(line.substr(length)),
                        faults);
    if (!lyrics.emplace(lyric, line.substr(text)).second)
        AddFault(file, number, 0,
                 "expected a new number, found a second line for lyric " + std::to_string(lyric),
                 faults);
}
} // namespace

cWordTracks FindWordTracks(const std::vector<std::string> &names)
{
    const std::string number = ":num", fade = ":fade";
    for (const std::string &name : names) {
        if (!name.ends_with(number))
            continue;
        const std::string other = name.substr(0, name.size() - number.size()) + fade;
        if (std::ranges::find(names, other) != names.end())
            return {name, other};
    }
    return {};
}

std::vector<cLyricSpan> FindLyricSpans(const sync_track &number, const sync_track &fade,
                                       float opacity, double lastRow)
{
    std::vector<cLyricSpan> spans;
    int shown = -1;
    for (int64_t i = 0; shown >= 0 || double(i) / samplesPerRow < lastRow; i++) {
        const double row = std::min(double(i) / samplesPerRow, lastRow);
        const bool isOver = row >= lastRow;
        const int lyric = isOver ? -1 : LyricAt(number, fade, opacity, row);
        if (lyric == shown)
            continue;
        if (shown >= 0)
            spans.back().mTo = row;
        if (lyric >= 0)
            spans.push_back({lyric, row, row});
        shown = lyric;
    }
    return spans;
}

std::map<int, std::string> ReadLyrics(const std::filesystem::path &path, tFaults &faults)
{
    std::map<int, std::string> lyrics;
    std::string text, error;
    if (!ReadWhole(path, maximumLyricsBytes, text, error)) {
        faults.push_back({path.string(), "", error});
        return lyrics;
    }
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); number++)
        ReadLyric(path.string(), number, line, lyrics, faults);
    return lyrics;
}
} // namespace tools
