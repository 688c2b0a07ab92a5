#include "tools/support/Sources.h"

#include "tools/support/Files.h"

#include <sstream>

namespace fs = std::filesystem;

namespace tools
{
namespace
{
const char *const noteFile = "show.sources";
const size_t maximumNoteBytes = 1 << 20;
} // namespace

cSources ReadSources(const fs::path &folder)
{
    cSources sources;
    std::string text, ignored;
    if (!ReadWhole(folder / noteFile, maximumNoteBytes, text, ignored))
        return sources;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const size_t blank = line.find(' ');
        const std::string word = line.substr(0, blank);
        const std::string value = blank == std::string::npos ? "" : line.substr(blank + 1);
        std::error_code error;
        if (word == "target")
            sources.mTarget = value;
        else if (!fs::exists(value, error))
            continue;
        else if (word == "timeline")
            sources.mTimeline = value;
        else if (word == "data")
            sources.mData = value;
        else if (word == "source")
            sources.mCode.emplace_back(value);
        else if (word == "build")
            sources.mBuild = value;
    }
    return sources;
}
} // namespace tools
