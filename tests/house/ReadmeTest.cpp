// The pages that tell what to type are typed: in a clone, by somebody with an empty home.

#include "tests/house/Clone.h"
#include "tests/house/Markdown.h"
#include "tests/house/Shell.h"
#include "tests/support/Screen.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace
{
class Typed : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        sClone = house::MakeClone("readme-clone");
        house::AddBuild(sClone);
    }
    static void TearDownTestSuite() { fs::remove_all(sClone); }

    // With this environment, from the root of the clone.
    static test::cProcess Start(const std::string &script, const std::string &environment)
    {
        const fs::path home = house::FreshFolder("home");
        return test::cProcess({"bash", "-euo", "pipefail", "-c",
                               "export HOME=" + home.string() + " " + environment + "\n" + script},
                              sClone);
    }

    // As somebody who has seen enough.
    static void EndNextWindow(test::cProcess &process, const std::string &title = "Demo")
    {
        test::cScreen screen;
        if (!screen.WaitForWindow(title, process))
            return; // it ended with a fault, which is reported at the end
        screen.PressEscape();
        while (screen.WaitForWindow(title, 0.0))
            continue;
    }

    static void ExpectGood(test::cProcess &process)
    {
        const test::cProcessResult result = process.Wait(3 * test::hangSeconds);
        EXPECT_EQ(result.mStatus, 0) << house::Transcript(result);
    }

    static void ExpectMade(const fs::path &folder, std::initializer_list<const char *> files)
    {
        for (const char *file : files) {
            std::error_code ignored;
            EXPECT_GT(fs::file_size(folder / file, ignored), 1000u) << file;
            EXPECT_TRUE(fs::exists(folder / file)) << file;
        }
    }

    static std::string ValueAtBar20(const std::string &track)
    {
        const std::string lines =
            house::Shell("build/bin/vyr-tracks sample build/show " + track + " 20:0 20:0 0:1",
                         sClone)
                .mOutput;
        return lines.substr(lines.find('\n') + 1);
    }

    // What is installed comes from the real build; the clone has only a copy of its results.
    static inline const std::pair<std::string, std::string> installation = {
        "cmake --install build", "cmake --install " VYR_BINARY_DIR};
    static inline fs::path sClone;
};

TEST_F(Typed, ReadmeWorksFromItsFirstCommandToItsLast)
{
    const std::string script = house::Script(
        VYR_SOURCE_DIR "/README.md", {{"-o show.mp4", "-o show.mp4 --to 16 --size 320x180"},
                                      {"-o part$k.mp4", "--to 32 --size 320x180 -o part$k.mp4"},
                                      {"--sheet", "--sheet --to 352"},
                                      {"--to 704", "--to 648"},
                                      installation});
    test::WriteFile(sClone / "edits", "/the lamppost/s/tovak06/duck/\n"
                                      "s/^    12:0:0  0.9$/    12:0:0  2/\n");
    test::cProcess reader = Start(script, "EDITOR='sed -i -f edits'");
    EndNextWindow(reader); // ./run
    EndNextWindow(reader); // the duck
    ExpectGood(reader);
    ExpectMade(sClone,
               {"show.mp4", "sheet.png", "joined.mp4", "plot.svg", "still.png", "part.mp4"});
    EXPECT_EQ(ValueAtBar20("image:left"), "640,0\n");
    EXPECT_EQ(ValueAtBar20("flare:size"), "640,2\n");
}

TEST_F(Typed, RunRecordsWhereThereIsNoDisplay)
{
    const auto shortened = house::Shell(
        "sed -i 's/--sheet -o show-sheet.png/& --to 352/' run; grep -q -e '--to 352' run", sClone);
    ASSERT_EQ(shortened.mStatus, 0) << house::Transcript(shortened);
    test::cProcess viewer =
        Start("unset DISPLAY WAYLAND_DISPLAY; ./run", "VYR_RECORD_OPTIONS='--to 16'");
    ExpectGood(viewer);
    ExpectMade(sClone, {"show.mp4", "show-sheet.png"});
}

TEST_F(Typed, AuthoringPageEndsInARecording)
{
    test::cProcess author =
        Start("cmake --preset release\n" +
                  house::Script(VYR_SOURCE_DIR "/docs/authoring.md", {installation}),
              "");
    EndNextWindow(author, "Night");
    ExpectGood(author);
    ExpectMade(sClone.parent_path() / "home/night",
               {"plot.svg", "still.png", "sheet.png", "night.mp4"});
}
} // namespace
