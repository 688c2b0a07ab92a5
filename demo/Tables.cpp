#include "demo/Tables.h"

#include <cstdio>

namespace demo
{
namespace
{
const char *const trackNames[TRACK_COUNT] = {
    "fade:bg_white",  "fade:fg_black", "fade:fg_noise", "fade:plasma",
    "flare:x",        "flare:y",       "flare:size",    "lyrics:num",
    "lyrics:fade",    "lyrics:x",      "lyrics:y",      "image:zemlogo",
    "image:left",     "image:right",   "image:center",  "image:center_alpha",
    "object:num",     "object:x",      "object:y",      "object:z",
    "tunnel:texture", "tunnel:pos"};

std::string Numbered(const char *format, int number)
{
    char name[64];
    std::snprintf(name, sizeof name, format, number);
    return name;
}
} // namespace

const char *TrackName(eTrack track) { return trackNames[track]; }

std::array<std::string, kPhotoCount> PhotoNames()
{
    std::array<std::string, kPhotoCount> names;
    size_t count = 0;
    names[count++] = "data/duck.png";
    names[count++] = "data/frenchduck.png";
    for (int i = 1; i <= 12; i++)
        names[count++] = Numbered("data/photos/tovak%02d.png", i);
    for (int i = 1; i <= 6; i++)
        names[count++] = Numbered("data/photos/vemby%02d.png", i);
    names[count++] = "data/photos/vembyskarnold01.png";
    for (int i = 1; i <= 6; i++)
        names[count++] = Numbered("data/photos/skarnold%02d.png", i);
    names[count++] = "data/photos/leather.png";
    names[count++] = "data/photos/heart.png";
    return names;
}

std::string LyricName(int number) { return Numbered("data/lyrics/lyrics%03d", number); }

std::array<std::string, kLyricCount> LyricNames()
{
    std::array<std::string, kLyricCount> names;
    for (int i = 0; i < kLyricCount; i++)
        names[size_t(i)] = LyricName(i);
    return names;
}
} // namespace demo
