#pragma once

#include <string>

namespace record
{
/// A file that takes its name only when it is complete. Until then it grows beside its place under
/// a hidden name; a file that had the name before keeps it on failure. What is no
/// regular file, such as /dev/stdout, is written to directly.
class cOutputFile
{
public:
    /// Makes the temporary file. Throws cFailure when the folder is missing or can't be written.
    explicit cOutputFile(const std::string &path);
    ~cOutputFile(); ///< removes what was not committed
    cOutputFile(const cOutputFile &) = delete;
    cOutputFile &operator=(const cOutputFile &) = delete;

    const std::string &GetPath() const { return mPath; }                   ///< the final name
    const std::string &GetTemporaryPath() const { return mTemporaryPath; } ///< where to write
    /// Gives the file its name. Throws cFailure.
    void Commit();

private:
    std::string mPath;
    std::string mTemporaryPath;
    bool mIsDirect = false;
    bool mIsCommitted = false;
};
} // namespace record
