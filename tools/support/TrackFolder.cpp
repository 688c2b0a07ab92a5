#include "tools/support/TrackFolder.h"

#include "show/ShowFolder.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace fs = std::filesystem;

namespace tools
{
namespace
{
const size_t maximumPath = 1000; // the player stops the program on a path of more than 1023
const std::string suffix = ".track";

// The player leaves a file with a negative count open.
std::FILE *openFile = nullptr;

void *Open(const char *path, const char *mode)
{
    openFile = std::fopen(path, mode);
    return openFile;
}

size_t Read(void *destination, size_t size, size_t count, void *handle)
{
    return std::fread(destination, size, count, static_cast<std::FILE *>(handle));
}

int Close(void *handle)
{
    openFile = nullptr;
    return std::fclose(static_cast<std::FILE *>(handle));
}

std::string Prefix() { return std::string(vyr::kTrackPrefix) + "_"; }

bool IsTrackFile(const fs::directory_entry &entry)
{
    const std::string name = entry.path().filename().string();
    const bool isLongEnough = name.size() >= Prefix().size() + suffix.size();
    std::error_code ignored;
    return isLongEnough && name.starts_with(Prefix()) && name.ends_with(suffix) &&
           !entry.is_directory(ignored);
}

std::string Bytes(size_t count) { return std::to_string(count) + " bytes"; }

// Whether the file's length and its key count agree.
bool CheckLength(const cFault &at, const sync_track &track, size_t size, tFaults &faults)
{
    const auto add = [&](const std::string &what) { faults.push_back({at.mFile, "header", what}); };
    if (size < 8)
        add("expected 8 bytes of key count, found " + Bytes(size));
    else if (track.num_keys < 0)
        add("expected a number of keys, found " + std::to_string(track.num_keys));
    else if (track.num_keys > kMaximumTrackKeys)
        add("expected at most " + std::to_string(kMaximumTrackKeys) + " keys, found " +
            std::to_string(track.num_keys));
    const bool hasCount = size >= 8 && track.num_keys >= 0 && track.num_keys <= kMaximumTrackKeys;
    const size_t wanted = 8 + 9 * size_t(std::max(track.num_keys, 0));
    if (!hasCount || size == wanted)
        return hasCount;
    const std::string what = "expected " + Bytes(wanted) + " for " +
                             std::to_string(track.num_keys) + " keys, found " + Bytes(size);
    faults.push_back({at.mFile, "end", what + (size < wanted ? ": truncated" : ": extra bytes")});
    return false;
}

std::string Number(float value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", double(value));
    return text;
}

// Keys with themselves and with the one before.
bool CheckKey(const cFault &at, const sync_track &track, int index, tFaults &faults)
{
    const size_t before = faults.size();
    const sync_key &key = track.keys[index];
    const auto add = [&](const std::string &what) {
        faults.push_back({at.mFile, KeyPlace(track, index), what});
    };
    if (index > 0 && key.row == track.keys[index - 1].row)
        add("expected one key a row, found a second one");
    if (index > 0 && key.row < track.keys[index - 1].row)
        add("expected rows in ascending order, found it behind row " +
            std::to_string(track.keys[index - 1].row));
    if (key.type < SYNC_KEY_HOLD || key.type > SYNC_KEY_QUADRATIC)
        add("expected an interpolation type from 0 to 3, found " + std::to_string(key.type));
    if (!std::isfinite(key.value))
        add("expected a finite value, found " + Number(key.value));
    return faults.size() == before;
}
} // namespace

cTrackFolder::cTrackFolder(const fs::path &folder)
    : mFolder(folder), mDevice(sync_create_device((folder / vyr::kTrackPrefix).c_str()))
{
    sync_io_cb callbacks = {Open, Read, Close};
    sync_set_io_cb(mDevice, &callbacks);
}

cTrackFolder::~cTrackFolder() { sync_destroy_device(mDevice); }

std::vector<std::string> cTrackFolder::Names() const
{
    std::vector<std::string> names;
    std::error_code failure;
    const fs::path folder = mFolder.empty() ? "." : mFolder;
    for (fs::directory_iterator i(folder, failure), end; !failure && i != end;
         i.increment(failure)) {
        const std::string file = i->path().filename().string();
        if (IsTrackFile(*i))
            names.push_back(
                file.substr(Prefix().size(), file.size() - Prefix().size() - suffix.size()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

fs::path cTrackFolder::FileOf(const std::string &name) const { return TrackPath(mFolder, name); }

cLoadedTrack cTrackFolder::Load(const std::string &name, tFaults &faults)
{
    const fs::path path = FileOf(name);
    const cFault at{path.string(), "", ""};
    std::error_code failure;
    const bool isFile = fs::is_regular_file(path, failure);
    const size_t size = isFile ? size_t(fs::file_size(path, failure)) : 0;
    if (!isFile || failure || path.native().size() > maximumPath) {
        faults.push_back({at.mFile, "", isFile ? "can't be read" : "missing"});
        return {};
    }
    cLoadedTrack loaded;
    loaded.mTrack = sync_get_track(mDevice, name.c_str());
    if (openFile)
        Close(openFile);
    loaded.mIsLegal = CheckLength(at, *loaded.mTrack, size, faults);
    const size_t present = size < 8 ? 0 : (size - 8) / 9;
    if (loaded.mTrack->keys)
        loaded.mKeyCount = int(std::min(present, size_t(std::max(loaded.mTrack->num_keys, 0))));
    for (int i = 0; i < loaded.mKeyCount; i++)
        loaded.mIsLegal = CheckKey(at, *loaded.mTrack, i, faults) && loaded.mIsLegal;
    return loaded;
}

fs::path TrackPath(const fs::path &folder, const std::string &name)
{
    return folder / vyr::GetTrackFile(name);
}

std::string KeyPlace(const sync_track &track, int index)
{
    return "key " + std::to_string(index) + " (row " + std::to_string(track.keys[index].row) + ")";
}
} // namespace tools
