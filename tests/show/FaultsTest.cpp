// Shows that go wrong, opened by the real tools: one line that says where, the right exit status,
// and no file that was not there before.

#include "tests/show/BrokenShow.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
const std::string check = VYR_BINARY_DIR "/bin/vyr-check";
const std::string record = VYR_BINARY_DIR "/bin/vyr-record";
const std::string tracks = VYR_BINARY_DIR "/bin/vyr-tracks";

class BrokenShows : public testing::Test
{
protected:
    BrokenShows() { test::WriteBrokenShow("show"); }

    static test::cProcessResult Run(std::vector<std::string> command, const std::string &how)
    {
        return test::Run(command, fs::current_path(), {"VYR_BROKEN=" + how});
    }

    // vyr-check ends with one fault, which has `what` in it.
    static void ExpectFault(const std::string &how, const std::string &what)
    {
        const auto result = Run({check, "show"}, how);
        EXPECT_EQ(result.mStatus, 1) << how;
        EXPECT_THAT(result.mOutput, HasSubstr(what)) << how;
        EXPECT_THAT(result.mOutput, HasSubstr("1 fault, ")) << how;
    }

    static void ExpectNoRecording(const std::string &how, const std::string &what, int status = 1)
    {
        const auto result =
            Run({record, "--show", "show", "--size", "64x36", "--fps", "10", "-o", "a.mp4"}, how);
        EXPECT_EQ(result.mStatus, status) << how << result.mSignal;
        EXPECT_THAT(result.mErrors, HasSubstr(what)) << how;
        EXPECT_FALSE(fs::exists("a.mp4")) << how;
    }

    test::cTemporaryFolder mFolder;
};

TEST_F(BrokenShows, AGoodOneIsClean)
{
    const auto result = Run({check, "show"}, "");
    EXPECT_EQ(result.mStatus, 0) << result.mOutput;
    EXPECT_THAT(result.mOutput, HasSubstr("0 faults, "));
}

TEST_F(BrokenShows, CheckSaysAtWhichStepAShowGoesWrong)
{
    ExpectFault("throw in Describe", "show.so: Describe: thrown on purpose\n");
    ExpectFault("crash in Describe", "show.so: stopped by signal 6 ");
    ExpectFault("exit in Describe",
                "show.so: left by exit with status 3, while describing itself\n");
    ExpectFault("throw in Load", "show.so: Load: thrown on purpose\n");
    ExpectFault("crash in Load", ", while loading\n");
    ExpectFault("exit in Load", "show.so: left by exit with status 3, while loading\n");
    ExpectFault("throw in Draw", "show.so: Draw at row 104: thrown on purpose\n");
    ExpectFault("crash in Draw", ", while drawing row 104\n");
    ExpectFault("exit in Draw", "show.so: left by exit with status 3, while drawing row 104\n");
    ExpectFault("an OpenGL error", "show.so: row 0: OpenGL error 0x0500\n");
}

TEST_F(BrokenShows, CheckEndsAShowThatHangs)
{
    ExpectFault("hang in Load", "show.so: did not come back within 10 seconds, while loading\n");
}

TEST_F(BrokenShows, CheckTellsFaultyDescriptions)
{
    ExpectFault("no tracks", "show.so: Describe: no tracks\n");
    ExpectFault("no tempo", "show.so: Describe: no tempo");
    ExpectFault("no music", "show.so: Describe: no music\n");
    ExpectFault("a track twice", "track 'height' is named twice\n");
    ExpectFault("a choice for no track", "choice 'pack': no track of the show has this name\n");
    ExpectFault("last row beyond the music",
                "data/music.mp3: length: expected 187.5 s, to the show's last row, found 17");
}

TEST_F(BrokenShows, CheckLooksAtFilesBeforeCode)
{
    fs::remove("show/show.so");
    test::WriteFile("show/sync_height.track", "abc");
    const auto result = Run({check, "show"}, "");
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_THAT(result.mOutput, HasSubstr("show.so: not there, so this is no show's folder\n"));
    EXPECT_THAT(result.mOutput, HasSubstr("sync_height.track: header: expected 8 bytes"));
}

TEST_F(BrokenShows, CheckComparesTheTempoOfTheTimeline)
{
    test::WriteFile("t.txt", "tempo 60 8 4\ntracks height pick\n");
    auto result = Run({check, "show", "--timeline", "t.txt"}, "");
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_THAT(result.mOutput, HasSubstr("t.txt: tempo: expected 'tempo 120 8 4', which is the "
                                          "show's, found 'tempo 60 8 4'\n"));
    test::WriteFile("t.txt", "tempo 120 8 4\ntracks height pick\n");
    result = Run({check, "show", "--timeline", "t.txt"}, "");
    EXPECT_EQ(result.mStatus, 0) << result.mOutput;
}

TEST_F(BrokenShows, RecorderLeavesNoHalfFile)
{
    ExpectNoRecording("throw in Load", "vyr-record: show.so: Load: thrown on purpose\n");
    ExpectNoRecording("throw in Draw", "show.so: Draw at row 100.8: thrown on purpose\n");
    ExpectNoRecording("crash in Draw", "", -1);
    ExpectNoRecording("exit in Draw", "", 3);
    ExpectNoRecording("no tempo", "vyr-record: show.so: Describe: no tempo");
}

// A second engine in a process would have a second renderer, which the show would draw with.
TEST(OneEngine, IsTheLibrarys)
{
    const std::string function = "vyr::cRenderer::Init(";
    for (const std::string &program :
         {check, record, tracks, std::string(VYR_BINARY_DIR) + "/show/show.so"}) {
        const auto result = test::Run({"nm", "-C", "--defined-only", program});
        EXPECT_EQ(result.mStatus, 0) << result.mErrors;
        EXPECT_EQ(result.mOutput.find(function), std::string::npos) << program;
    }
    const auto library = test::Run({"nm", "-C", "--defined-only", VYR_BINARY_DIR "/lib/libvyr.so"});
    EXPECT_NE(library.mOutput.find(function), std::string::npos);
    const auto demo = test::Run({"ldd", VYR_BINARY_DIR "/show/demo"});
    EXPECT_EQ(demo.mOutput.find("libvyr"), std::string::npos) << "it is one self-contained program";
}

TEST_F(BrokenShows, TracksNameTheShowThatCannotBeOpened)
{
    const auto result = Run({tracks, "sample", "show", "height", "0", "8", "1"}, "no tempo");
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_THAT(result.mErrors, StartsWith("show/show.so: Describe: no tempo"));
    EXPECT_EQ(std::ranges::count(result.mErrors, '\n'), 1);
}

TEST_F(BrokenShows, FolderThatMayNotBeReadIsNamed)
{
    const std::vector<std::string> commands[] = {
        {check, "show"}, {record, "--show", "show", "--still", "8", "-o", "still.png"}};
    fs::permissions("show", fs::perms::none);
    for (const std::vector<std::string> &command : commands) {
        const auto result = Run(test::WithoutPrivileges(command), "");
        const std::string said = result.mErrors + result.mOutput;
        EXPECT_GT(result.mStatus, 0) << command[0];
        EXPECT_THAT(said, HasSubstr("show")) << command[0];
        EXPECT_THAT(said, HasSubstr("Permission denied")) << command[0];
        EXPECT_EQ(std::ranges::count(said, '\n'), 1) << said;
        EXPECT_FALSE(fs::exists("still.png"));
    }
    fs::permissions("show", fs::perms::owner_all);
}
} // namespace
