#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace test
{
/// An empty folder that is the working directory while this lives; removed, and the old one
/// restored, at the end.
class cTemporaryFolder
{
public:
    cTemporaryFolder();
    ~cTemporaryFolder();
    cTemporaryFolder(const cTemporaryFolder &) = delete;
    cTemporaryFolder &operator=(const cTemporaryFolder &) = delete;

    const std::filesystem::path &Path() const { return mPath; }

private:
    std::filesystem::path mPath, mBefore;
};

/// Writes `bytes` to `path`, making its folders.
void WriteFile(const std::filesystem::path &path, const std::string &bytes);
std::string ReadFile(const std::filesystem::path &path);

/// A PNG of `components` bytes a pixel, rows top first.
void WritePng(const std::filesystem::path &path, int width, int height, int components,
              const std::vector<uint8_t> &pixels);

/// How many files this process has open.
int CountOpenFiles();
} // namespace test
