#include "tests/house/Shell.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace
{
const char *const playerSource = R"(#include "sync/data.h"
#include <cstdio>
int main()
{
    sync_device *device = sync_create_device("sync");
    const sync_track *track = sync_get_track(device, "duck:x");
    std::printf("%g\n", double(sync_get_val(track, 12.0)));
    sync_destroy_device(device);
}
)";

const char *const pictureSource = R"(#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "platform/Window.h"
#include <cstdio>
int main()
{
    vyr::platform::UseWindowSystem(vyr::platform::OffscreenWindowSystem());
    vyr::tSingleton<vyr::cRenderer>::CreateSingleton();
    auto &renderer = vyr::tSingleton<vyr::cRenderer>::GetSingleton();
    std::printf("%d\n", renderer.Init(64, 36, false) ? renderer.GetWidth() : 0);
    renderer.Shutdown();
}
)";

const char *const header = "cmake_minimum_required(VERSION 3.24)\nproject(guest LANGUAGES CXX)\n";
const std::string programs = "add_executable(player player.cpp)\n"
                             "target_link_libraries(player vyr::sync)\n"
                             "add_executable(picture picture.cpp)\n"
                             "target_link_libraries(picture vyr::engine)\n";

// Two programs of a project that knows vyr by `finding` only.
fs::path WriteGuest(const std::string &name, const std::string &finding,
                    const std::string &targets = programs)
{
    fs::path folder = house::FreshFolder(name);
    test::WriteFile(folder / "CMakeLists.txt", header + finding + targets);
    test::WriteFile(folder / "player.cpp", playerSource);
    test::WriteFile(folder / "picture.cpp", pictureSource);
    return folder;
}

const std::string configure = "cmake -S . -B build -G Ninja "
                              "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache ";

// One key-less track is 0 everywhere, and the window is as wide as asked for.
void ExpectProgramsRun(const fs::path &folder)
{
    const auto result = house::Shell("build/player; build/picture", folder);
    EXPECT_EQ(result.mOutput, "0\n64\n") << house::Transcript(result);
}

class Installed : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        sPrefix = house::FreshFolder("prefix");
        const auto result =
            house::Shell("cmake --install . --component development --prefix " + sPrefix.string(),
                         VYR_BINARY_DIR);
        ASSERT_EQ(result.mStatus, 0) << house::Transcript(result);
    }

    static std::string ConfigureWithPrefix()
    {
        return configure + "-DCMAKE_PREFIX_PATH=" + sPrefix.string();
    }

    static inline fs::path sPrefix;
};

TEST_F(Installed, TreeIsFoundAndProgramsBuildOnIt)
{
    const fs::path guest =
        WriteGuest("installed-guest", "find_package(vyr " VYR_VERSION " REQUIRED)\n");
    const auto result = house::Shell(ConfigureWithPrefix() + "; cmake --build build -j2", guest);
    ASSERT_EQ(result.mStatus, 0) << house::Transcript(result);
    ExpectProgramsRun(guest);
}

// The player stands on no OpenGL, no window and no pkg-config.
TEST_F(Installed, PlayerAloneAsksForNothingElse)
{
    const fs::path guest =
        WriteGuest("player-guest", "find_package(vyr REQUIRED COMPONENTS sync)\n",
                   "if(TARGET vyr::engine OR TARGET glfw OR PKG_CONFIG_FOUND)\n"
                   "    message(FATAL_ERROR \"too much\")\nendif()\n"
                   "add_executable(player player.cpp)\ntarget_link_libraries(player vyr::sync)\n");
    const auto result =
        house::Shell(ConfigureWithPrefix() + "; cmake --build build; build/player", guest);
    EXPECT_EQ(result.mStatus, 0) << house::Transcript(result);
}

TEST_F(Installed, UnknownComponentIsNamed)
{
    const fs::path guest =
        WriteGuest("wrong-guest", "find_package(vyr REQUIRED COMPONENTS sync opera)\n", "");
    const auto result = house::Shell(ConfigureWithPrefix(), guest);
    EXPECT_NE(result.mStatus, 0);
    EXPECT_NE(result.mErrors.find("opera"), std::string::npos) << house::Transcript(result);
}

TEST_F(Installed, EveryHeaderCompilesByItself)
{
    const auto result =
        house::Shell("for header in */*.h; do echo $header;"
                     "echo \"#include \\\"$header\\\"\" |"
                     "g++ -std=c++20 -Wall -Wextra -fsyntax-only -I . -x c++ -; done",
                     sPrefix / "include/vyr");
    EXPECT_EQ(result.mErrors, "");
    EXPECT_NE(result.mOutput.find("engine/Renderer.h"), std::string::npos);
}

