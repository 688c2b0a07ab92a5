#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tools
{
/// Where a show's folder was made from, as its build noted it; empty where it did not, or where the
/// folder came from elsewhere and the note with it.
struct cSources
{
    std::filesystem::path mTimeline; ///< the text
    std::filesystem::path mData;     ///< the folder that data/ is a copy of
    std::vector<std::filesystem::path> mCode;
    std::filesystem::path mBuild; ///< the folder to build in
    std::string mTarget;          ///< what to build there
};

/// Reads the note in `folder`. A path that is not there is left out.
cSources ReadSources(const std::filesystem::path &folder);
} // namespace tools
