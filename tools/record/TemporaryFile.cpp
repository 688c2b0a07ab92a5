#include "tools/record/TemporaryFile.h"

#include "tools/record/Failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;

namespace record
{
cTemporaryFile::cTemporaryFile() : mPath((fs::temp_directory_path() / "vyr-record-XXXXXX").string())
{
    const int file = mkostemp(mPath.data(), 0);
    if (file < 0)
        throw cFailure(mPath + ": no room for temporary files: " + std::strerror(errno));
    close(file);
}

cTemporaryFile::~cTemporaryFile() { unlink(mPath.c_str()); }
} // namespace record
