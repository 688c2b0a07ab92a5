#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tools
{
/// A file to be written.
struct cOutput
{
    std::filesystem::path mPath;
    std::string mBytes;
};

/// What a file of a show is, by its name: ".lwo" is an object, ".vs" and ".fs" are shaders, the
/// rest are pictures; some have no extension.
bool IsObject(const std::string &path);
bool IsShader(const std::string &path);

/// Writes all `outputs`, making their folders. Each is written beside its place first and takes it
/// only when all are complete: a reader never sees half a file, and a full disk changes nothing.
/// False with one line in `error` when it fails.
bool ReplaceFiles(const std::vector<cOutput> &outputs, std::string &error);

/// Reads the whole of `path` when it is a regular file of at most `limit` bytes. False with the
/// reason in `error` when it is not.
bool ReadWhole(const std::filesystem::path &path, size_t limit, std::string &bytes,
               std::string &error);
} // namespace tools
