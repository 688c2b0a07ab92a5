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

/// The tracks of a show's words, by name: "NAME:num" picks an image of them, "NAME:fade" is its
/// opacity.
struct cWordTracks
{
    std::string mNumber = "lyrics:num", mFade = "lyrics:fade";
};

/// The first track of `names` that is called NAME:num and has a NAME:fade beside it; else the usual
/// ones, whether they are there or not.
cWordTracks FindWordTracks(const std::vector<std::string> &names);

/// Where the show has a lyric image on the screen with at least `opacity`, before `lastRow`, where
/// it ends. Both tracks must be legal.
std::vector<cLyricSpan> FindLyricSpans(const sync_track &number, const sync_track &fade,
                                       float opacity, double lastRow);

/// Reads the words: a line each, "NUMBER TEXT"; lines that start with # and empty ones are left
/// out. Faults name line and column.
std::map<int, std::string> ReadLyrics(const std::filesystem::path &path, tFaults &faults);
} // namespace tools
