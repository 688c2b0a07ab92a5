#include "show/ShowFolder.h"

#include "show/ShowLibrary.h"
#include "sync/data.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace fs = std::filesystem;

namespace vyr
{
namespace
{
// Runs `call`; whatever it throws becomes one line that begins with `where`.
template <typename T>
auto Explained(const std::string &where, T call)
{
    try {
        return call();
    } catch (const std::exception &error) {
        throw cShowError(where + ": " + error.what());
    } catch (...) {
        throw cShowError(where + ": threw something that is no std::exception");
    }
}

cShowDescription DescribeChecked(const cShow &show)
{
    return Explained("Describe", [&] {
        cShowDescription description = show.Describe();
        const auto faults = FindFaults(description);
        if (!faults.empty())
            throw cShowError(faults.front());
        return description;
    });
}

std::string ToText(double row)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", row);
    return text;
}
} // namespace

std::string GetTrackFile(const std::string &track)
{
    return std::string(kTrackPrefix) + "_" + track + ".track";
}

void cShowFolder::cCloser::operator()(void *library) const { CloseShowLibrary(library); }
void cShowFolder::cTrackCloser::operator()(sync_device *device) const
{
    sync_destroy_device(device);
}

cShowFolder::cShowFolder(const fs::path &folder)
    : mLibraryPath((folder / kShowLibrary).lexically_normal().string())
{
    Explained(mLibraryPath, [&] {
        mLibrary.reset(OpenShowLibrary(folder));
        mShow = CreateShow(mLibrary.get());
        mDescription = DescribeChecked(*mShow);
    });
}

cShowFolder::~cShowFolder() = default;

void cShowFolder::LoadTracks()
{
    mDevice.reset(sync_create_device(kTrackPrefix));
    if (!mDevice)
        throw cShowError("no memory for the tracks");
    mShow->mLoadedTracks.clear();
    for (const std::string &name : mDescription.mTracks)
        mShow->mLoadedTracks.push_back(sync_get_track(mDevice.get(), name.c_str()));
}

// The device made the track and frees its keys, so they are what it would have allocated.
void cShowFolder::SetKeys(int track, const std::vector<sync_key> &keys)
{
    const int index = sync_find_track(&mDevice->data, GetTrack(track).name);
    sync_track &changed = *mDevice->data.tracks[index];
    const size_t size = keys.size() * sizeof(sync_key);
    auto *copy = static_cast<sync_key *>(std::malloc(std::max<size_t>(size, 1)));
    if (!copy)
        throw cShowError("no memory for the tracks");
    if (size > 0)
        std::memcpy(copy, keys.data(), size);
    std::free(changed.keys);
    changed.keys = copy;
    changed.num_keys = int(keys.size());
}

const sync_track *cShowFolder::FindTrack(const std::string &name) const
{
    const auto &names = mDescription.mTracks;
    const auto found = std::ranges::find(names, name);
    return found == names.end() ? nullptr : mShow->GetTrack(int(found - names.begin()));
}

void cShowFolder::Load()
{
    Explained(mLibraryPath + ": Load", [&] { mShow->Load(); });
}

void cShowFolder::Draw(double row, double seconds)
{
    try {
        mShow->Draw(row, seconds);
    } catch (...) {
        Explained(mLibraryPath + ": Draw at row " + ToText(row), [] { throw; });
    }
}
} // namespace vyr
