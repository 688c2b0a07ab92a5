#include "tests/check/GoodShow.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;

namespace
{
class CheckProgram : public testing::Test
{
protected:
    CheckProgram() { test::MakeGoodShow(); }

    test::cTemporaryFolder mFolder;
};
} // namespace

TEST_F(CheckProgram, AGoodShowIsClean)
{
    const auto result = test::Run({VYR_CHECK, "."});
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_EQ(result.mOutput, "0 faults, 0 warnings\n");
    EXPECT_EQ(result.mErrors, "");
}

// One of each kind, all at once, one line each.
TEST_F(CheckProgram, AllFaultsAreReportedInOneRun)
{
    fs::remove("data/duck.png");
    test::WriteTrack("object:num", {{0, 2.0f, 0}});
    test::WriteFile("data/shaders/noise.fs", "nonsense");
    test::WriteFile("data/oh2.lwo", "nonsense");
    test::WriteMusic({"-i", "sine=sample_rate=48000:duration=1", "-ac", "2"});
    test::WriteLyricImage("data/lyrics/lyrics001", 100, 100, 255);
    const auto result = test::Run({VYR_CHECK});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_THAT(result.mOutput,
                AllOf(HasSubstr("data/duck.png: image:left 0: missing\n"),
                      HasSubstr("sync_object:num.track: key 0 (row 0): expected an index below 2"),
                      HasSubstr("data/shaders/noise.fs: does not compile: "),
                      HasSubstr("data/oh2.lwo: expected an LWO2 object"),
                      HasSubstr("data/waiting.mp3: rate: expected 44100"),
                      HasSubstr("data/lyrics/lyrics001: expected a contrast")));
    EXPECT_THAT(result.mOutput, HasSubstr("8 faults, 0 warnings\n")); // short and quiet as well
}

// Seen while it draws, so the layer has to be on.
TEST_F(CheckProgram, UniformsThatTheShaderDoesNotUseAreNamed)
{
    test::WriteTrack("fade:plasma", {{0, 1.0f, 0}});
    test::WriteFile("data/shaders/plasma.fs",
                    "uniform float time, alpha, flaresize;\nuniform vec2 resolution, flarepos;\n"
                    "void main() { gl_FragColor = vec4(time, resolution.x, flarepos.x, alpha); }");
    const auto result = test::Run({VYR_CHECK, "."});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_THAT(
        result.mOutput,
        HasSubstr("data/shaders/plasma.fs: uniform flaresize: expected it to be used, found "
                  "no such active uniform\n1 fault, "));
}

TEST_F(CheckProgram, WarningsDoNotStopAShow)
{
    test::WriteTrack("image:left", {{0, -1.0f, 0}});
    const auto result = test::Run({VYR_CHECK, "."});
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_THAT(result.mOutput,
                HasSubstr("warning: data/duck.png: image:left 0: is never shown\n"));
    EXPECT_THAT(result.mOutput,
                HasSubstr("0 faults, " + std::to_string(test::CountPhotos()) + " warnings\n"));
}

TEST_F(CheckProgram, MisuseIsToldApartFromFaults)
{
    auto result = test::Run({VYR_CHECK, "no/such/folder"});
    EXPECT_EQ(result.mStatus, 2);
    EXPECT_EQ(result.mErrors, "no/such/folder: No such file or directory\n");
    EXPECT_EQ(test::Run({VYR_CHECK, "data/duck.png"}).mStatus, 2);
    EXPECT_EQ(test::Run({VYR_CHECK, ".", "."}).mStatus, 2);
    EXPECT_EQ(test::Run({VYR_CHECK, "--nonsense"}).mStatus, 2);
    EXPECT_EQ(test::Run({VYR_CHECK, "--help"}).mStatus, 0);
}
