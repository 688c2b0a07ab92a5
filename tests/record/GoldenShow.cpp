#include "tests/record/GoldenShow.h"

#include "demo/Tables.h"
#include "tests/support/FixtureShow.h"
#include "tests/support/LWO2Builder.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <cmath>
#include <cstring>
#include <functional>
#include <stdexcept>

namespace fs = std::filesystem;

namespace golden
{
namespace
{
using tPixels = std::vector<uint8_t>;
using tColor = std::array<int, 4>;
using tFormula = std::function<tColor(int x, int y)>;

const int width = 1280; // of the show's screen, in design units

const char vertexShader[] = "void main()\n"
                            "{\n"
                            "    gl_Position = ftransform();\n"
                            "    gl_TexCoord[0] = gl_MultiTexCoord0;\n"
                            "}\n";

// Bands that wander, and a disc at the flare's place: each uniform shows.
const char plasmaShader[] =
    "uniform float time, alpha, flaresize;\n"
    "uniform vec2 resolution, flarepos;\n"
    "void main()\n"
    "{\n"
    "    vec2 p = gl_FragCoord.xy / resolution;\n"
    "    float band = abs(fract(p.x * 3.0 + p.y * 2.0 + time * 0.125) * 2.0 - 1.0);\n"
    "    float disc = clamp(1.5 - distance(p, flarepos) / max(flaresize, 0.001), 0.0, 1.0);\n"
    "    vec3 color = mix(vec3(0.05, 0.16, 0.20), vec3(0.30, 0.55, 0.50), band);\n"
    "    gl_FragColor = vec4(color + disc * vec3(0.9, 0.6, 0.25), alpha);\n"
    "}\n";

// Squares of 8 pixels: a finer pattern would only fill the reference pictures.
const char noiseShader[] =
    "uniform float time, alpha;\n"
    "void main()\n"
    "{\n"
    "    vec2 cell = floor(gl_FragCoord.xy / 8.0);\n"
    "    float v = fract(cell.x * 0.731 + cell.y * 0.377 + cell.x * cell.y * 0.137 + time);\n"
    "    gl_FragColor = vec4(v, v, v, alpha * 0.5);\n"
    "}\n";

void WritePicture(const fs::path &path, int across, int down, const tFormula &formula)
{
    tPixels pixels;
    pixels.reserve(size_t(across) * size_t(down) * 4);
    for (int y = 0; y < down; y++)
        for (int x = 0; x < across; x++)
            for (int channel : formula(x, y))
                pixels.push_back(uint8_t(std::clamp(channel, 0, 255)));
    test::WritePng(path, across, down, 4, pixels);
}

// A frame, a gradient and as many dark bars as the number says in binary.
void WritePhoto(const fs::path &path, int number)
{
    const int across = 360, down = 270;
    WritePicture(path, across, down, [number](int x, int y) -> tColor {
        if (x < 12 || y < 12 || x >= across - 12 || y >= down - 12)
            return {245, 233, 208, 255};
        const int bar = (x - 12) / 68;
        const bool isDark = (number >> bar & 1) != 0 && (x - 12) % 68 < 34 && y > 150;
        return {isDark ? 30 : 60 + number * 6, isDark ? 30 : 255 - y * 3 / 4, x / 2, 255};
    });
}

// Letters as blocks: the number in binary, opaque on nothing.
void WriteLyric(const fs::path &path, int number)
{
    WritePicture(path, 480, 64, [number](int x, int y) -> tColor {
        const int letter = x / 80;
        const int top = (number >> letter & 1) != 0 ? 4 : 30;
        const bool isInk = x % 80 > 12 && y >= top && y < 60;
        return {255, 179, 71, isInk ? 255 : 0};
    });
}

void WriteDisc(const fs::path &path, int size)
{
    WritePicture(path, size, size, [size](int x, int y) -> tColor {
        const double radius = std::hypot(x - size / 2, y - size / 2) / (size / 2);
        return {200, 85, 61, radius < 1.0 && radius > 0.55 ? 255 : 0};
    });
}

void WriteVignette(const fs::path &path)
{
    WritePicture(path, width, 720, [](int x, int y) -> tColor {
        const double edge = std::hypot((x - 640) / 640.0, (y - 360) / 360.0);
        return {0, 0, 0, int(110.0 * edge * edge)};
    });
}

// A ring and eight spokes.
void WriteTunnelTexture(const fs::path &path)
{
    WritePicture(path, 128, 128, [](int x, int y) -> tColor {
        const double radius = std::hypot(x - 63.5, y - 63.5);
        const bool isSpoke = radius > 24.0 && (std::abs(x - y) < 4 || std::abs(x + y - 127) < 4 ||
                                               std::abs(x - 63) < 3 || std::abs(y - 63) < 3);
        const bool isRing = radius > 46.0 && radius < 60.0;
        return {255, 255, 255, isRing || (isSpoke && radius < 60.0) ? 255 : 0};
    });
}

void WritePictures(const fs::path &folder)
{
    int number = 0;
    for (const std::string &photo : demo::PhotoNames())
        WritePhoto(folder / photo, number++);
    for (int i = 0; i < demo::kLyricCount; i++)
        WriteLyric(folder / demo::LyricName(i), i);
    WriteDisc(folder / "data/zemlogo.png", 300);
    WriteVignette(folder / "data/vignette1.png");
    WriteTunnelTexture(folder / "data/tex9.png");
    WritePicture(folder / "data/skin.png", 64, 64, [](int x, int y) -> tColor {
        const int check = ((x / 8) + (y / 8)) % 2 * 120;
        return {120 + check, 40 + check, 220 - check, 255};
    });
}

std::string Corners(const std::vector<std::array<float, 3>> &points)
{
    std::string body;
    for (const auto &point : points)
        for (float value : point)
            body += lwo2::F4(value);
    return lwo2::Chunk("PNTS", body);
}

std::string TextureMap(const std::vector<std::pair<float, float>> &coordinates)
{
    std::string body = "TXUV" + lwo2::U2(2) + lwo2::S0("uv");
    for (size_t i = 0; i < coordinates.size(); i++)
        body += lwo2::U2(int(i)) + lwo2::F4(coordinates[i].first) + lwo2::F4(coordinates[i].second);
    return lwo2::Chunk("VMAP", body);
}

// A pyramid seen from its tip, with a picture on its four sides.
std::string Pyramid()
{
    return Corners({{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}, {0, 0, 1}}) +
           lwo2::Tags({"skin"}) + TextureMap({{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0.5f, 0.5f}}) +
           lwo2::Faces({{0, 1, 4}, {1, 2, 4}, {2, 3, 4}, {3, 0, 4}}) +
           lwo2::PolygonTags({{0, 0}, {1, 0}, {2, 0}, {3, 0}}) + lwo2::Clip(1, "data/skin.png") +
           lwo2::Surface("skin", lwo2::ColorPart(1, 1, 1) + lwo2::ImagePart(1));
}

// Two triangles of two colours, without a picture.
std::string Kite()
{
    return Corners({{0, 1.2f, 0},
                    {-0.8f, 0, 0},
                    {0.8f, 0, 0},
                    {0, -1.6f, 0},
                    {0.8f, 0, 0},
                    {-0.8f, 0, 0}}) +
           lwo2::Tags({"top", "bottom"}) + lwo2::Faces({{0, 1, 2}, {3, 4, 5}}) +
           lwo2::PolygonTags({{0, 0}, {1, 1}}) +
           lwo2::Surface("top", lwo2::ColorPart(1.0f, 0.7f, 0.3f)) +
           lwo2::Surface("bottom", lwo2::ColorPart(0.3f, 0.5f, 0.9f));
}

float RestOf(const std::string &track)
{
    const bool choosesPicture = track == "lyrics:num" || track == "image:left" ||
                                track == "image:right" || track == "image:center" ||
                                track == "object:num" || track == "tunnel:texture";
    return choosesPicture ? -1.0f : 0.0f;
}

void AppendInteger(std::string &bytes, uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(char(value >> shift & 0xFF));
}

std::string TrackBytes(const std::vector<cKey> &keys)
{
    std::string bytes;
    AppendInteger(bytes, uint32_t(keys.size()));
    AppendInteger(bytes, 0);
    for (const cKey &key : keys) {
        uint32_t value = 0;
        std::memcpy(&value, &key.mValue, sizeof value);
        AppendInteger(bytes, uint32_t(key.mRow));
        AppendInteger(bytes, value);
        bytes.push_back(char(key.mType));
    }
    return bytes;
}

/// Puts values on a timeline, each from its row on.
class cComposer
{
public:
    /// From bar `bar` to bar `end` `track` is `value`, then at rest again.
    void Set(const std::string &track, double bar, double end, float value)
    {
        Key(track, bar, value, 0);
        Key(track, end, RestOf(track), 0);
    }

