#include "tests/house/Shell.h"

namespace fs = std::filesystem;

namespace house
{
test::cProcessResult Shell(const std::string &commands, const fs::path &folder, double seconds)
{
    return test::cProcess({"bash", "-euo", "pipefail", "-c", commands}, folder).Wait(seconds);
}

std::string Transcript(const test::cProcessResult &result)
{
    return "status " + std::to_string(result.mStatus) + (result.mTimedOut ? ", timed out" : "") +
           "\n" + result.mOutput + result.mErrors;
}

fs::path FreshFolder(const std::string &name)
{
    fs::path folder = fs::path(VYR_BINARY_DIR) / "tests/house/scratch" / name;
    fs::remove_all(folder);
    fs::create_directories(folder);
    return folder;
}
} // namespace house
