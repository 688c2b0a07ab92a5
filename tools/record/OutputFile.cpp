#include "tools/record/OutputFile.h"

#include "tools/record/Failure.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace record
{
namespace
{
// Reading the mask means setting it for a moment; no other thread makes files meanwhile.
mode_t GetUsualMode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

std::string MakeTemporary(const fs::path &path)
{
    const std::string hidden = std::string(".").append(path.filename().string()).append(".XXXXXX");
    std::string name = (path.parent_path() / hidden).string();
    const int file = mkostemp(name.data(), 0);
    if (file < 0)
        throw cFailure(path.string() + ": can't be written: " + std::strerror(errno));
    fchmod(file, GetUsualMode());
    close(file);
    return name;
}
} // namespace

cOutputFile::cOutputFile(const std::string &path) : mPath(path), mTemporaryPath(path)
{
    std::error_code ignored;
    if (fs::is_directory(mPath, ignored))
        throw cFailure(path + ": a folder has this name");
    mIsDirect = fs::exists(mPath, ignored) && !fs::is_regular_file(mPath, ignored);
    if (mIsDirect)
        return;
    if (fs::is_symlink(mPath, ignored)) // the file behind a link is replaced, not the link
        mPath = fs::weakly_canonical(mPath).string();
    mTemporaryPath = MakeTemporary(mPath);
}

cOutputFile::~cOutputFile()
{
    if (!mIsDirect && !mIsCommitted)
        unlink(mTemporaryPath.c_str());
}

void cOutputFile::Commit()
{
    if (!mIsDirect && std::rename(mTemporaryPath.c_str(), mPath.c_str()) != 0)
        throw cFailure(mPath + ": can't be written: " + std::strerror(errno));
    mIsCommitted = true;
}
} // namespace record
