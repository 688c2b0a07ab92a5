// Command lines of the tools: one argument a line. The first line chooses the tool: "record" reads
// its options and goes no further, everything else is vyr-tracks, which runs in a folder of its
// own.
//
// Promises: what the recorder accepts makes sense; vyr-tracks ends with one of its three statuses.

#include "tools/tracks/CommandLine.h"
#include "fuzz/Fuzz.h"
#include "tools/record/Failure.h"
#include "tools/record/Options.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{
const size_t maximumLength = 512, maximumArguments = 24; // beyond, it is only slow

std::vector<std::string> SplitLines(const std::string &text)
{
    std::vector<std::string> lines;
    size_t start = 0;
    while (start <= text.size()) {
        const size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

// A fresh folder with a timeline in it and a folder of its tracks.
void MakeFolder(const fs::path &folder)
{
    fs::current_path(fs::temp_directory_path());
    fs::remove_all(folder);
    fs::create_directories(folder / "s");
    fs::current_path(folder);
    std::ofstream("t") << "track a\n 0 1\n 8 2 linear\n";
    std::ofstream("w") << "0 some words\n";
    const char track[] = "\1\0\0\0\0\0\0\0"
                         "\0\0\0\0"
                         "\0\0\x80\x3F"
                         "\0";
    for (const char *name :
         {"s/sync_a.track", "s/sync_lyrics:num.track", "s/sync_lyrics:fade.track"})
        std::ofstream(name, std::ios::binary).write(track, sizeof track - 1);
}

// What earlier command lines wrote is cleared from time to time.
void PrepareFolder()
{
    static const fs::path folder = [] {
        std::string name = (fs::temp_directory_path() / "vyr-fuzz-XXXXXX").string();
        FUZZ_EXPECT(mkdtemp(name.data()) != nullptr);
        std::cout.rdbuf(nullptr);
        std::cerr.rdbuf(nullptr);
        FUZZ_EXPECT(std::freopen("/dev/null", "w", stdout) != nullptr);
        return fs::path(name);
    }();
    static int runs = 0;
    if (runs++ % 1000 == 0)
        MakeFolder(folder);
}

void ReadRecorderOptions(int argc, char **argv)
{
    try {
        const auto line = record::ReadCommandLine(argc, argv);
        if (!line)
            return;
        vyr::cShowDescription show;
        show.mRowsPerSecond = 17.6;
        show.mLastRow = 3624;
        const record::cOptions options = record::ReadOptions(*line, show);
        FUZZ_EXPECT(options.mPart >= 1 && options.mPart <= options.mParts);
        FUZZ_EXPECT(options.mSize.mWidth > 0 && options.mSize.mHeight > 0);
        FUZZ_EXPECT(options.mColumns > 0 && options.mEveryBars > 0.0);
        FUZZ_EXPECT(options.mFrom <= options.mTo);
    } catch (const record::cUsageError &) {
        return; // said what is wrong
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    if (size > maximumLength || text.find('\0') != std::string::npos)
        return 0;
    std::vector<std::string> lines = SplitLines(text);
    if (lines.size() > maximumArguments)
        return 0;
    std::vector<char *> arguments;
    for (std::string &line : lines)
        arguments.push_back(line.data());
    arguments.push_back(nullptr);
    PrepareFolder();
    const int count = int(lines.size());
    if (lines[0] == "record") {
        ReadRecorderOptions(count, arguments.data());
        return 0;
    }
    if (text.find('/') != std::string::npos)
        return 0; // no argument leads out of the folder
    const int status = tracks::RunCommandLine(count, arguments.data());
    FUZZ_EXPECT(status >= 0 && status <= 2);
    return 0;
}
