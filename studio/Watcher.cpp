#include "studio/Watcher.h"

#include "tools/support/Files.h"

#include <xxhash.h>

#include <algorithm>
#include <array>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace studio
{
namespace
{
const size_t maximumBytes = size_t(1) << 30;

fs::path Absolute(const fs::path &file) { return fs::absolute(file).lexically_normal(); }

// Where the file lies that `file` is a symbolic link to.
fs::path Target(const fs::path &file)
{
    std::error_code error;
    const fs::path target = fs::weakly_canonical(file, error);
    return error ? file : target;
}

int64_t StampOf(const fs::path &file)
{
    struct stat status = {};
    if (stat(file.c_str(), &status) != 0)
        return 0;
    const int64_t time = int64_t(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
    return time ^ (int64_t(status.st_ino) << 24) ^ int64_t(status.st_size);
}

bool HasSeveralNames(const fs::path &file)
{
    struct stat status = {};
    return lstat(file.c_str(), &status) == 0 &&
           (S_ISLNK(status.st_mode) || (S_ISREG(status.st_mode) && status.st_nlink > 1));
}
} // namespace

uint64_t HashOfFile(const fs::path &file)
{
    std::string bytes, ignored;
    std::error_code error;
    if (!fs::is_regular_file(file, error) || !tools::ReadWhole(file, maximumBytes, bytes, ignored))
        return 0;
    return std::max<uint64_t>(XXH3_64bits(bytes.data(), bytes.size()), 1);
}

cWatcher::cWatcher() : mNotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

cWatcher::~cWatcher()
{
    if (mNotify >= 0)
        close(mNotify);
}

void cWatcher::WatchFolder(const fs::path &folder)
{
    if (mNotify < 0)
        return;
    const uint32_t events =
        IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_CREATE | IN_DELETE | IN_ONLYDIR;
    const int watch = inotify_add_watch(mNotify, folder.c_str(), events);
    if (watch >= 0)
        mFolders[watch] = folder;
}

void cWatcher::Watch(const std::vector<fs::path> &files)
{
    for (const auto &[watch, folder] : mFolders)
        inotify_rm_watch(mNotify, watch);
    mFolders.clear();
    mNames.clear();
    std::map<fs::path, cFile> before = std::move(mFiles);
    mFiles.clear();
    for (const fs::path &file : files) {
        const fs::path name = Absolute(file);
        const auto known = before.find(name);
        mFiles[name] =
            known != before.end() ? known->second : cFile{HashOfFile(name), StampOf(name), -1.0};
        for (const fs::path &place : {name, Target(name)}) {
            WatchFolder(place.parent_path());
            mNames.emplace(place, name);
        }
    }
}

void cWatcher::Note(const fs::path &file)
{
    const auto found = file.empty() ? mFiles.end() : mFiles.find(Absolute(file));
    if (found == mFiles.end())
        return;
    found->second.mContent = HashOfFile(file);
    found->second.mStamp = StampOf(file);
}

void cWatcher::Touch(const fs::path &file, double due)
{
    const auto [begin, end] = mNames.equal_range(file);
    for (auto name = begin; name != end; ++name)
        mFiles[name->second].mDue = due;
}

// A file that is being written says so by IN_CREATE and IN_CLOSE_WRITE: what lies between is half a
// file. Of a link only the first comes.
void cWatcher::ReadEvents(double now)
{
    alignas(inotify_event) std::array<char, 16384> buffer;
    for (ssize_t size; mNotify >= 0 && (size = read(mNotify, buffer.data(), buffer.size())) > 0;)
        for (ssize_t at = 0; at < size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer.data() + at);
            at += ssize_t(sizeof(inotify_event) + event->len);
            if (event->mask & IN_Q_OVERFLOW)
                for (auto &[name, file] : mFiles)
                    file.mDue = now + kQuietSeconds;
            const auto folder = mFolders.find(event->wd);
            if (folder == mFolders.end() || event->len == 0)
                continue;
            const fs::path file = folder->second / event->name;
            if (event->mask & (IN_DELETE | IN_MOVED_FROM))
                Touch(file, now + kGoneSeconds);
            else if (!(event->mask & IN_CREATE) || HasSeveralNames(file))
                Touch(file, now + kQuietSeconds);
        }
}

void cWatcher::LookAtStamps(double now)
{
    if (now < mLastLook + kLookSeconds)
        return;
    mLastLook = now;
    for (auto &[name, file] : mFiles) {
        const int64_t stamp = StampOf(name);
        if (stamp == file.mStamp || file.mDue >= 0.0)
            continue;
        file.mStamp = stamp;
        file.mDue = now + kLookSeconds; // its writer may not have finished
    }
    // Folders that have come back, as after a checkout, are others than those that were watched.
    for (const auto &[place, name] : mNames)
        WatchFolder(place.parent_path());
}

bool cWatcher::IsBusy() const
{
    return std::ranges::any_of(mFiles, [](const auto &file) { return file.second.mDue >= 0.0; });
}

std::vector<fs::path> cWatcher::TakeChanges(double now)
{
    ReadEvents(now);
    LookAtStamps(now);
    std::vector<fs::path> changed;
    for (auto &[name, file] : mFiles) {
        if (file.mDue < 0.0 || now < file.mDue)
            continue;
        file.mDue = -1.0;
        file.mStamp = StampOf(name);
        const uint64_t content = HashOfFile(name);
        if (content == file.mContent)
            continue;
        file.mContent = content;
        changed.push_back(name);
    }
    return changed;
}
} // namespace studio
