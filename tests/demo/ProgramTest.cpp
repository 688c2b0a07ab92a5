#include "tests/support/FixtureShow.h"
#include "tests/support/Process.h"
#include "tests/support/Screen.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <csignal>

namespace fs = std::filesystem;

namespace
{
// The real program, in a copy of the fixture show, on a real display.
class Program : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        sFixture = new test::cTemporaryFolder;
        test::WriteFixtureShow(sFixture->Path() / "good", 3.0);
    }
    static void TearDownTestSuite() { delete sFixture; }

    Program() : mFolder(sFixture->Path() / "show")
    {
        fs::remove_all(mFolder);
        fs::copy(sFixture->Path() / "good", mFolder, fs::copy_options::recursive);
    }

    std::unique_ptr<test::cProcess> Start(const std::string &program = VYR_DEMO)
    {
        return std::make_unique<test::cProcess>(std::vector<std::string>{program}, mFolder);
    }

    test::cProcessResult RunToItsEnd() { return Start()->Wait(); }

    // Runs until its first frame is on the screen, then ends it with Escape.
    test::cProcessResult RunUntilEscape(unsigned long firstColor = 0xFFFFFF)
    {
        const auto program = Start();
        EXPECT_TRUE(mScreen.WaitForWindow("Demo", *program));
        EXPECT_TRUE(BecomesColor(firstColor, *program));
        mScreen.PressEscape();
        return program->Wait();
    }

    bool BecomesColor(unsigned long color, test::cProcess &program)
    {
        bool hasColor = false;
        test::WaitUntil([&] {
            hasColor = mScreen.Pixel(640, 600) == color;
            return hasColor || !program.IsRunning();
        });
        return hasColor;
    }

    static inline test::cTemporaryFolder *sFixture = nullptr;
    fs::path mFolder;
    test::cScreen mScreen;
};

TEST_F(Program, PlaysFullScreenUntilEscape)
{
    const auto program = Start();
    ASSERT_TRUE(mScreen.WaitForWindow("Demo", *program));
    EXPECT_EQ(mScreen.Width(), 1280);
    EXPECT_EQ(mScreen.Height(), 720);
    EXPECT_TRUE(BecomesColor(0xFFFFFF, *program)); // the fixture's frames are white
    EXPECT_TRUE(mScreen.HidesPointer());
    mScreen.PressEscape();
    const test::cProcessResult result = program->Wait();
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_EQ(result.mOutput, "");
}

TEST_F(Program, IgnoresCloseRequests)
{
    const auto program = Start();
    ASSERT_TRUE(mScreen.WaitForWindow("Demo", *program));
    EXPECT_TRUE(BecomesColor(0xFFFFFF, *program));
    mScreen.RequestClose();
    for (int pass = 0; pass < 10; pass++)
        EXPECT_TRUE(mScreen.AnswersPing()) << pass; // it has seen the request, and looks again
    mScreen.PressEscape();
    EXPECT_EQ(program->Wait().mStatus, 0);
}

// One black frame, then the end: before any track file is read.
TEST_F(Program, WithoutMusicEndsWithTheSoundLibrarysError)
{
    fs::remove(mFolder / "data/waiting.mp3");
    const test::cProcessResult result = RunToItsEnd();
    EXPECT_EQ(result.mStatus, 255);
    EXPECT_EQ(result.mOutput.find("FMOD error! (23) "), 0u) << result.mOutput;
    EXPECT_EQ(result.mOutput.find('\n'), result.mOutput.size() - 1);
}

TEST_F(Program, WithoutAShaderReportsTheDriversLogAndPlays)
{
    fs::remove(mFolder / "data/shaders/plasma.fs");
    const test::cProcessResult result = RunUntilEscape();
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_NE(result.mOutput.find("FragmentShader Info Log: \n"), std::string::npos);
}

TEST_F(Program, WithoutATrackItsLayerFollowsZero)
{
    fs::remove(mFolder / "sync_fade:bg_white.track"); // no white: black under an 8 by 8 vignette
    EXPECT_EQ(RunUntilEscape(0x000000).mStatus, 0);
}

