#include "tools/support/Files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace tools
{
namespace
{
struct cClose
{
    void operator()(std::FILE *file) const { std::fclose(file); }
};

std::string Reason(const fs::path &path) { return path.string() + ": " + std::strerror(errno); }

bool WriteAll(int file, const std::string &bytes)
{
    for (size_t written = 0; written < bytes.size();) {
        const ssize_t count = ::write(file, bytes.data() + written, bytes.size() - written);
        if (count < 0)
            return false;
        written += size_t(count);
    }
    return true;
}

// The name is short, since the one it stands in for may be as long as a name can be.
fs::path TemporaryName(const fs::path &path, size_t number)
{
    return path.parent_path() /
           (".vyr-" + std::to_string(::getpid()) + "-" + std::to_string(number));
}

bool WriteTemporary(const cOutput &output, const fs::path &temporary, std::string &error)
{
    std::error_code failure;
    if (output.mPath.has_parent_path())
        fs::create_directories(output.mPath.parent_path(), failure);
    const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0) {
        error = Reason(output.mPath);
        return false;
    }
    bool isWritten = WriteAll(file, output.mBytes);
    isWritten = ::close(file) == 0 && isWritten;
    if (!isWritten)
        error = Reason(output.mPath);
    return isWritten;
}

void RemoveAll(const std::vector<fs::path> &paths)
{
    for (const fs::path &path : paths)
        ::unlink(path.c_str());
}

// What would make a rename fail is asked before the first one.
bool CanTakePlace(const cOutput &output, std::string &error)
{
    std::error_code ignored;
    if (!fs::is_directory(output.mPath, ignored))
        return true;
    error = output.mPath.string() + ": is a folder";
    return false;
}

bool MoveToPlace(const fs::path &temporary, const fs::path &path, std::string &error)
{
    if (std::rename(temporary.c_str(), path.c_str()) == 0)
        return true;
    error = Reason(path);
    return false;
}
} // namespace

bool IsObject(const std::string &path) { return fs::path(path).extension() == ".lwo"; }

bool IsShader(const std::string &path)
{
    const fs::path extension = fs::path(path).extension();
    return extension == ".vs" || extension == ".fs";
}

bool ReplaceFiles(const std::vector<cOutput> &outputs, std::string &error)
{
    std::vector<fs::path> temporaries;
    bool isGood = true;
    for (const cOutput &output : outputs) {
        temporaries.push_back(TemporaryName(output.mPath, temporaries.size()));
        isGood = CanTakePlace(output, error) && WriteTemporary(output, temporaries.back(), error);
        if (!isGood)
            break;
    }
    for (size_t i = 0; isGood && i < outputs.size(); i++)
        isGood = MoveToPlace(temporaries[i], outputs[i].mPath, error);
    if (!isGood)
        RemoveAll(temporaries);
    return isGood;
}

bool ReadWhole(const fs::path &path, size_t limit, std::string &bytes, std::string &error)
{
    std::error_code failure;
    const fs::file_status status = fs::status(path, failure);
    if (fs::exists(status) && !fs::is_regular_file(status)) { // opening a pipe might never return
        error = "not a regular file";
        return false;
    }
    std::unique_ptr<std::FILE, cClose> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        error = std::strerror(errno);
        return false;
    }
    const auto size = fs::file_size(path, failure);
    if (failure || size > limit) {
        error = "larger than the limit of " + std::to_string(limit) + " bytes";
        return false;
    }
    bytes.resize(size);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    return true;
}
} // namespace tools
