#include "tests/show/BrokenShow.h"

#include "tests/support/TestFiles.h"

namespace fs = std::filesystem;

namespace test
{
void WriteBrokenShow(const fs::path &folder, const std::string &library)
{
    fs::create_directories(folder);
    fs::copy(fs::path(VYR_BROKEN_SHOWS) / library / "show.so", folder / "show.so");
    fs::copy(fs::path(VYR_SOURCE_DIR) / "examples/night/data", folder / "data");
    const std::string noKeys(8, '\0');
    WriteFile(folder / "sync_height.track", noKeys);
    WriteFile(folder / "sync_pick.track", noKeys);
}
} // namespace test
