// The tools with faulty files and full disks: one clear line and a status, never a signal.

#include "demo/Tables.h"
#include "tests/faults/Faults.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace fs = std::filesystem;
using faults::cFault;
using test::cProcessResult;

namespace
{
std::vector<const char *> Files()
{
    std::vector<const char *> files = {"data/duck.png", "data/oh1.lwo", "data/waiting.mp3",
                                       "sync_image:left.track"};
    if (faults::WantsAll())
        files.insert(files.end(), {"data/lyrics/lyrics000", "data/vignette1.png",
                                   "data/shaders/plasma.fs", "sync_fade:plasma.track"});
    return files;
}

class ToolFaults : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        sFolder = new test::cTemporaryFolder;
        faults::WriteShowWithEverythingOn(sFolder->Path() / "show");
    }
    static void TearDownTestSuite() { delete sFolder; }

    static cProcessResult Run(const std::vector<std::string> &command)
    {
        test::cProcess program(test::WithoutPrivileges(command), sFolder->Path());
        return program.Wait();
    }

    static bool IsOneLine(const std::string &text)
    {
        return std::count(text.begin(), text.end(), '\n') == 1 && text.back() == '\n';
    }

    static std::string Describe(const cProcessResult &result)
    {
        return "status " + std::to_string(result.mStatus) + ", signal " +
               std::to_string(result.mSignal) + (result.mTimedOut ? ", hung\n" : "\n") +
               result.mOutput + result.mErrors;
    }

    static inline test::cTemporaryFolder *sFolder = nullptr;
};

class EachFile : public ToolFaults, public testing::WithParamInterface<const char *>
{};

// What a file may lose without harm (a shader's last line, a picture's last bytes) may pass.
TEST_P(EachFile, IsNamedByTheCheck)
{
    for (const cFault &fault : faults::List()) {
        const faults::cFaultyFile faulty(sFolder->Path() / "show" / GetParam(), fault);
        const cProcessResult result = Run({VYR_CHECK, "show"});
        const bool isNamed =
            result.mStatus == 1 && result.mOutput.find(GetParam()) != std::string::npos;
        EXPECT_TRUE(isNamed || (fault.mKind == cFault::Cut && result.mStatus >= 0))
            << GetParam() << " " << fault.Name() << ": " << Describe(result);
    }
}

TEST_P(EachFile, MakesTheRecorderFailInOneLineOrDrawOn)
{
    for (const cFault &fault : faults::List()) {
        const faults::cFaultyFile faulty(sFolder->Path() / "show" / GetParam(), fault);
        const cProcessResult result = Run(
            {VYR_RECORD, "--show", "show", "--still", "100", "--size", "64x36", "-o", "still.png"});
        const bool hasFailed = result.mStatus == 1 && IsOneLine(result.mErrors) &&
                               result.mErrors.find(GetParam()) != std::string::npos;
        EXPECT_TRUE(hasFailed || result.mStatus == 0)
            << GetParam() << " " << fault.Name() << ": " << Describe(result);
        EXPECT_EQ(fs::exists("still.png"), result.mStatus == 0);
        fs::remove("still.png");
    }
}

std::string NameOf(const testing::TestParamInfo<const char *> &info)
{
    std::string name;
    for (const char *c = info.param; *c; c++)
        name.push_back(std::isalnum(static_cast<unsigned char>(*c)) ? *c : '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(ToolFaults, EachFile, testing::ValuesIn(Files()), NameOf);

TEST_F(ToolFaults, TrackFilesAreNamedByTheDump)
{
    const std::string file = "sync_image:left.track";
    for (const cFault &fault : faults::List()) {
        if (fault.mKind == cFault::Missing || fault.mKind == cFault::Folder)
            continue; // then the folder has no such track
        const faults::cFaultyFile faulty(sFolder->Path() / "show" / file, fault);
        const cProcessResult result = Run({VYR_TRACKS, "dump", "show"});
        EXPECT_TRUE(result.mStatus == 1 && result.mErrors.find(file) != std::string::npos &&
                    result.mOutput.empty())
            << fault.Name() << ": " << Describe(result);
    }
}

TEST_F(ToolFaults, TimelineThatCanNotBeReadIsNamed)
{
    for (const cFault &fault : faults::List()) {
        const fs::path path = sFolder->Path() / "timeline.txt";
        test::WriteFile(path, "track a\n 0 1\n 8 2 linear\n");
        const faults::cFaultyFile faulty(path, fault);
        const cProcessResult result = Run({VYR_TRACKS, "compile", "timeline.txt", "-o", "made"});
        const bool mayPass = fault.mKind == cFault::Empty || fault.mKind == cFault::Cut;
        EXPECT_TRUE(
            (result.mStatus == 1 && result.mErrors.find("timeline.txt") != std::string::npos) ||
            (mayPass && result.mStatus == 0))
            << fault.Name() << ": " << Describe(result);
        EXPECT_FALSE(fs::exists("made") && result.mStatus != 0); // no words, no tracks, no folder
        fs::remove_all("made");
    }
}

// The recorder draws nothing without them; the check leaves out what it would have compiled.
TEST_F(ToolFaults, DriverWithoutOpenGL2OrFramebuffersIsOneLineAndAStatus)
{
    for (const char *lack :
         {"MESA_GL_VERSION_OVERRIDE=1.4",
          "MESA_EXTENSION_OVERRIDE=-GL_EXT_framebuffer_object -GL_ARB_framebuffer_object"}) {
        const cProcessResult result =
            Run({"env", "LIBGL_ALWAYS_SOFTWARE=1", lack, VYR_RECORD, "--show", "show", "--still",
                 "100", "--size", "64x36", "-o", "still.png"});
        EXPECT_TRUE(result.mStatus == 1 &&
                    result.mErrors.find("the driver has no ") != std::string::npos)
            << lack << ": " << Describe(result);
        EXPECT_FALSE(fs::exists("still.png"));
        const cProcessResult check =
            Run({"env", "LIBGL_ALWAYS_SOFTWARE=1", lack, VYR_CHECK, "show"});
        EXPECT_TRUE(check.mSignal == 0 && check.mStatus >= 0) << lack << ": " << Describe(check);
    }
}

// A disk without room, and an output that nobody takes.
TEST_F(ToolFaults, OutputThatCanNotBeWrittenIsOneLineAndAStatus)
{
    for (const char *where : {" >/dev/full", " >&-"}) {
        const cProcessResult result =
            Run({"sh", "-c", std::string("exec ") + VYR_TRACKS + " dump show" + where});
        EXPECT_TRUE(result.mStatus == 1 && IsOneLine(result.mErrors))
            << where << ": " << Describe(result);
    }
}

// Folders are made where they are missing; under a file none can be made.
TEST_F(ToolFaults, OutputFolderThatIsAFileIsOneLineAndAStatus)
{
    const std::vector<std::vector<std::string>> commands = {
        {VYR_TRACKS, "plot", "show", "-o", "show/data/oh1.lwo/page.svg"},
        {VYR_RECORD, "--show", "show", "--still", "100", "-o", "show/data/oh1.lwo/still.png"},
        {VYR_RECORD, "--show", "show", "-o", "show/data/oh1.lwo/show.mp4"}};
    for (const auto &command : commands) {
        const cProcessResult result = Run(command);
        EXPECT_TRUE(result.mStatus > 0 && IsOneLine(result.mErrors) &&
                    result.mErrors.find("oh1.lwo") != std::string::npos)
            << command[1] << ": " << Describe(result);
    }
}
} // namespace
