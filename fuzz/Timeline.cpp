// The text timeline, from text to track files and back.
//
// Promises: every fault names a place in the text and stays on its line; a text without faults
// compiles to tracks that the player reads as legal, and their dump compiles to the same bytes.

#include "fuzz/Fuzz.h"
#include "sync/data.h"
#include "tools/timeline/Compiler.h"
#include "tools/timeline/Parser.h"
#include "tools/tracks/Dumper.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>

namespace
{
// `times` asks for millions of keys in a few bytes. That is no fault; it is only slow.
const long long maximumKeys = 20'000;

long long CountKeys(const timeline::cTimeline &timeline)
{
    long long count = 0;
    for (const timeline::cSection &section : timeline.mSections)
        for (const timeline::cPlacement &placement : section.mPlacements)
            for (const timeline::cBlock &block : section.mBlocks)
                count += (1 + static_cast<long long>(block.mKeys.size())) * placement.mCount;
    return count;
}

void ExpectReadable(const timeline::tTextFaults &faults, std::string_view text)
{
    const auto lines = 1 + std::count(text.begin(), text.end(), '\n');
    for (const timeline::cTextFault &fault : faults) {
        FUZZ_EXPECT(fault.mPlace.mLine >= 1 && fault.mPlace.mLine <= lines);
        FUZZ_EXPECT(fault.mPlace.mColumn >= 1);
        FUZZ_EXPECT(size_t(fault.mPlace.mColumn) <= text.size() + 1);
        FUZZ_EXPECT(!fault.mWhat.empty());
    }
    for (const tools::cFault &report : timeline::ToReports("timeline", faults))
        for (char c : report.ToLine())
            FUZZ_EXPECT(static_cast<unsigned char>(c) >= 0x20 && c != 0x7F);
}

void ExpectLegal(const timeline::cTrack &track)
{
    for (size_t i = 0; i < track.mKeys.size(); i++) {
        FUZZ_EXPECT(unsigned(track.mKeys[i].type) <= 3 && std::isfinite(track.mKeys[i].value));
        FUZZ_EXPECT(i == 0 || track.mKeys[i - 1].row < track.mKeys[i].row);
    }
    FUZZ_EXPECT(!track.mName.empty() && track.mName.size() <= timeline::kMaximumNameBytes);
    FUZZ_EXPECT(track.mName.find('/') == std::string::npos);
    FUZZ_EXPECT(track.mName.find('\0') == std::string::npos);
}

std::string DumpOf(std::vector<timeline::cTrack> &made, const vyr::cTempo &tempo)
{
    std::vector<sync_track> loaded;
    std::vector<const sync_track *> pointers;
    for (timeline::cTrack &track : made)
        loaded.push_back({track.mName.data(), track.mKeys.data(), int(track.mKeys.size())});
    for (const sync_track &track : loaded)
        pointers.push_back(&track);
    return tracks::Dump(pointers, tempo);
}

void ExpectTheSameFromItsDump(std::vector<timeline::cTrack> &made, const vyr::cTempo &tempo)
{
    timeline::tTextFaults faults;
    const auto again =
        timeline::Compile(timeline::ParseTimeline(DumpOf(made, tempo), faults), faults);
    FUZZ_EXPECT(faults.empty());
    FUZZ_EXPECT(again.size() == made.size());
    for (size_t i = 0; i < made.size(); i++) {
        FUZZ_EXPECT(again[i].mName == made[i].mName);
        FUZZ_EXPECT(timeline::TrackFileBytes(again[i]) == timeline::TrackFileBytes(made[i]));
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    timeline::tTextFaults faults;
    const timeline::cTimeline timeline = timeline::ParseTimeline(text, faults);
    if (CountKeys(timeline) > maximumKeys)
        return 0;
    std::vector<timeline::cTrack> made = timeline::Compile(timeline, faults);
    ExpectReadable(faults, text);
    if (!faults.empty())
        return 0;
    for (const timeline::cTrack &track : made)
        ExpectLegal(track);
    ExpectTheSameFromItsDump(made, timeline.mTempo);
    return 0;
}