// The size of a picture that was never loaded is asked for in each frame.
TEST_F(Program, WithoutTheVignetteStopsWithTheTexturesAssertion)
{
    fs::remove(mFolder / "data/vignette1.png");
    const test::cProcessResult result = RunToItsEnd();
    EXPECT_EQ(result.mSignal, SIGABRT);
    EXPECT_NE(result.mErrors.find("cTextureManager::GetTexture(): ID is out of range: "),
              std::string::npos);
}

TEST_F(Program, WithoutAPhotoThatIsNotShownPlays)
{
    fs::remove(mFolder / "data/duck.png");
    EXPECT_EQ(RunUntilEscape().mStatus, 0);
}

TEST_F(Program, WithoutAnObjectStopsWithAnAssertionThatNamesItsFile)
{
    fs::remove(mFolder / "data/oh2.lwo");
    const test::cProcessResult result = RunToItsEnd();
    EXPECT_EQ(result.mSignal, SIGABRT);
    EXPECT_NE(result.mErrors.find("data/oh2.lwo"), std::string::npos);
}

// The program with a sound library of the test's own: its positions follow a script, its calls fail
// on demand.
class ScriptedProgram : public Program
{
protected:
    test::cProcessResult RunWith(const std::string &setting)
    {
        test::cProcess program({VYR_SCRIPTED_DEMO}, mFolder, {setting});
        return program.Wait();
    }
};

// Positions in rows: 0 draws nothing, a repeated row draws nothing, 3624 is drawn and is the last.
TEST_F(ScriptedProgram, DrawsWhenTheRowMovesAndEndsAfterTheLastRow)
{
    const test::cProcessResult result =
        RunWith("VYR_TEST_ROWS=0,0,10,10,11,3623.99,3624,3625,3626");
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_EQ(result.mOutput, "update 0\nupdate 0\nupdate 10\nupdate 10\nupdate 11\n"
                              "update 3623.99\nupdate 3624\nrelease sound\nclose\nrelease\n");
}

TEST_F(ScriptedProgram, EndsWithEachFailingCallsError)
{
    for (const char *call : {"System_Create", "getVersion", "init", "createStream", "playSound",
                             "Sound::release", "close", "System::release"}) {
        const test::cProcessResult result = RunWith(std::string("VYR_TEST_FAIL=") + call);
        EXPECT_EQ(result.mStatus, 255) << call;
        EXPECT_NE(result.mOutput.find("FMOD error! (33) "), std::string::npos) << call;
    }
}

TEST_F(ScriptedProgram, RefusesAnOldVersion)
{
    const test::cProcessResult result = RunWith("VYR_TEST_FAIL=version");
    EXPECT_EQ(result.mStatus, 255);
    EXPECT_EQ(result.mOutput, "Error!  You are using an old version of FMOD 00044205.  This "
                              "program requires 00044206\n");
}

// As when the music ends before the last row: nothing is drawn any more, and nothing ends.
TEST_F(ScriptedProgram, IdlesWhenTheRowMovesNoMoreAndStillSeesEscape)
{
    test::cProcess program({VYR_SCRIPTED_DEMO}, mFolder, {"VYR_TEST_ROWS=10,stay"});
    ASSERT_TRUE(mScreen.WaitForWindow("Demo", program));
    EXPECT_TRUE(BecomesColor(0xFFFFFF, program));
    for (int pass = 0; pass < 100; pass++)
        EXPECT_TRUE(mScreen.AnswersPing()) << pass;
    EXPECT_EQ(mScreen.Pixel(640, 600), 0xFFFFFFu); // the last frame stays
    mScreen.PressEscape();
    EXPECT_EQ(program.Wait().mStatus, 0);
}

// What can't be read leaves the position before, so the row does not move.
TEST_F(ScriptedProgram, UnreadablePositionKeepsTheOneBefore)
{
    const test::cProcessResult result = RunWith("VYR_TEST_ROWS=10,fail,fail,3624");
    EXPECT_EQ(result.mStatus, 0);
}
} // namespace
