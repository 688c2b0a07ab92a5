#include "tools/timeline/Compiler.h"

#include "show/Time.h"
#include "tools/support/TrackFolder.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <map>
#include <set>

namespace timeline
{
namespace
{
using tPlacedTracks = std::map<std::string, std::vector<cPlacedKey>>;

std::string InLine(const cPlace &place) { return "line " + std::to_string(place.mLine); }

size_t CountKeys(const cSection &section)
{
    size_t count = 0;
    for (const cBlock &block : section.mBlocks)
        count += block.mKeys.size();
    return count;
}

// Counted before a key is placed: `times` could ask for any number of them.
bool IsWithinLimit(const cTimeline &timeline, tTextFaults &faults)
{
    long long total = 0; // can't overflow: both factors stay below the limits of reading
    for (const cSection &section : timeline.mSections) {
        for (const cPlacement &placement : section.mPlacements) {
            total += static_cast<long long>(CountKeys(section)) * placement.mCount;
            if (total <= kMaximumKeys)
                continue;
            faults.push_back({placement.mPlace, "expected at most " + std::to_string(kMaximumKeys) +
                                                    " keys in all, found more with this line"});
            return false;
        }
    }
    return true;
}

bool FitsRow(long long row)
{
    return row >= std::numeric_limits<int>::min() && row <= std::numeric_limits<int>::max();
}

void PlaceBlock(const cBlock &block, long long start, int copy, std::vector<cPlacedKey> &keys,
                tTextFaults &faults)
{
    for (const cKey &key : block.mKeys) {
        const long long row = start + key.mRow;
        if (FitsRow(row)) {
            keys.push_back({{static_cast<int>(row), key.mValue, key.mType}, key.mPlace, copy});
        } else {
            faults.push_back({key.mPlace, "expected a row that fits into 32 bits, found " +
                                              std::to_string(row) + " where its section lies"});
            return;
        }
    }
}

void PlaceSection(const cSection &section, tPlacedTracks &tracks, tTextFaults &faults)
{
    for (const cBlock &block : section.mBlocks) {
        std::vector<cPlacedKey> &keys = tracks[block.mTrack];
        int copy = 0;
        for (const cPlacement &placement : section.mPlacements)
            for (long long i = 0; i < placement.mCount; i++)
                PlaceBlock(block, placement.mStart + i * placement.mStep, copy++, keys, faults);
    }
}

bool IsEarlier(const cPlacedKey &a, const cPlacedKey &b) { return a.mKey.row < b.mKey.row; }

// One fault for each key of the text, however often it is repeated.
void ReportDoubles(const std::string &name, const std::vector<cPlacedKey> &keys,
                   const cTempo &tempo, tTextFaults &faults)
{
    std::set<int> reported;
    for (size_t i = 1; i < keys.size() && faults.size() < kMaximumFaults; i++) {
        const cPlacedKey &first = keys[i - 1], &second = keys[i];
        if (second.mKey.row != first.mKey.row || !reported.insert(second.mPlace.mLine).second)
            continue;
        faults.push_back({second.mPlace, "expected one key a row, found a second one for " +
                                             tools::Quote(name) + " at row " +
                                             std::to_string(second.mKey.row) + " (" +
                                             FormatRow(second.mKey.row, tempo) +
                                             "), the first is in " + InLine(first.mPlace)});
    }
}

cPlacedTrack FinishTrack(const std::string &name, std::vector<cPlacedKey> &keys,
                         const cTempo &tempo, tTextFaults &faults)
{
    if (!std::is_sorted(keys.begin(), keys.end(), IsEarlier))
        std::stable_sort(keys.begin(), keys.end(), IsEarlier);
    ReportDoubles(name, keys, tempo, faults);
    return {name, std::move(keys)};
}

void AppendLittleEndian(std::string &bytes, uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<char>(value >> shift & 0xFF));
}
} // namespace

std::vector<cPlacedTrack> Place(const cTimeline &timeline, tTextFaults &faults)
{
    std::vector<cPlacedTrack> tracks;
    if (!IsWithinLimit(timeline, faults))
        return tracks;
    tPlacedTracks placed;
    for (const std::string &name : timeline.mTracks)
        placed[name]; // declared tracks get their file, keys or not
    for (const cSection &section : timeline.mSections)
        PlaceSection(section, placed, faults);
    for (auto &[name, keys] : placed)
        tracks.push_back(FinishTrack(name, keys, timeline.mTempo, faults));
    return tracks;
}

cTrack WithoutPlaces(const cPlacedTrack &placed)
{
    cTrack track{placed.mName, {}};
    track.mKeys.reserve(placed.mKeys.size());
    for (const cPlacedKey &key : placed.mKeys)
        track.mKeys.push_back(key.mKey);
    return track;
}

std::vector<cTrack> Compile(const cTimeline &timeline, tTextFaults &faults)
{
    std::vector<cTrack> tracks;
    for (const cPlacedTrack &placed : Place(timeline, faults))
        tracks.push_back(WithoutPlaces(placed));
    return tracks;
}

std::string TrackFileBytes(const cTrack &track)
{
    std::string bytes;
    bytes.reserve(8 + 9 * track.mKeys.size());
    AppendLittleEndian(bytes, static_cast<uint32_t>(track.mKeys.size()));
    AppendLittleEndian(bytes, 0);
    for (const sync_key &key : track.mKeys) {
        AppendLittleEndian(bytes, static_cast<uint32_t>(key.row));
        AppendLittleEndian(bytes, std::bit_cast<uint32_t>(key.value));
        bytes.push_back(static_cast<char>(key.type));
    }
    return bytes;
}

std::vector<tools::cOutput> TrackFiles(const std::vector<cTrack> &tracks,
                                       const std::filesystem::path &folder)
{
    std::vector<tools::cOutput> files;
    for (const cTrack &track : tracks)
        files.push_back({tools::TrackPath(folder, track.mName), TrackFileBytes(track)});
    return files;
}
} // namespace timeline
