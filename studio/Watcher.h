#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace studio
{
/// Notices when files get other contents, however an editor saves them: written in place, replaced
/// by rename, many at once by a version control system. Folders are watched, so that a file may go
/// and come; a file counts only when its writer has closed it; and contents are compared, so that a
/// file written anew with the same bytes has not changed.
class cWatcher
{
public:
    cWatcher();
    ~cWatcher();
    cWatcher(const cWatcher &) = delete;
    cWatcher &operator=(const cWatcher &) = delete;

    /// Watches these files and no others; they need not be there. What they hold now is known.
    void Watch(const std::vector<std::filesystem::path> &files);

    /// What `file` holds now is known: its owner has just read or written it.
    void Note(const std::filesystem::path &file);

    /// Files whose contents are others than those known, and known from now on. `now` is a steady
    /// clock in seconds. A file is reported when nothing has happened to it for a moment, one that
    /// is gone when it has not come back for a longer one.
    std::vector<std::filesystem::path> TakeChanges(double now);

    /// Whether something is under way, so that TakeChanges should be asked again soon.
    bool IsBusy() const;

    static constexpr double kQuietSeconds = 0.01;
    static constexpr double kGoneSeconds = 0.5;
    /// Where no events come (a network's file system), files are looked at this often.
    static constexpr double kLookSeconds = 1.0;

private:
    struct cFile
    {
        uint64_t mContent = 0; ///< a hash; 0: not there
        int64_t mStamp = 0;    ///< time of change, size and number of the file, in one
        double mDue = -1.0;    ///< when it is to be compared; below 0: nothing has happened
    };
    void WatchFolder(const std::filesystem::path &folder);
    void ReadEvents(double now);
    void LookAtStamps(double now);
    void Touch(const std::filesystem::path &file, double due);

    int mNotify = -1;
    std::map<int, std::filesystem::path> mFolders; ///< by watch
    std::map<std::filesystem::path, cFile> mFiles; ///< by the name that was given
    std::multimap<std::filesystem::path, std::filesystem::path>
        mNames; ///< events' name, given name
    double mLastLook = 0.0;
};

/// A hash of the file's bytes; 0 where there is none. Folders have none.
uint64_t HashOfFile(const std::filesystem::path &file);
} // namespace studio
