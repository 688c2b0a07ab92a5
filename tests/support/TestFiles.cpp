#include "tests/support/TestFiles.h"

#include <stb_image_write.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace test
{
namespace
{
fs::path MakeFolder()
{
    std::string name = (fs::temp_directory_path() / "vyr-test-XXXXXX").string();
    if (!mkdtemp(name.data()))
        throw std::runtime_error("no temporary folder: " + name);
    return name;
}
} // namespace

cTemporaryFolder::cTemporaryFolder() : mPath(MakeFolder()), mBefore(fs::current_path())
{
    fs::current_path(mPath);
}

cTemporaryFolder::~cTemporaryFolder()
{
    std::error_code ignored;
    fs::current_path(mBefore, ignored);
    fs::remove_all(mPath, ignored);
}

void WriteFile(const fs::path &path, const std::string &bytes)
{
    if (path.has_parent_path())
        fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string ReadFile(const fs::path &path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

void WritePng(const fs::path &path, int width, int height, int components,
              const std::vector<uint8_t> &pixels)
{
    if (path.has_parent_path())
        fs::create_directories(path.parent_path());
    if (!stbi_write_png(path.c_str(), width, height, components, pixels.data(), width * components))
        throw std::runtime_error("can't write " + path.string());
}

int CountOpenFiles()
{
    int count = 0;
    for ([[maybe_unused]] const auto &entry : fs::directory_iterator("/proc/self/fd"))
        count++;
    return count;
}
} // namespace test
