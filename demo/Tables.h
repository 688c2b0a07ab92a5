#pragma once

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

/// What the show consists of, by name: its tracks, its files, its length. Said here and nowhere
/// else; no OpenGL, no tracks are needed to know it.
namespace demo
{
/// The tracks, in the order in which they are loaded.
enum eTrack : int
{
    FADE_BG_WHITE,
    FADE_FG_BLACK,
    FADE_FG_NOISE,
    FADE_PLASMA,
    FLARE_X,
    FLARE_Y,
    FLARE_SIZE,
    LYRICS_NUM,
    LYRICS_FADE,
    LYRICS_X,
    LYRICS_Y,
    IMAGE_ZEMLOGO,
    IMAGE_LEFT,
    IMAGE_RIGHT,
    IMAGE_CENTER,
    IMAGE_CENTER_ALPHA,
    OBJECT_NUM,
    OBJECT_X,
    OBJECT_Y,
    OBJECT_Z,
    TUNNEL_TEXTURE,
    TUNNEL_POS,
    TRACK_COUNT
};

/// Their names in the files, at the same places.
inline constexpr std::array<const char *, TRACK_COUNT> kTrackNames = {
    "fade:bg_white",  "fade:fg_black", "fade:fg_noise", "fade:plasma",
    "flare:x",        "flare:y",       "flare:size",    "lyrics:num",
    "lyrics:fade",    "lyrics:x",      "lyrics:y",      "image:zemlogo",
    "image:left",     "image:right",   "image:center",  "image:center_alpha",
    "object:num",     "object:x",      "object:y",      "object:z",
    "tunnel:texture", "tunnel:pos"};

/// The photographs: paths, in the order of the numbers by which the picture tracks pick them.
inline constexpr std::array kPhotoFiles = {"data/duck.png",
                                           "data/frenchduck.png",
                                           "data/photos/tovak01.png",
                                           "data/photos/tovak02.png",
                                           "data/photos/tovak03.png",
                                           "data/photos/tovak04.png",
                                           "data/photos/tovak05.png",
                                           "data/photos/tovak06.png",
                                           "data/photos/tovak07.png",
                                           "data/photos/tovak08.png",
                                           "data/photos/tovak09.png",
                                           "data/photos/tovak10.png",
                                           "data/photos/tovak11.png",
                                           "data/photos/tovak12.png",
                                           "data/photos/vemby01.png",
                                           "data/photos/vemby02.png",
                                           "data/photos/vemby03.png",
                                           "data/photos/vemby04.png",
                                           "data/photos/vemby05.png",
                                           "data/photos/vemby06.png",
                                           "data/photos/vembyskarnold01.png",
                                           "data/photos/skarnold01.png",
                                           "data/photos/skarnold02.png",
                                           "data/photos/skarnold03.png",
                                           "data/photos/skarnold04.png",
                                           "data/photos/skarnold05.png",
                                           "data/photos/skarnold06.png",
                                           "data/photos/leather.png",
                                           "data/photos/heart.png"};

inline constexpr int kPhotoCount = int(kPhotoFiles.size());
inline constexpr int kLyricCount = 34;

/// The music's clock: rows a second, and the row at which the show ends.
inline constexpr double kRowsPerSecond = 17.6;
inline constexpr double kLastRow = 3624.0;

/// The screen that all positions are laid out for, in design units.
inline constexpr float kDesignWidth = 1280.0f;
inline constexpr float kDesignHeight = 720.0f;

/// The files that no track picks: paths under the working directory, as those of the photos are.
inline constexpr const char *kVertexShaderFile = "data/shaders/default.vs";
inline constexpr const char *kNoiseShaderFile = "data/shaders/noise.fs";
inline constexpr const char *kPlasmaShaderFile = "data/shaders/plasma.fs";
inline constexpr const char *kLogoFile = "data/zemlogo.png";
inline constexpr const char *kVignetteFile = "data/vignette1.png";
inline constexpr const char *kTunnelFile = "data/tex9.png";
inline constexpr const char *kObject1File = "data/oh1.lwo";
inline constexpr const char *kObject2File = "data/oh2.lwo";
inline constexpr const char *kMusicFile = "data/waiting.mp3";

/// Prefix of the track files: "tunnel:pos" is read from sync_tunnel:pos.track.
inline constexpr const char *kTrackPrefix = "sync";

inline const char *TrackName(eTrack track) { return kTrackNames[size_t(track)]; }

/// kPhotoFiles, as the texture manager takes them.
inline std::array<std::string, kPhotoCount> PhotoNames()
{
    std::array<std::string, kPhotoCount> names;
    std::copy(kPhotoFiles.begin(), kPhotoFiles.end(), names.begin());
    return names;
}

/// Path of a lyric image, 0 to kLyricCount - 1; it has no extension.
inline std::string LyricName(int number)
{
    char name[64];
    std::snprintf(name, sizeof name, "data/lyrics/lyrics%03d", number);
    return name;
}
} // namespace demo
