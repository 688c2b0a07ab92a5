// The program in a show's folder, really played on a screen, without sound.

#include "tests/show/BrokenShow.h"
#include "tests/support/Process.h"
#include "tests/support/Screen.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;
using tWords = std::vector<std::string>;

namespace
{
const std::string night = VYR_BINARY_DIR "/examples/night/night";

test::cProcessResult Play(tWords words, const tWords &environment = {})
{
    words.insert(words.begin(), night);
    return test::Run(words, fs::current_path(), environment);
}

TEST(Player, PlaysToTheLastRow)
{
    const auto result = Play({"--silent", "--window", "64x36", "--from", "7:3:6"});
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_EQ(result.mErrors, "");
}

TEST(Player, PlaysFullScreenUntilEscape)
{
    test::cProcess player({night, "--silent"}, fs::current_path());
    test::cScreen screen;
    ASSERT_TRUE(screen.WaitForWindow("Night", player)) << player.Wait().mErrors;
    EXPECT_EQ(screen.Width(), 1280);
    EXPECT_EQ(screen.Height(), 720);
    screen.PressEscape();
    EXPECT_EQ(player.Wait().mStatus, 0);
}

TEST(Player, WindowHasTheSizeThatIsAskedFor)
{
    test::cProcess player({night, "--silent", "--window", "320x200"}, fs::current_path());
    test::cScreen screen;
    ASSERT_TRUE(screen.WaitForWindow("Night", player)) << player.Wait().mErrors;
    EXPECT_EQ(screen.Width(), 320);
    EXPECT_EQ(screen.Height(), 200);
    screen.PressEscape();
    EXPECT_EQ(player.Wait().mStatus, 0);
}

TEST(Player, HelpNamesTheShowAndTheOptions)
{
    const auto result = Play({"--help"});
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_THAT(result.mOutput, StartsWith("Plays Night, full-screen."));
    for (const char *option : {"--window", "--from", "--silent"})
        EXPECT_THAT(result.mOutput, HasSubstr(option));
}

TEST(Player, MisuseIsOneLine)
{
    const auto expect = [](const tWords &words, const std::string &what) {
        const auto result = Play(words);
        EXPECT_EQ(result.mStatus, 2);
        EXPECT_THAT(result.mErrors, StartsWith("night: "));
        EXPECT_THAT(result.mErrors, HasSubstr(what));
        EXPECT_EQ(std::ranges::count(result.mErrors, '\n'), 1);
    };
    expect({"--from", "soon"}, "--from soon: expected a time");
    expect({"--from", "99:0"}, "--from 99:0: the show ends at row 256");
    expect({"--from", "-1"}, "--from");
    for (const char *size : {"0x0", "640", "640x", "x360", "1e3x9", "99999x9"})
        expect({"--window", size}, "--window");
    expect({"--loud"}, "--loud");
    expect({"somewhere"}, "somewhere");
}

/// The player beside a show that goes wrong.
class PlayerOfABrokenShow : public testing::Test
{
protected:
    PlayerOfABrokenShow()
    {
        test::WriteBrokenShow(".");
        fs::copy(night, "broken");
    }

    static void ExpectLine(const std::string &how, const std::string &line)
    {
        const auto result =
            test::Run({fs::current_path() / "broken", "--silent", "--window", "64x36"},
                      fs::current_path(), {"VYR_BROKEN=" + how});
        EXPECT_EQ(result.mStatus, 1);
        EXPECT_THAT(result.mErrors, StartsWith("broken: " + line));
        EXPECT_EQ(std::ranges::count(result.mErrors, '\n'), 1);
    }

    test::cTemporaryFolder mFolder;
};

TEST_F(PlayerOfABrokenShow, EndsWithOneLine)
{
    ExpectLine("no tempo", "show.so: Describe: no tempo");
    ExpectLine("throw in Load", "show.so: Load: thrown on purpose");
    ExpectLine("throw in Draw", "show.so: Draw at row 10");
    fs::remove("data/music.mp3");
    ExpectLine("", "data/music.mp3: ");
    fs::remove("show.so");
    ExpectLine("", "show.so: not there");
}
} // namespace
