#include "tools/support/AuthorFile.h"

#include "tools/support/Files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace tools
{
namespace
{
const size_t maximumBytes = 1u << 30;
const size_t maximumName = 200; // of the file's own, within that of the one beside it

/// A file that is open, until the end of this.
class cHandle
{
public:
    explicit cHandle(int handle) : mHandle(handle) {}
    ~cHandle()
    {
        if (mHandle >= 0)
            ::close(mHandle);
    }
    cHandle(const cHandle &) = delete;
    cHandle &operator=(const cHandle &) = delete;

    int Get() const { return mHandle; }

private:
    const int mHandle;
};

bool Fail(const fs::path &path, std::string &error)
{
    error = path.string() + ": " + std::strerror(errno);
    return false;
}

// Always of the same name: what a killed program has left there, the next one uses up.
fs::path BesideOf(const fs::path &path)
{
    std::string name(".");
    name.append(path.filename().string(), 0, maximumName).append(".vyr-new");
    return path.parent_path() / name;
}

// Whether `handle` is still what `path` names, and not a file that has taken its place since.
bool IsStillThere(int handle, const fs::path &path)
{
    struct stat open, named;
    return ::fstat(handle, &open) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// Of two programs that write the same file one has to wait for its turn.
int OpenLocked(const fs::path &path)
{
    for (;;) {
        const int handle = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (handle < 0)
            return -1;
        if (::flock(handle, LOCK_EX) == 0 && IsStillThere(handle, path))
            return handle;
        ::close(handle);
    }
}

bool WriteAll(int handle, const std::string &bytes)
{
    for (size_t written = 0; written < bytes.size();) {
        const ssize_t count = ::write(handle, bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR)
            return false;
        written += size_t(std::max<ssize_t>(count, 0));
    }
    return true;
}

bool Fill(int handle, const std::string &bytes, const struct stat &like)
{
    // Only the superuser can give a file away; to anybody else it belongs already.
    const bool isOurs = ::fchown(handle, like.st_uid, like.st_gid) == 0 || errno == EPERM;
    return isOurs && ::ftruncate(handle, 0) == 0 && WriteAll(handle, bytes) &&
           ::fchmod(handle, like.st_mode & 07777) == 0 && ::fsync(handle) == 0;
}

// The name's change is on the disk too, then.
void SyncFolder(const fs::path &folder)
{
    const cHandle handle(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC));
    if (handle.Get() >= 0)
        ::fsync(handle.Get());
}

bool IsUnchanged(const fs::path &path, const std::string &before, std::string &error)
{
    std::string now;
    if (!ReadWhole(path, maximumBytes, now, error)) {
        error = path.string() + ": " + error;
        return false;
    }
    if (now == before)
        return true;
    error = path.string() + ": has been changed by another program meanwhile; nothing is written";
    return false;
}
} // namespace

bool ReplaceAuthorFile(const fs::path &path, const std::string &before, const std::string &after,
                       std::string &error)
{
    std::error_code failure;
    const fs::path real = fs::canonical(path, failure);
    struct stat like;
    if (failure || ::stat(real.c_str(), &like) != 0)
        return Fail(path, error);
    if (::access(real.c_str(), W_OK) != 0) // taking its place would be possible, and impolite
        return Fail(path, error);
    const fs::path beside = BesideOf(real);
    const cHandle handle(OpenLocked(beside));
    if (handle.Get() < 0)
        return Fail(beside, error);
    bool isGood = Fill(handle.Get(), after, like) || Fail(beside, error);
    isGood = isGood && IsUnchanged(real, before, error);
    isGood = isGood && (std::rename(beside.c_str(), real.c_str()) == 0 || Fail(path, error));
    if (isGood)
        SyncFolder(real.parent_path());
    else
        ::unlink(beside.c_str());
    return isGood;
}
} // namespace tools
