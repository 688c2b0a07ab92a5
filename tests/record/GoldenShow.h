#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// A show of the tests' own, which has everything that the real one has and never changes when its
/// art does: pictures made from formulas, two shaders, two objects, and timelines.
namespace golden
{
struct cKey
{
    int32_t mRow;
    float mValue;
    int8_t mType = 0; // hold
};

/// Keys by track name; a track that is not named gets its value of rest, at which nothing shows.
using tTimeline = std::map<std::string, std::vector<cKey>>;

/// Eleven sections, as the real show has them, over all 3624 rows.
tTimeline Sections();
/// 32 rows for each of CountLayers() settings of one layer, all others off. Each track is in one.
tTimeline Layers();
int CountLayers();
/// Nothing but a white flash `perSecond` times a second, as high as `height`, over 10 seconds.
tTimeline Strobe(double perSecond, float height);

/// Writes data/ into `folder`, without music.
void WriteContent(const std::filesystem::path &folder);
void WriteTracks(const std::filesystem::path &folder, const tTimeline &timeline);
/// `seconds` of silence with a click, 5 ms long, at each whole second, encoded as data/waiting.mp3.
void WriteMusic(const std::filesystem::path &folder, double seconds);
} // namespace golden
