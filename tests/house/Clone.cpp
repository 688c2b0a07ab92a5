#include "tests/house/Clone.h"

#include "tests/house/Shell.h"
#include "tests/support/TestFiles.h"

namespace fs = std::filesystem;

namespace house
{
namespace
{
const char *const project = R"(cmake_minimum_required(VERSION 3.24)
project(clone LANGUAGES NONE)
enable_testing()
add_test(NAME sync-track COMMAND ${CMAKE_COMMAND} -E true)
foreach(target demo show vyr-record vyr-check)
    add_custom_target(${target})
endforeach()
)";

void Copy(const fs::path &from, const fs::path &to)
{
    fs::create_directories(to.parent_path());
    fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}
} // namespace

fs::path MakeClone(const std::string &name)
{
    const fs::path root = VYR_SOURCE_DIR;
    fs::path clone = FreshFolder(name);
    for (const char *part :
         {"run", "test", "scripts", "packages.txt", "CMakePresets.json", "content", "data"})
        Copy(root / part, clone / part);
    test::WriteFile(clone / "CMakeLists.txt", project);
    return clone;
}

void AddBuild(const fs::path &clone)
{
    for (const char *part : {"show", "bin"})
        Copy(fs::path(VYR_BINARY_DIR) / part, clone / "build" / part);
}
} // namespace house
