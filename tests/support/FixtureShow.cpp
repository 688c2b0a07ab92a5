#include "tests/support/FixtureShow.h"

#include "demo/Tables.h"
#include "tests/support/LWO2Builder.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <stdexcept>

namespace fs = std::filesystem;

namespace test
{
namespace
{
const char vertexShader[] = "void main() { gl_Position = ftransform(); }\n";
const char plasmaShader[] =
    "uniform float time, alpha, flaresize;\nuniform vec2 resolution, flarepos;\n"
    "void main() { gl_FragColor = vec4(fract(time), resolution.x / 4096.0,"
    " flarepos.x + flarepos.y + flaresize, alpha); }\n";
const char noiseShader[] = "uniform float time, alpha;\n"
                           "void main() { gl_FragColor = vec4(fract(time), 1.0, 0.0, alpha); }\n";

void WritePicture(const fs::path &path, int number)
{
    std::vector<uint8_t> pixels;
    for (int i = 0; i < 8 * 8; i++)
        for (int channel : {number * 7 % 256, i * 4, 128, 255})
            pixels.push_back(uint8_t(channel));
    WritePng(path, 8, 8, 4, pixels);
}

void WritePictures(const fs::path &folder)
{
    int number = 0;
    for (const std::string &photo : demo::PhotoNames())
        WritePicture(folder / photo, number++);
    for (int i = 0; i < demo::kLyricCount; i++)
        WritePicture(folder / demo::LyricName(i), number++);
    for (const char *name : {"data/zemlogo.png", "data/vignette1.png", "data/tex9.png"})
        WritePicture(folder / name, number++);
}

bool IsPictureTrack(int track)
{
    using namespace demo;
    return track == LYRICS_NUM || track == IMAGE_LEFT || track == IMAGE_RIGHT ||
           track == IMAGE_CENTER || track == OBJECT_NUM || track == TUNNEL_TEXTURE;
}

// One key at row 0: white on, every picture off.
void WriteTracks(const fs::path &folder)
{
    const std::string header("\1\0\0\0\0\0\0\0", 8), row(4, '\0'), hold(1, '\0');
    const std::string zero(4, '\0'), one("\0\0\x80\x3F", 4), minusOne("\0\0\x80\xBF", 4);
    for (int i = 0; i < demo::TRACK_COUNT; i++) {
        const std::string name = demo::TrackName(demo::eTrack(i));
        const std::string &value = i == demo::FADE_BG_WHITE ? one
                                   : IsPictureTrack(i)      ? minusOne
                                                            : zero;
        WriteFile(folder / ("sync_" + name + ".track"), header + row + value + hold);
    }
}

void WriteMusic(const fs::path &path, double seconds)
{
    const std::string sine =
        "sine=frequency=440:sample_rate=44100:duration=" + std::to_string(seconds);
    const cProcessResult made = Run({"ffmpeg", "-y", "-loglevel", "error", "-f", "lavfi", "-i",
                                     sine, "-ac", "2", "-b:a", "64k", path.string()});
    if (made.mStatus != 0)
        throw std::runtime_error("ffmpeg: " + made.mErrors);
}
} // namespace

void LinkShowLibrary(const fs::path &folder)
{
    fs::create_directories(folder);
    fs::create_symlink(fs::path(VYR_BINARY_DIR) / "show/show.so", folder / "show.so");
}

void WriteFixtureShow(const fs::path &folder, double seconds)
{
    LinkShowLibrary(folder);
    WritePictures(folder);
    WriteFile(folder / "data/shaders/default.vs", vertexShader);
    WriteFile(folder / "data/shaders/plasma.fs", plasmaShader);
    WriteFile(folder / "data/shaders/noise.fs", noiseShader);
    WriteFile(folder / "data/oh1.lwo", lwo2::Form(lwo2::TriangleChunks()));
    WriteFile(folder / "data/oh2.lwo", lwo2::Form(lwo2::TriangleChunks()));
    WriteTracks(folder);
    WriteMusic(folder / "data/waiting.mp3", seconds);
}
} // namespace test
