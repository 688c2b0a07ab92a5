#pragma once

#include <string>

namespace record
{
/// An empty file of its own among the system's temporary ones, removed at the end.
class cTemporaryFile
{
public:
    cTemporaryFile(); ///< throws cFailure
    ~cTemporaryFile();
    cTemporaryFile(const cTemporaryFile &) = delete;
    cTemporaryFile &operator=(const cTemporaryFile &) = delete;

    const std::string &GetPath() const { return mPath; }

private:
    std::string mPath;
};
} // namespace record
