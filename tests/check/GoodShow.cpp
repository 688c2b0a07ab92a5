#include "tests/check/GoodShow.h"

#include "demo/Tables.h"
#include "show/ShowFolder.h"
#include "tests/support/FixtureShow.h"
#include "tests/support/LWO2Builder.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"
#include "tools/timeline/Compiler.h"

#include <stdexcept>

namespace fs = std::filesystem;

namespace test
{
namespace
{
const char *const music = "data/waiting.mp3";

// Each lyric for a little over two seconds, each photo for a tenth of that and more.
void WriteTracks()
{
    std::vector<sync_key> lyrics, photos;
    for (int i = 0; i < demo::kLyricCount; i++)
        lyrics.push_back({i * 40, float(i), SYNC_KEY_HOLD});
    lyrics.push_back({demo::kLyricCount * 40, -1.0f, SYNC_KEY_HOLD});
    for (int i = 0; i < demo::kPhotoCount; i++)
        photos.push_back({i * 100, float(i), SYNC_KEY_HOLD});
    WriteTrack("lyrics:num", lyrics);
    WriteTrack("lyrics:fade", {{0, 1.0f, SYNC_KEY_HOLD}});
    WriteTrack("image:left", photos);
}

// A triangle whose surface shows the first clip.
std::string TexturedObject()
{
    using namespace lwo2;
    return Form(Tags({"skin"}) + Points({{0, 0}, {1, 0}, {0, 1}}) + Faces({{0, 1, 2}}) +
                PolygonTags({{0, 0}}) + Clip(1, "C:/proj/data/tex9.png") +
                Surface("skin", ColorPart(1, 1, 1) + ImagePart(1)));
}

/// The show as it is first made, for copies.
class cOriginal
{
public:
    cOriginal()
    {
        WriteFixtureShow(".", 1.0);
        for (int i = 0; i < demo::kLyricCount; i++)
            WriteLyricImage(demo::LyricName(i), 255, 0, 255);
        WriteTracks();
        WriteFile("data/oh1.lwo", TexturedObject());
        // -14 LUFS; ffmpeg's sine has 18 dB less than full scale and loses 3 more in two channels

        WriteMusic({"-i", "sine=frequency=440:sample_rate=44100:duration=206.2", "-af",
                    "volume=8.1dB", "-ac", "2", "-b:a", "48k"});
    }
    const fs::path &Path() const { return mFolder.Path(); }

private:
    cTemporaryFolder mFolder;
};
} // namespace

void MakeGoodShow()
{
    const fs::path here = fs::current_path();
    static const cOriginal original; // works in a folder of its own
    fs::current_path(here);
    fs::copy(original.Path(), here, fs::copy_options::recursive);
    fs::remove(music);
    fs::create_symlink(original.Path() / music, music);
}

const vyr::cShowDescription &GetShow()
{
    static const vyr::cShowDescription show =
        vyr::cShowFolder(fs::path(VYR_BINARY_DIR) / "show").GetDescription();
    return show;
}

int CountPhotos() { return demo::kPhotoCount; }
int CountLyrics() { return demo::kLyricCount; }

std::string TrackBytes(const std::vector<sync_key> &keys)
{
    return timeline::TrackFileBytes({"", keys});
}

void WriteTrack(const std::string &name, const std::vector<sync_key> &keys)
{
    WriteFile("sync_" + name + ".track", TrackBytes(keys));
}

void WriteMusic(const std::vector<std::string> &arguments)
{
    fs::remove(music);
    std::vector<std::string> command = {"ffmpeg", "-y", "-loglevel", "error", "-f", "lavfi"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    command.push_back(music);
    const cProcessResult made = Run(command);
    if (made.mStatus != 0)
        throw std::runtime_error("ffmpeg: " + made.mErrors);
}

void WriteFlatImage(const std::string &path, int width, int height, int components)
{
    WritePng(path, width, height, components,
             std::vector<uint8_t>(size_t(width * height * components), 128));
}

void WriteLyricImage(const std::string &path, int letters, int backing, int backingAlpha)
{
    const int width = 64, height = 32;
    std::vector<uint8_t> pixels;
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) {
            const bool isLetter = y >= 10 && y < 22 && x >= 10 && x < 54 && x % 8 < 3;
            const int level = isLetter ? letters : backing;
            for (int channel = 0; channel < 3; channel++)
                pixels.push_back(uint8_t(level));
            pixels.push_back(uint8_t(isLetter ? 255 : backingAlpha));
        }
    }
    WritePng(path, width, height, 4, pixels);
}
} // namespace test
