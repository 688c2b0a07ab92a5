#pragma once

#include "sync/data.h"
#include "tools/support/Faults.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tools
{
/// Track files past this many keys are refused.
inline constexpr int kMaximumTrackKeys = 8'000'000;

/// A track as the player read it, and what its file really holds.
struct cLoadedTrack
{
    const sync_track *mTrack = nullptr; ///< the folder's; null when there is no such file
    int mKeyCount = 0;     ///< keys that are in the file, which may be fewer than it announces
    bool mIsLegal = false; ///< complete, ascending, of the four types, finite: it can be sampled
};

/// The file of the track `name` in `folder`.
std::filesystem::path TrackPath(const std::filesystem::path &folder, const std::string &name);

/// The track files of one folder, read by the player. One at a time: it opens files through a
/// static handle.
class cTrackFolder
{
public:
    explicit cTrackFolder(const std::filesystem::path &folder);
    ~cTrackFolder();
    cTrackFolder(const cTrackFolder &) = delete;
    cTrackFolder &operator=(const cTrackFolder &) = delete;

    /// Names of all tracks that have a file here, sorted; empty when there is no such folder.
    std::vector<std::string> Names() const;
    std::filesystem::path FileOf(const std::string &name) const;

    /// Reads a track and adds everything that makes its file illegal to `faults`; keys are counted
    /// from 0 there.
    cLoadedTrack Load(const std::string &name, tFaults &faults);

private:
    std::filesystem::path mFolder;
    sync_device *mDevice;
};

/// "key 4 (row 96)"
std::string KeyPlace(const sync_track &track, int index);
} // namespace tools
