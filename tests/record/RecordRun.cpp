#include "tests/record/RecordRun.h"

#include <stb_image.h>

#include <cstdlib>
#include <cstring>
#include <sstream>

namespace fs = std::filesystem;

namespace record_test
{
namespace
{
tWords Split(const std::string &text, char separator)
{
    tWords words;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, separator);)
        if (!word.empty())
            words.push_back(word);
    return words;
}

std::string RunForText(const tWords &command)
{
    const test::cProcessResult result = test::Run(command);
    EXPECT_EQ(result.mStatus, 0) << result.mErrors;
    return result.mOutput;
}
} // namespace

tWords operator+(tWords words, const tWords &more)
{
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

namespace
{
struct cSharedFolder
{
    test::cTemporaryFolder mFolder;

    cSharedFolder()
    {
        golden::WriteContent("show");
        golden::WriteTracks("show", golden::Sections());
        golden::WriteMusic("show", 12.0);
    }
};
} // namespace

const fs::path &cRecordTest::Folder()
{
    static const cSharedFolder folder; // to the end of the program
    return folder.mFolder.Path();
}

void cRecordTest::SetUpTestSuite() { Folder(); }

bool cRecordTest::Exists(const std::string &name) { return fs::exists(Folder() / name); }

tWords cRecordTest::Files()
{
    tWords names;
    for (const auto &entry : fs::directory_iterator(Folder()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

tWords cRecordTest::Command(const tWords &words)
{
    return tWords{VYR_RECORD, "--show", "show"} + words;
}

test::cProcessResult cRecordTest::Record(const tWords &words, const tWords &environment)
{
    return test::Run(Command(words), Folder(), environment);
}

tWords ManifestLines(const fs::path &path)
{
    tWords lines;
    for (const std::string &line : Split(test::ReadFile(path), '\n'))
        if (line[0] != '#')
            lines.push_back(line);
    return lines;
}

tWords Probe(const fs::path &path, const std::string &stream, const std::string &entries)
{
    const std::string text =
        RunForText({"ffprobe", "-v", "error", "-count_frames", "-select_streams", stream,
                    "-show_entries", entries, "-of", "csv=p=0", path.string()});
    return Split(text.substr(0, text.find('\n')), ',');
}

tWords DecodedFrames(const fs::path &path)
{
    tWords hashes;
    const std::string text = RunForText(
        {"ffmpeg", "-v", "error", "-i", path.string(), "-map", "0:v", "-f", "framemd5", "-"});
    for (const std::string &line : Split(text, '\n'))
        if (line[0] != '#')
            hashes.push_back(line.substr(line.rfind(' ') + 1));
    return hashes;
}

std::vector<int16_t> DecodedSound(const fs::path &path)
{
    // aresample fills the time between the first picture and the first sample
    const std::string bytes = RunForText(
        {"ffmpeg", "-v", "error", "-i", path.string(), "-map", "0:a", "-af",
         "aresample=async=1:first_pts=0,pan=mono|c0=c0", "-ar", "44100", "-f", "s16le", "-"});
    std::vector<int16_t> samples(bytes.size() / 2);
    std::memcpy(samples.data(), bytes.data(), 2 * samples.size());
    return samples;
}

record::cPicture ReadPng(const fs::path &path)
{
    int width = 0, height = 0, components = 0;
    unsigned char *pixels = stbi_load(path.c_str(), &width, &height, &components, 4);
    record::cPicture picture(width, height);
    if (pixels)
        std::copy_n(pixels, picture.mBytes.size(), picture.mBytes.begin());
    std::free(pixels);
    return picture;
}
} // namespace record_test