const std::string night = "vyr_add_show(night SOURCES night.cpp TIMELINE night.txt DATA data)\n";

void CopyNight(const fs::path &guest)
{
    fs::copy(VYR_SOURCE_DIR "/examples/night", guest,
             fs::copy_options::recursive | fs::copy_options::skip_existing);
}

// As a part of another project vyr is its libraries, and what builds a show: no show of its own, no
// other tools, no tests. Not optimised, which takes less time.
TEST(Subdirectory, BuildsTheLibrariesThatAreUsedAndNothingElse)
{
    const fs::path guest = WriteGuest(
        "subdirectory-guest",
        "add_executable(vyr::vyr-tracks IMPORTED)\n"
        "set_target_properties(vyr::vyr-tracks PROPERTIES IMPORTED_LOCATION " VYR_BINARY_DIR
        "/bin/vyr-tracks)\n"
        "add_subdirectory(" VYR_SOURCE_DIR " vyr EXCLUDE_FROM_ALL)\n",
        programs + night);
    CopyNight(guest);
    const auto result =
        house::Shell(configure + "-DCMAKE_CXX_FLAGS=-O0; cmake --build build -j2", guest);
    ASSERT_EQ(result.mStatus, 0) << house::Transcript(result);
    ExpectProgramsRun(guest);
    EXPECT_FALSE(fs::exists(guest / "build/show"));
    EXPECT_FALSE(fs::exists(guest / "build/vyr/bin"));
    for (const char *file : {"night", "show.so", "data/moon.png", "sync_moon:x.track"})
        EXPECT_TRUE(fs::exists(guest / "build/night" / file)) << file;
    EXPECT_FALSE(fs::exists(guest / "build/vyr/tests"));
}

// A host without vyr-tracks gets it built: planned as a whole, compiled where that takes no time.
TEST(Subdirectory, BuildsTheCompilerOfTimelinesWhereThereIsNone)
{
    const fs::path guest = WriteGuest(
        "tracks-guest", "add_subdirectory(" VYR_SOURCE_DIR " vyr EXCLUDE_FROM_ALL)\n", night);
    CopyNight(guest);
    const auto result = house::Shell(
        configure + "-DCMAKE_CXX_FLAGS=-O0; cd build; ninja -t commands night;"
                    "objects() { echo vyr/tools/$1/CMakeFiles/$2.dir/$3.cpp.o; };"
                    "ninja $(objects support vyr_tools_support Nearest)"
                    "      $(objects timeline vyr_timeline Text) $(objects tracks vyr-tracks main)",
        guest);
    ASSERT_EQ(result.mStatus, 0) << house::Transcript(result);
    EXPECT_NE(result.mOutput.find("-o vyr/bin/vyr-tracks"), std::string::npos) << result.mOutput;
    EXPECT_EQ(result.mOutput.find("bin/vyr-record"), std::string::npos);
}

TEST(Subdirectory, OffersNoOtherTargets)
{
    const fs::path guest =
        WriteGuest("targets-guest", "add_subdirectory(" VYR_SOURCE_DIR " vyr)\n");
    const auto result =
        house::Shell(configure + ">/dev/null; ninja -C build -t targets all", guest);
    ASSERT_EQ(result.mStatus, 0) << house::Transcript(result);
    for (const char *target : {"demo:", "\nshow:", "vyr-record:", "vyr-check:", "sync-track:"})
        EXPECT_EQ(result.mOutput.find(target), std::string::npos) << target;
    EXPECT_NE(result.mOutput.find("libvyr_engine.a:"), std::string::npos);
}

// Nothing is built: what vyr would install is not there, and stops the installation.
TEST(Subdirectory, AddsNothingToTheInstallationOfItsHost)
{
    const fs::path guest = WriteGuest("install-guest", "add_subdirectory(" VYR_SOURCE_DIR " vyr)\n",
                                      "install(FILES player.cpp DESTINATION src)\n");
    const auto result =
        house::Shell(configure + "; cmake --install build --prefix out; ls out", guest);
    ASSERT_EQ(result.mStatus, 0) << house::Transcript(result);
    EXPECT_FALSE(fs::exists(guest / "out/include"));
    EXPECT_TRUE(fs::exists(guest / "out/src/player.cpp"));
}
} // namespace
