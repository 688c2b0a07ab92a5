#pragma once

#include <array>
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

inline constexpr int kPhotoCount = 29;
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

const char *TrackName(eTrack track);
std::array<std::string, kPhotoCount> PhotoNames(); ///< paths, in the order of the picture tracks
std::string LyricName(int number);                 ///< path of a lyric image; it has no extension
std::array<std::string, kLyricCount> LyricNames(); ///< all of them
} // namespace demo
