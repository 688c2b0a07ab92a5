#include "tests/support/TestFiles.h"
#include "tools/support/TrackFolder.h"
#include "tools/timeline/Compiler.h"
#include "tools/tracks/Dumper.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <random>

namespace
{
using tTracks = std::vector<timeline::cTrack>;

std::vector<const sync_track *> AsPlayers(const tTracks &tracks, std::vector<sync_track> &room)
{
    for (const timeline::cTrack &track : tracks)
        room.push_back({const_cast<char *>(track.mName.c_str()),
                        const_cast<sync_key *>(track.mKeys.data()), int(track.mKeys.size())});
    std::vector<const sync_track *> pointers;
    for (const sync_track &track : room)
        pointers.push_back(&track);
    return pointers;
}

tTracks CompileText(const std::string &text)
{
    timeline::tTextFaults faults;
    const auto timeline = timeline::ParseTimeline(text, faults);
    auto compiled = timeline::Compile(timeline, faults);
    for (const tools::cFault &fault : timeline::ToReports("dump", faults))
        ADD_FAILURE() << fault.ToLine();
    return compiled;
}

std::string Bytes(const tTracks &tracks)
{
    std::string bytes;
    for (const tools::cOutput &file : timeline::TrackFiles(tracks, "f"))
        bytes += file.mPath.string() + "\n" + file.mBytes;
    return bytes;
}

std::string DumpOf(const tTracks &tracks, const vyr::cTempo &tempo = {})
{
    std::vector<sync_track> room;
    return tracks::Dump(AsPlayers(tracks, room), tempo);
}

using tRandom = std::mt19937;

// Any finite bits: denormals, both zeros and the largest numbers among them.
float AnyValue(tRandom &random)
{
    const float special[] = {0.0f, -0.0f, 1e-45f, -1e-45f, 3.4028235e38f, -3.4028235e38f, 1.0f};
    if (random() % 4 == 0)
        return special[random() % std::size(special)];
    for (;;) {
        const float value = std::bit_cast<float>(uint32_t(random()));
        if (std::isfinite(value))
            return value;
    }
}

timeline::cTrack AnyTrack(tRandom &random, const std::string &name)
{
    timeline::cTrack track{name, {}};
    const size_t count = random() % 20;
    long long row = random() % 3 == 0 ? INT_MIN : int(random() % 4000) - 100;
    for (size_t i = 0; i < count && row <= INT_MAX; i++) {
        track.mKeys.push_back({int(row), AnyValue(random), int(random() % 4)});
        row += 1 + (random() % 4 == 0 ? random() % 1'000'000'000 : random() % 100);
    }
    if (random() % 50 == 0)
        track.mKeys.push_back({INT_MAX, 1.0f, 0});
    if (track.mKeys.size() > 1 && track.mKeys[track.mKeys.size() - 2].row == INT_MAX)
        track.mKeys.pop_back();
    return track;
}

// Whatever a file can be called: any byte but 0 and '/'.
std::string AnyName(tRandom &random, size_t number)
{
    std::string name = std::to_string(number) + ":";
    const size_t length = random() % 12;
    for (size_t i = 0; i < length; i++) {
        const char c = char(1 + random() % 255);
        name += c == '/' ? '"' : c;
    }
    return name;
}
} // namespace

TEST(RoundTrip, DumpedTracksCompileToTheSameBytes)
{
    tRandom random(42);
    for (int round = 0; round < 5000; round++) {
        tTracks before;
        const size_t count = random() % 6;
        for (size_t i = 0; i < count; i++)
            before.push_back(AnyTrack(random, AnyName(random, i)));
        ASSERT_EQ(Bytes(CompileText(DumpOf(before))), Bytes(before)) << DumpOf(before);
    }
}

TEST(RoundTrip, AnEmptyNameAndAnEmptyTrackSurvive)
{
    const tTracks before = {{"", {}}, {"a b", {}}};
    EXPECT_EQ(Bytes(CompileText(DumpOf(before))), Bytes(before));
}

// A dump is made to be read and compared: it says what it means.
TEST(RoundTrip, ADumpReadsLikeThis)
{
    EXPECT_EQ(DumpOf({{"tunnel:pos", {{0, 0.0f, 1}, {789, -0.5f, 0}}}}),
              "# time is bar:beat:row, 4 beats a bar, 8 rows a beat\n"
              "\n"
              "track tunnel:pos\n"
              "  0:0:0     0          linear\n"
              "  24:2:5    -0.5       hold\n");
}

// Bars of three beats with five rows each: the tempo line says so, or the times would mean others.
TEST(RoundTrip, ADumpSaysItsTempo)
{
    const tTracks tracks = {{"a", {{0, 1.0f, 0}, {34, 2.0f, 0}, {INT_MAX, 3.0f, 0}}}};
    const std::string dump = DumpOf(tracks, vyr::TempoOf(90.5, 5, 3));
    EXPECT_NE(dump.find("3 beats a bar, 5 rows a beat\ntempo 90.5 5 3\n"), std::string::npos)
        << dump;
    EXPECT_NE(dump.find("\n  2:0:4 "), std::string::npos) << dump;
    EXPECT_EQ(Bytes(CompileText(dump)), Bytes(tracks));
}

// Through real files and the player.
TEST(RoundTrip, FilesReadByThePlayerDumpAndCompileToTheSameFiles)
{
    const test::cTemporaryFolder folder;
    tRandom random(7);
    for (int round = 0; round < 50; round++) {
        tTracks before = {AnyTrack(random, "a:b"), AnyTrack(random, "c d")};
        std::string error;
        ASSERT_TRUE(tools::ReplaceFiles(timeline::TrackFiles(before, ""), error)) << error;
        tools::cTrackFolder files("");
        tools::tFaults faults;
        std::vector<const sync_track *> loaded;
        for (const std::string &name : files.Names())
            loaded.push_back(files.Load(name, faults).mTrack);
        ASSERT_TRUE(faults.empty()) << faults[0].ToLine();
        ASSERT_EQ(Bytes(CompileText(tracks::Dump(loaded, {}))), Bytes(before));
    }
}
