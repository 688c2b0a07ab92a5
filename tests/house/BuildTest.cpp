#include "tests/house/Clone.h"
#include "tests/house/Shell.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace
{
const std::string useSetup = ". scripts/setup.sh; ";

// build/ may have been made by hand, and CMake's own choice is another generator than the presets'.
class Configured : public testing::TestWithParam<const char *>
{};

TEST_P(Configured, FolderKeepsItsGeneratorAndTakesThePreset)
{
    const fs::path clone = house::MakeClone("generator-clone");
    const std::string generator = GetParam();
    const auto result = house::Shell(
        "cmake -B build -G '" + generator + "';" + useSetup + "configure_and_build release", clone);
    ASSERT_EQ(result.mStatus, 0) << house::Transcript(result);
    const std::string cache = test::ReadFile(clone / "build/CMakeCache.txt");
    EXPECT_NE(cache.find("CMAKE_GENERATOR:INTERNAL=" + generator + "\n"), std::string::npos);
    EXPECT_NE(cache.find("=Release\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(By, Configured, testing::Values("Unix Makefiles", "Ninja"));

// A line a tenth, however the generator counts, and the whole output for whoever looks for a fault.
TEST(Progress, IsALineATenthOfTheBuild)
{
    const fs::path root = house::FreshFolder("progress");
    const std::string setup = ". " VYR_SOURCE_DIR "/scripts/setup.sh; ";
    const auto ninja = house::Shell(
        setup + "seq -f '[%g/40] Building' 1 9 | log_steps build.log; wc -l <build.log", root);
    EXPECT_EQ(ninja.mErrors, "  built: 10 %\n  built: 20 %\n") << house::Transcript(ninja);
    EXPECT_EQ(ninja.mOutput, "9\n");
    const auto make =
        house::Shell(setup + "printf '%s\n' '[  9%] A' 'gcc' '[ 31%] B' | log_steps log", root);
    EXPECT_EQ(make.mErrors, "  built: 31 %\n") << house::Transcript(make);
}

// What the build runs for the tracks of a timeline, in a folder of the test's own.
class Tracks : public testing::Test
{
protected:
    Tracks() { test::WriteFile(mTimeline, "tracks a:x a:y # two\n  tracks b\ntracks c\n"); }

    test::cProcessResult Build() const
    {
        return house::Shell("cmake -DCOMPILER=" VYR_BINARY_DIR "/bin/vyr-tracks"
                            " -DTIMELINE=timeline.txt -DRECORD=tracks.made -DFOLDER=" +
                                mFolder.string() +
                                " -P " VYR_SOURCE_DIR "/cmake/CompileMissing.cmake",
                            mRoot);
    }
    void BuildWell() const
    {
        const auto result = Build();
        ASSERT_EQ(result.mStatus, 0) << house::Transcript(result);
        EXPECT_EQ(result.mErrors, "");
    }
    fs::path Track(const std::string &name) const { return mFolder / ("sync_" + name + ".track"); }

    const fs::path mRoot = house::FreshFolder("tracks");
    const fs::path mTimeline = mRoot / "timeline.txt", mFolder = mRoot / "show";
};

TEST_F(Tracks, AreMadeWhereThereIsNoFolder)
{
    BuildWell();
    for (const char *name : {"a:x", "a:y", "b", "c"})
        EXPECT_TRUE(fs::exists(Track(name))) << name;
}

TEST_F(Tracks, AnyOneThatIsMissingComesBack)
{
    BuildWell();
    for (const char *name : {"a:x", "a:y", "b", "c"}) {
        fs::remove(Track(name));
        BuildWell();
        EXPECT_TRUE(fs::exists(Track(name))) << name;
    }
}

TEST_F(Tracks, StayUntouchedUntilTheTimelineChanges)
{
    BuildWell();
    const auto before = fs::last_write_time(Track("b"));
    BuildWell();
    EXPECT_EQ(fs::last_write_time(Track("b")), before);
    fs::last_write_time(mTimeline, fs::file_time_type::clock::now());
    BuildWell();
    EXPECT_NE(fs::last_write_time(Track("b")), before);
}

// As after a switch to another branch. What the build did not make is not its to remove.
TEST_F(Tracks, ThatTheTimelineDeclaresNoMoreAreRemoved)
{
    BuildWell();
    test::WriteFile(Track("own"), "somebody's");
    test::WriteFile(mTimeline, "tracks a:x b\n");
    BuildWell();
    EXPECT_TRUE(fs::exists(Track("a:x")));
    EXPECT_TRUE(fs::exists(Track("b")));
    EXPECT_FALSE(fs::exists(Track("a:y")));
    EXPECT_FALSE(fs::exists(Track("c")));
    EXPECT_TRUE(fs::exists(Track("own")));
    BuildWell();
    EXPECT_TRUE(fs::exists(Track("own")));
}

// The same for what is copied.
TEST(Copies, OfFilesThatAreNoMoreAreRemoved)
{
    const fs::path root = house::FreshFolder("copies");
    test::WriteFile(root / "CMakeLists.txt",
                    "cmake_minimum_required(VERSION 3.24)\nproject(copies LANGUAGES NONE)\n"
                    "include(" VYR_SOURCE_DIR "/cmake/RemoveUnmade.cmake)\n"
                    "file(GLOB files RELATIVE ${CMAKE_SOURCE_DIR}/from from/*)\n"
                    "file(COPY from/ DESTINATION ${CMAKE_SOURCE_DIR}/to)\n"
                    "remove_unmade(${CMAKE_BINARY_DIR}/made ${CMAKE_SOURCE_DIR}/to ${files})\n");
    fs::create_directories(root / "from");
    fs::create_directories(root / "to");
    for (const char *file : {"from/a b.png", "from/c.png", "to/own.png"})
        test::WriteFile(root / file, "picture");
    const auto configure = [&] { return house::Shell("cmake -B build", root).mOutput; };
    EXPECT_EQ(configure().find("no longer made"), std::string::npos);
    fs::remove(root / "from/a b.png");
    EXPECT_NE(configure().find("no longer made, so removed: " + (root / "to/a b.png").string()),
              std::string::npos);
    EXPECT_FALSE(fs::exists(root / "to/a b.png"));
    EXPECT_TRUE(fs::exists(root / "to/c.png"));
    EXPECT_TRUE(fs::exists(root / "to/own.png"));
    EXPECT_EQ(configure().find("no longer made"), std::string::npos);
}

TEST_F(Tracks, FaultyTimelineStopsTheBuildAndNamesTheLine)
{
    test::WriteFile(mTimeline, "tracks a\n1 2\n");
    const auto result = Build();
    EXPECT_NE(result.mStatus, 0);
    EXPECT_NE(result.mErrors.find("timeline.txt:2:"), std::string::npos)
        << house::Transcript(result);
}
} // namespace
