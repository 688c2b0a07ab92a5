#pragma once

#include "sync/track.h"
#include "tools/support/Faults.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tools
{
/// While lyric image `mLyric` is on the screen; rows, to an eighth of a row.
struct cLyricSpan
{
    int mLyric = 0;
    double mFrom = 0.0, mTo = 0.0;
};

/// Where the show has a lyric image on the screen with at least `opacity`, up to its last row.
/// Both tracks must be legal.
std::vector<cLyricSpan> FindLyricSpans(const sync_track &number, const sync_track &fade,
                                       float opacity);

/// Reads the words: a line each, "NUMBER TEXT"; lines that start with # and empty ones are left
/// out. Faults name line and column.
std::map<int, std::string> ReadLyrics(const std::filesystem::path &path, tFaults &faults);
} // namespace tools