    /// From `first` at `bar` to `last` at `end` by interpolation `type`, which stays until bar
    /// `rest`; then at rest again.
    void Move(const std::string &track, double bar, double end, float first, float last, int type,
              double rest)
    {
        Key(track, bar, first, type);
        Key(track, end, last, 0);
        if (rest > end)
            Key(track, rest, RestOf(track), 0);
    }

    tTimeline Timeline() const { return mTimeline; }

private:
    void Key(const std::string &track, double bar, float value, int type)
    {
        auto &keys = mTimeline[track];
        if (keys.empty() && bar > 0.0)
            keys.push_back({0, RestOf(track)});
        const cKey key{int32_t(std::lround(bar * 32.0)), value, int8_t(type)};
        while (!keys.empty() && keys.back().mRow >= key.mRow)
            keys.pop_back();
        keys.push_back(key);
    }

    tTimeline mTimeline;
};

void ComposeVerse(cComposer &to, int bar, int bars, int photo, int lyric)
{
    to.Set("fade:plasma", bar, bar + bars, 0.8f);
    for (int i = 0; i < bars; i += 4) {
        to.Set("image:left", bar + i, bar + i + 4, float(photo + i / 4));
        to.Set("image:right", bar + i + 1, bar + i + 3, float(photo + 3 + i / 4));
    }
    for (int i = 0; i < bars; i += 2) {
        to.Set("lyrics:num", bar + i, bar + i + 2, float(lyric + i / 2));
        to.Move("lyrics:fade", bar + i, bar + i + 1, 0.0f, 1.0f, 1, bar + i + 2);
    }
    to.Set("lyrics:x", bar, bar + bars, 400.0f);
    to.Set("lyrics:y", bar, bar + bars, 600.0f);
}

void ComposeChorus(cComposer &to, int bar, int bars, int photo)
{
    to.Move("fade:bg_white", bar, bar + 1, 1.0f, 0.0f, 3, bar + 1);
    to.Set("fade:plasma", bar, bar + bars, 1.0f);
    to.Move("flare:x", bar, bar + bars, 0.1f, 0.9f, 2, 0);
    to.Set("flare:y", bar, bar + bars, 0.5f);
    to.Set("flare:size", bar, bar + bars, 0.2f);
    to.Set("image:center", bar, bar + bars, float(photo));
    to.Move("image:center_alpha", bar, bar + bars, 1.0f, 0.2f, 1, 0);
    to.Set("fade:fg_noise", bar, bar + bars, 0.3f);
}

void ComposeTunnel(cComposer &to, int bar, int bars, float speed)
{
    to.Set("tunnel:texture", bar, bar + bars, 0.0f);
    to.Move("tunnel:pos", bar, bar + bars, 0.0f, speed * float(bars), 3, 0);
    to.Set("object:num", bar + 1, bar + bars, float(bar % 2));
    to.Move("object:x", bar + 1, bar + bars, -2.0f, 2.0f, 2, 0);
    to.Set("object:z", bar + 1, bar + bars, -6.0f);
}

struct cSetting
{
    const char *mTrack;
    float mValue;
};
using tLayer = std::vector<cSetting>;

bool HasTrack(const std::vector<tLayer> &layers, const std::string &track)
{
    for (const tLayer &layer : layers)
        for (const cSetting &setting : layer)
            if (setting.mTrack == track)
                return true;
    return false;
}

// A track that none of them sets has a layer of its own, at 1.
std::vector<tLayer> AllLayers()
{
    std::vector<tLayer> layers = {
        {},
        {{"fade:plasma", 1.0f}},
        {{"fade:plasma", 1.0f}, {"flare:x", 0.3f}, {"flare:y", 0.7f}, {"flare:size", 0.25f}},
        {{"fade:plasma", 0.4f}},
        {{"tunnel:texture", 0.0f}, {"tunnel:pos", 0.0f}},
        {{"tunnel:texture", 7.0f}, {"tunnel:pos", 33.3f}},
        {{"image:left", 0.0f}},
        {{"image:left", 28.0f}},
        {{"image:right", 3.9f}},
        {{"image:right", 20.0f}},
        {{"image:center", 5.0f}, {"image:center_alpha", 1.0f}},
        {{"image:center", 12.0f}, {"image:center_alpha", 0.5f}},
        {{"lyrics:num", -0.4f}, {"lyrics:fade", 1.0f}, {"lyrics:x", 60.0f}, {"lyrics:y", 90.0f}},
        {{"lyrics:num", 33.0f}, {"lyrics:fade", 0.5f}, {"lyrics:x", 700.5f}, {"lyrics:y", 500.0f}},
        {{"object:num", 0.0f}, {"object:z", -3.0f}},
        {{"object:num", 1.0f}, {"object:x", 1.5f}, {"object:y", -0.5f}, {"object:z", -4.0f}},
        {{"fade:fg_noise", 1.0f}},
        {{"fade:fg_noise", 0.3f}},
        {{"image:zemlogo", 1.0f}},
        {{"image:zemlogo", 0.5f}},
        {{"fade:bg_white", 0.5f}},
        {{"fade:bg_white", 1.0f}},
        {{"fade:bg_white", 1.0f}, {"fade:fg_black", 0.5f}},
        {{"object:num", 0.0f}, {"object:y", 2.0f}, {"object:z", -12.0f}}};
    for (const char *track : demo::kTrackNames)
        if (!HasTrack(layers, track))
            layers.push_back({{track, 1.0f}});
    return layers;
}
} // namespace

tTimeline Sections()
{
    cComposer to;
    to.Move("fade:fg_black", 0, 4, 1.0f, 0.0f, 2, 0);
    to.Set("fade:plasma", 0, 8, 0.5f);
    to.Move("image:zemlogo", 4, 7, 0.0f, 1.0f, 2, 8);
    ComposeVerse(to, 8, 16, 2, 0);
    ComposeChorus(to, 24, 16, 9);
    ComposeTunnel(to, 40, 6, 8.0f);
    ComposeVerse(to, 46, 16, 14, 14);
    ComposeTunnel(to, 62, 8, 20.0f);
    ComposeChorus(to, 70, 16, 21);
    ComposeVerse(to, 86, 8, 22, 22);
    ComposeTunnel(to, 94, 4, 11.0f);
    ComposeChorus(to, 98, 12, 28);
    to.Set("lyrics:num", 110, 113, 33.0f);
    to.Set("lyrics:fade", 110, 113, 1.0f);
    to.Set("lyrics:x", 110, 113, 400.0f);
    to.Set("lyrics:y", 110, 113, 330.0f);
    to.Move("fade:fg_black", 110, 113, 0.0f, 1.0f, 1, 0);
    return to.Timeline();
}

tTimeline Layers()
{
    cComposer to;
    int bar = 0;
    for (const tLayer &layer : AllLayers()) {
        for (const cSetting &setting : layer)
            to.Set(setting.mTrack, bar, bar + 1, setting.mValue);
        bar++;
    }
    return to.Timeline();
}

int CountLayers() { return int(AllLayers().size()); }

tTimeline Strobe(double perSecond, float height)
{
    std::vector<cKey> keys;
    const double rowsPerFlash = 17.6 / perSecond;
    for (double row = 0.0; row < 176.0; row += rowsPerFlash) {
        keys.push_back({int32_t(row), height});
        keys.push_back({int32_t(row + 0.5 * rowsPerFlash), 0.0f});
    }
    return {{"fade:bg_white", keys}};
}

void WriteContent(const fs::path &folder)
{
    test::LinkShowLibrary(folder);
    WritePictures(folder);
    test::WriteFile(folder / "data/shaders/default.vs", vertexShader);
    test::WriteFile(folder / "data/shaders/plasma.fs", plasmaShader);
    test::WriteFile(folder / "data/shaders/noise.fs", noiseShader);
    test::WriteFile(folder / "data/oh1.lwo", lwo2::Form(Pyramid()));
    test::WriteFile(folder / "data/oh2.lwo", lwo2::Form(Kite()));
}

void WriteTracks(const fs::path &folder, const tTimeline &timeline)
{
    for (int i = 0; i < demo::TRACK_COUNT; i++) {
        const std::string name = demo::TrackName(demo::eTrack(i));
        const auto found = timeline.find(name);
        const std::vector<cKey> keys =
            found == timeline.end() ? std::vector<cKey>{{0, RestOf(name)}} : found->second;
        test::WriteFile(folder / ("sync_" + name + ".track"), TrackBytes(keys));
    }
}

void WriteMusic(const fs::path &folder, double seconds)
{
    const std::string clicks =
        "aevalsrc=0.7*lt(mod(t\\,1)\\,0.005)*sin(6283*t):s=44100:d=" + std::to_string(seconds);
    const test::cProcessResult made =
        test::Run({"ffmpeg", "-y", "-loglevel", "error", "-f", "lavfi", "-i", clicks, "-ac", "2",
                   "-b:a", "192k", (folder / "data/waiting.mp3").string()});
    if (made.mStatus != 0)
        throw std::runtime_error("ffmpeg: " + made.mErrors);
}
} // namespace golden
