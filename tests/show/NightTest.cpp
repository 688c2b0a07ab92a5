// The second show of the repository, through every tool. VYR_UPDATE_GOLDEN=1 makes its pictures
// anew.

#include "tests/record/RecordRun.h"
#include "tests/show/BrokenShow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace
{
const std::string folder = VYR_BINARY_DIR "/examples/night";
const fs::path golden = VYR_SOURCE_DIR "/tests/show/golden";

std::string Tool(const char *name) { return VYR_BINARY_DIR "/bin/" + std::string(name); }

// Of 255, over all channels of all pixels.
double MeanDifference(const record::cPicture &a, const record::cPicture &b)
{
    double sum = 0;
    for (size_t i = 0; i < a.mBytes.size(); i++)
        sum += std::abs(int(a.mBytes[i]) - int(b.mBytes[i]));
    return sum / double(a.mBytes.size());
}

class Night : public testing::Test
{
protected:
    test::cTemporaryFolder mFolder;
};

// Drivers differ in edges and in the last bit of a gradient; a layer that is missing or moved makes
// a difference of several.
TEST_F(Night, LooksAsItDid)
{
    for (const char *row : {"16", "64", "112", "176", "240"}) {
        const fs::path made = std::string("night-") + row + ".png";
        const auto result = test::Run({Tool("vyr-record"), "--show", folder, "--size", "320x180",
                                       "--still", row, "-o", made.string()});
        ASSERT_EQ(result.mStatus, 0) << result.mErrors;
        if (std::getenv("VYR_UPDATE_GOLDEN")) {
            fs::create_directories(golden);
            fs::copy(made, golden / made, fs::copy_options::overwrite_existing);
            continue;
        }
        const record::cPicture expected = record_test::ReadPng(golden / made);
        const record::cPicture actual = record_test::ReadPng(made);
        ASSERT_EQ(expected.mBytes.size(), actual.mBytes.size()) << row;
        EXPECT_LT(MeanDifference(expected, actual), 0.5) << row;
    }
}

TEST_F(Night, HasNoFaults)
{
    const auto result = test::Run({Tool("vyr-check"), folder});
    EXPECT_EQ(result.mOutput, "0 faults, 0 warnings\n");
    EXPECT_EQ(result.mStatus, 0);
}

// With its own length, words and music, in two pieces that make the whole.
TEST_F(Night, IsRecordedAndCaptioned)
{
    const std::string words = VYR_SOURCE_DIR "/examples/night/words.txt";
    const auto record = [&](const std::vector<std::string> &more) {
        std::vector<std::string> command = {
            Tool("vyr-record"), "--show", folder, "--size", "64x36", "--fps", "25"};
        command.insert(command.end(), more.begin(), more.end());
        const auto result = test::Run(command);
        EXPECT_EQ(result.mStatus, 0) << result.mErrors;
    };
    record({"-o", "whole.mp4", "--manifest", "whole.txt", "--lyrics", words, "--flash-report",
            "flashes.txt"});
    record({"--manifest", "1.txt", "--part", "1/2"});
    record({"--manifest", "2.txt", "--part", "2/2"});
    record({"--sheet", "-o", "sheet.png", "--every", "1"});
    const auto lines = record_test::ManifestLines("whole.txt");
    EXPECT_EQ(lines.size(), 400u); // 256 rows at 16 a second
    auto pieces = record_test::ManifestLines("1.txt");
    for (const std::string &line : record_test::ManifestLines("2.txt"))
        pieces.push_back(line);
    EXPECT_EQ(pieces, lines);
    EXPECT_EQ(record_test::Probe("whole.mp4", "s", "stream=codec_name"),
              std::vector<std::string>{"mov_text"});
    EXPECT_TRUE(record_test::ManifestLines("flashes.txt").empty());
    ASSERT_EQ(test::Run({Tool("vyr-tracks"), "captions", folder, "--lyrics", words, "-o", "a.vtt"})
                  .mStatus,
              0);
    EXPECT_THAT(test::ReadFile("a.vtt"), HasSubstr("the fog stays down"));
    EXPECT_EQ(
        test::Run({Tool("vyr-record"), "--show", folder, "--to", "257", "-o", "b.mp4"}).mStatus, 2);
}

// A show goes back to the window by name, and is recorded all the same.
TEST_F(Night, ShowsWithPostEffectsAreRecorded)
{
    test::WriteBrokenShow("effect", "Effect");
    const auto result = test::Run({Tool("vyr-record"), "--show", "effect", "--size", "64x36",
                                   "--still", "8", "-o", "still.png"});
    ASSERT_EQ(result.mStatus, 0) << result.mErrors;
    const record::cPicture picture = record_test::ReadPng("still.png");
    const uint8_t *middle = picture.Row(18) + 4 * 32;
    const uint8_t *corner = picture.Row(0);
    EXPECT_EQ(std::vector<int>(middle, middle + 3), (std::vector<int>{255, 0, 0}));
    EXPECT_EQ(std::vector<int>(corner, corner + 3), (std::vector<int>{0, 255, 0}));
}

TEST_F(Night, IsPlottedAndSampledInItsOwnTime)
{
    const auto result =
        test::Run({Tool("vyr-tracks"), "sample", folder, "moon:x", "8s", "8s", "1"});
    EXPECT_EQ(result.mOutput, "row,value\n128,450\n");
    ASSERT_EQ(test::Run({Tool("vyr-tracks"), "plot", folder, "-o", "plot.svg"}).mStatus, 0);
    EXPECT_THAT(test::ReadFile("plot.svg"), HasSubstr("LUFS"));
}
} // namespace
