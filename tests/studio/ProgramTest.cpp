// The real program on a screen, on a show of its own, driven by scripts and by real events.

#include "tests/support/Process.h"
#include "tests/support/Screen.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using tWords = std::vector<std::string>;

namespace
{
const std::string program = VYR_BINARY_DIR "/bin/vyr-studio",
                  recorder = VYR_BINARY_DIR "/bin/vyr-record";

std::vector<std::string> LinesOf(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// A copy of a small show, with its timeline's text beside it.
class Studio : public testing::Test
{
protected:
    Studio()
    {
        fs::copy(VYR_BINARY_DIR "/examples/night", "show", fs::copy_options::recursive);
        fs::remove("show/show.sources"); // what is changed here is the copy
        fs::copy(VYR_SOURCE_DIR "/examples/night/night.txt", "night.txt");
    }

    static tWords Command(const tWords &more)
    {
        tWords words = {program,  "show",     "--timeline", "night.txt", "--size",
                        "160x90", "--window", "1200x700",   "--mute"};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }

    static test::cProcessResult Run(const std::string &script)
    {
        test::WriteFile("script", script);
        return test::Run(Command({"--script", "script"}));
    }

    /// The lines that a script prints, which must go through.
    static std::vector<std::string> Print(const std::string &script)
    {
        const auto result = Run(script);
        EXPECT_EQ(result.mStatus, 0) << result.mErrors;
        return LinesOf(result.mOutput);
    }

    /// Hashes of all frames of the show as it stands, in their order.
    static std::vector<std::string> Record()
    {
        const auto result =
            test::Run({recorder, "--show", "show", "--size", "160x90", "--manifest", "manifest"});
        EXPECT_EQ(result.mStatus, 0) << result.mErrors;
        std::vector<std::string> hashes;
        for (const std::string &line : LinesOf(test::ReadFile("manifest")))
            if (line[0] != '#')
                hashes.push_back(line.substr(line.rfind(' ') + 1));
        return hashes;
    }

    static std::string Seek(int frame)
    {
        std::ostringstream line; // a row of the grid, in as many digits as its manifest has
        line.precision(17);
        line << "seek " << frame / 60.0 * 16.0 << "\n";
        return line.str();
    }

    test::cTemporaryFolder mFolder;
};

// Forwards, backwards, and after a piece that has played.
TEST_F(Studio, PreviewIsTheRecordersFrame)
{
    std::vector<int> frames;
    std::string script = "settle\n";
    for (int i = 0; i < 50; i++) {
        const int frame = (i * 373) % 900;
        frames.push_back(frame);
        script += Seek(frame) + "print frame\n";
        if (i % 10 == 9)
            script += "key Space\nwait 7\nkey Space\n";
    }
    const auto printed = Print(script), recorded = Record();
    ASSERT_EQ(printed.size(), frames.size());
    for (size_t i = 0; i < frames.size(); i++)
        EXPECT_EQ(printed[i], recorded.at(size_t(frames[i]))) << "frame " << frames[i];
}

TEST_F(Studio, PreviewIsTheRecordersFrameAfterEditUndoLoopAndReload)
{
    const std::string places = Seek(300) + "print frame\n" + Seek(333) + "print frame\n";
    const auto recorded = Record();
    const auto printed = Print(
        "lane moon:x 0:0\nclick\nkey Enter\nwait 3\ntype 640\nkey Enter\nwait 2\n" + places +
        "key Ctrl+Z\n" + places +
        "key B\nseek 4:0\nkey N\nkey Space\nwait 200\nkey Space\nkey L\n" + places +
        "run touch night.txt && cp night.txt n && echo >> n && mv n night.txt\nsettle\n" + places);
    ASSERT_EQ(printed.size(), 8u);
    EXPECT_NE(printed[0], recorded[300]); // the moon stands elsewhere
    for (size_t i = 2; i < printed.size(); i++)
        EXPECT_EQ(printed[i], recorded[i % 2 == 0 ? 300 : 333]) << i;
}

// What the studio has written into the show's folder is what the recorder then draws.
TEST_F(Studio, ChangedTracksAreInTheShowsFolder)
{
    const auto before = Record();
    const auto printed = Print("lane moon:x 0:0\nclick\nkey Enter\nwait 3\ntype 640\nkey Enter\n"
                               "wait 2\n" +
                               Seek(300) + "print frame\n");
    EXPECT_NE(printed.back(), before[300]);
    EXPECT_EQ(printed.back(), Record()[300]);
}

TEST_F(Studio, DragChangesOneLineAndUndoEveryByteBack)
{
    const std::string before = test::ReadFile("night.txt");
    const auto printed = Print("lane moon:x 8:0\npress\nlane moon:x 6:0 450\nwait 1\nrelease\n"
                               "print selection\nrun cp night.txt changed\nkey Ctrl+Z\n");
    EXPECT_THAT(printed, ElementsAre("1 keys selected"));
    const auto was = LinesOf(before), is = LinesOf(test::ReadFile("changed"));
    ASSERT_EQ(was.size(), is.size());
    int changed = 0;
    for (size_t i = 0; i < was.size(); i++)
        if (was[i] != is[i]) {
            changed++;
            EXPECT_THAT(is[i], StartsWith("    6:0  4"));
        }
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(test::ReadFile("night.txt"), before);
}

TEST_F(Studio, EscapeCancelsADragAndTheFileIsUntouched)
{
    const auto before = fs::last_write_time("night.txt");
    const auto printed =
        Print(Seek(300) + "print frame\nlane moon:x 0:0\npress\nlane moon:x 2:0 650\nwait 1\n"
                          "print frame\nkey Esc\nwait 1\nprint frame\nrelease\nprint frame\n");
    ASSERT_EQ(printed.size(), 4u);
    EXPECT_NE(printed[1], printed[0]); // the frame follows the hand
    EXPECT_EQ(printed[2], printed[0]);
    EXPECT_EQ(printed[3], printed[0]);
    EXPECT_EQ(fs::last_write_time("night.txt"), before);
}

// A key of a repeated section is one line: all of its copies change, with one line of the text.
TEST_F(Studio, KeyOfAPatternChangesItsOneLine)
{
    const auto before = LinesOf(test::ReadFile("night.txt"));
    Print("lane moon:size 3:0\nclick\nkey 1\n");
    const auto after = LinesOf(test::ReadFile("night.txt"));
    ASSERT_EQ(before.size(), after.size());
    int changed = 0;
    for (size_t i = 0; i < before.size(); i++)
        changed += before[i] != after[i];
    EXPECT_EQ(changed, 1);
}

TEST_F(Studio, DetachedCopyHasLinesOfItsOwn)
{
    const auto recorded = Record();
    const auto printed = Print("lane moon:size 3:0\nclick\nkey Ctrl+T\n" + Seek(360) +
                               "print frame\nkey Enter\nwait 3\ntype 0.2\nkey Enter\nwait 2\n" +
                               "print frame\n" + Seek(390) + "print frame\n");
    ASSERT_EQ(printed.size(), 3u);
    EXPECT_EQ(printed[0], recorded[360]); // detaching alone changes nothing
    EXPECT_NE(printed[1], recorded[360]);
    EXPECT_EQ(printed[2], recorded[390]); // other copies stay
    EXPECT_GT(LinesOf(test::ReadFile("night.txt")).size(),
              LinesOf(test::ReadFile(VYR_SOURCE_DIR "/examples/night/night.txt")).size());
}

TEST_F(Studio, BoxSelectsAcrossLanesAndCopiesGoToThePlayhead)
{
    const auto printed =
        Print("lane moon:x 0:0 750\nmove 180 400\nkey Ctrl+A\nprint selection\nkey Esc\n"
              "print selection\nlane moon:x 8:0\nclick\nhold Shift\nlane moon:y 8:0\nclick\n"
              "let Shift\nprint selection\nkey Ctrl+C\nseek 4:0\nkey Ctrl+V\nprint selection\n");
    ASSERT_EQ(printed.size(), 4u);
    EXPECT_THAT(printed[0], Not(StartsWith("0 ")));
    EXPECT_EQ(printed[1], "0 keys selected");
    EXPECT_EQ(printed[2], "2 keys selected");
    EXPECT_EQ(printed[3], "2 keys selected");
    EXPECT_THAT(test::ReadFile("night.txt"), HasSubstr("    4:0  700"));
    EXPECT_THAT(test::ReadFile("night.txt"), HasSubstr("    4:0  60"));
}

TEST_F(Studio, ShaderThatDoesNotCompileIsNamedAndTheLastGoodOneDrawn)
{
    const auto printed =
        Print(Seek(300) + "print frame\nrun sed -i 's/main/brok en/' show/data/*.fs\n"
                          "settle\nprint problems\nprint frame\n"
                          "run sed -i 's/brok en/main/' show/data/*.fs\nsettle\n"
                          "print problems\nprint frame\n");
    ASSERT_GE(printed.size(), 4u);
    EXPECT_THAT(printed[1], HasSubstr("show/data/fog.fs:"));
    EXPECT_EQ(printed[printed.size() - 2], printed[0]);
    EXPECT_EQ(printed.back(), printed[0]);
}

TEST_F(Studio, ChangedShaderPictureAndTimelineAreOnTheScreen)
{
    const auto printed = Print(
        Seek(300) +
        "print frame\n"
        "run sed -i 's/gl_FragColor *=.*/gl_FragColor = vec4(1.0, 0.0, 0.0, 0.5);/' "
        "show/data/fog.fs\nsettle\nprint frame\n"
        "run sed 's/200  linear/900  linear/' night.txt > n && mv n night.txt\nsettle\n"
        "print frame\nrun ffmpeg -v error -y -i show/data/moon.png -vf negate -update 1 n.png && "
        "mv n.png show/data/moon.png\nsettle\nprint frame\nprint problems\n");
    ASSERT_EQ(printed.size(), 4u);
    for (size_t i = 1; i < printed.size(); i++)
        EXPECT_NE(printed[i], printed[i - 1]) << i;
    EXPECT_EQ(printed.back(), Record()[300]);
}

TEST_F(Studio, TextWithFaultsPlaysOnAndEachIsNamed)
{
    const auto printed = Print(Seek(300) + "print frame\nrun sed -i 's/ linear/ liner/' night.txt\n"
                                           "settle\nprint frame\nprint problems\n"
                                           "lane moon:x 0:0\nclick\nkey Del\nprint message\n"
                                           "run : > night.txt\nsettle\nprint frame\n");
    ASSERT_GT(printed.size(), 5u);
    EXPECT_EQ(printed[1], printed[0]);
    EXPECT_THAT(printed[2], HasSubstr("night.txt:14:"));
    EXPECT_THAT(printed[printed.size() - 2], HasSubstr("fault"));
    EXPECT_EQ(printed.back(), printed[0]);
    EXPECT_EQ(test::ReadFile("night.txt"), "");
}

// In the middle of a drag somebody saves: another line, and the drag goes on; the same, and it is
// refused. Nothing of theirs is lost.
TEST_F(Studio, TextThatChangesDuringADragIsMergedOrTheDragRefused)
{
    auto printed = Print("lane moon:x 8:0\npress\nlane moon:x 6:0\nwait 1\n"
                         "run sed -i 's/8:0  60/8:0  77/' night.txt\nsettle\nrelease\n"
                         "print selection\n");
    EXPECT_THAT(printed, ElementsAre("1 keys selected"));
    EXPECT_THAT(test::ReadFile("night.txt"), HasSubstr("77"));
    EXPECT_THAT(test::ReadFile("night.txt"), HasSubstr("    6:0  "));

    printed = Print("lane moon:y 8:0\npress\nlane moon:y 5:0\nwait 1\n"
                    "run sed -i 's/8:0  77/8:0  99/' night.txt\nsettle\nrelease\n"
                    "print message\n");
    EXPECT_THAT(printed, ElementsAre(HasSubstr("changed in the file meanwhile")));
    EXPECT_THAT(test::ReadFile("night.txt"), HasSubstr("    8:0  99"));
}

// The same library under another number of the file system is another one.
TEST_F(Studio, ShowIsExchangedWhenItsLibraryIsBuiltAnew)
{
    const auto printed = Print(Seek(300) +
                               "print frame\nkey Space\nwait 3\nrun cp show/show.so n && "
                               "printf x >> n && mv n show/show.so\nsettle\nprint message\n"
                               "wait 3\nprint title\nkey Space\n" +
                               Seek(300) +
                               "print frame\nrun cp /bin/true show/show.so.new && "
                               "mv show/show.so.new show/show.so\nsettle\nprint problems\n"
                               "print frame\n");
    ASSERT_EQ(printed.size(), 6u);
    EXPECT_THAT(printed[1], HasSubstr("exchanged"));
    EXPECT_THAT(printed[2], Not(HasSubstr("paused"))); // the music plays on
    EXPECT_EQ(printed[3], printed[0]);
    EXPECT_THAT(printed[4], HasSubstr("show.so"));
    EXPECT_EQ(printed[5], printed[0]);
}

TEST_F(Studio, RecordsTheLoopWithTheRecorder)
{
    const auto printed = Print("seek 2:0\nkey B\nseek 2:2\nkey N\nkey R\nwait 3\nkey Enter\n"
                               "settle\nprint message\nprint problems\n");
    EXPECT_THAT(printed, ElementsAre(HasSubstr("recorded: ")));
    const auto frames =
        test::Run({"ffprobe", "-v", "error", "-count_frames", "-select_streams", "v",
                   "-show_entries", "stream=nb_read_frames", "-of", "csv=p=0", "Night-2.0.0.mp4"});
    EXPECT_EQ(frames.mOutput, "60\n"); // two beats at 120 a minute
}

TEST_F(Studio, StillIsTheFrame)
{
    Print("seek 3:0\nkey S\nkey S\n");
    EXPECT_TRUE(fs::exists("Night-3.0.0.png"));
    EXPECT_TRUE(fs::exists("Night-3.0.0-2.png")); // nothing is written over
}

TEST_F(Studio, TwoRunsGiveTheSamePictures)
{
    const std::string script =
        "seek 2:1\nlane moon:x 8:0\nclick\nwait 20\nscreenshot SHOT\nkey F1\n"
        "wait 1\n";
    for (const char *name : {"a.png", "b.png"}) {
        std::string text = script;
        Print(text.replace(text.find("SHOT"), 4, name));
    }
    EXPECT_GT(fs::file_size("a.png"), 10'000u);
    EXPECT_TRUE(test::ReadFile("a.png") == test::ReadFile("b.png"));
}

// Without --timeline and without a note of its build a show can be seen, and nothing be changed.
TEST_F(Studio, ShowWithoutItsTextCanBeSeen)
{
    test::WriteFile("script",
                    Seek(300) + "print frame\nlane moon:x 0:0\nclick\nkey Del\nprint message\n");
    const auto result =
        test::Run({program, "show", "--size", "160x90", "--mute", "--script", "script"});
    EXPECT_EQ(result.mStatus, 0) << result.mErrors;
    const auto lines = LinesOf(result.mOutput);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], Record()[300]);
    EXPECT_THAT(lines[1], HasSubstr("--timeline"));
}

TEST_F(Studio, BadInputIsOneLine)
{
    const auto fails = [](const tWords &words, int status, const std::string &what,
                          const tWords &environment = {}) {
        tWords command = {program};
        command.insert(command.end(), words.begin(), words.end());
        const auto result = test::Run(command, fs::current_path(), environment);
        EXPECT_EQ(result.mStatus, status) << what;
        EXPECT_THAT(result.mErrors, HasSubstr(what));
        EXPECT_EQ(LinesOf(result.mErrors).size(), 1u) << result.mErrors;
    };
    fs::create_directory("empty");
    fails({"empty"}, 1, "empty: no show there");
    fails({"show", "--timeline", "none.txt"}, 1, "none.txt: not there");
    fails({"show", "--scale", "9"}, 2, "--scale");
    fails({"show", "--size", "0x9"}, 2, "--size 0x9");
    fails({"show", "--script", "none"}, 1, "none: ");
    test::WriteFile("bad", "wait 1\njump\n");
    fails({"show", "--script", "bad"}, 1, "bad: line 2: no instruction");
    fails({"show", "--mute"}, 1, "no display", {"DISPLAY=:9999"});
    test::WriteFile("show/show.so", "no library");
    fails({"show", "--mute"}, 1, "not a library");
    EXPECT_EQ(test::Run({program, "--help"}).mStatus, 0);
    EXPECT_THAT(test::Run({program, "--version"}).mOutput, StartsWith("vyr-studio "));
}

// Real events of a real display.
TEST_F(Studio, ListensToARealKeyboardAndPointer)
{
    test::cProcess studio(Command({}), fs::current_path(), {"ALSOFT_DRIVERS=null"});
    test::cScreen screen;
    ASSERT_TRUE(screen.WaitForWindow("Night 0:0:0 (paused) - vyr-studio", studio))
        << studio.Wait().mErrors;
    EXPECT_EQ(screen.Width(), 1200);
    const std::string end = "Night 8:0:0 (paused) - vyr-studio",
                      lastBar = "Night 7:0:0 (paused) - vyr-studio";
    screen.Tap("End");
    ASSERT_TRUE(screen.WaitForWindow(end, studio));
    screen.Tap("Left", true);
    ASSERT_TRUE(screen.WaitForWindow(lastBar, studio));
    screen.Tap("space"); // it plays to the end, and pauses there
    ASSERT_TRUE(screen.WaitForWindow(end, studio));
    screen.Tap("Left", true);
    ASSERT_TRUE(screen.WaitForWindow(lastBar, studio));
    screen.MovePointer(45, 20); // the button
    screen.PressButton();
    screen.ReleaseButton();
    ASSERT_TRUE(screen.WaitForWindow(end, studio));
    screen.Tap("q", true);
    EXPECT_EQ(studio.Wait().mStatus, 0);
}
} // namespace
