#include "tests/house/Shell.h"
#include "tests/support/Screen.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <sstream>

namespace fs = std::filesystem;

namespace
{
const char *const archiveName = "vyr-" VYR_VERSION "-Linux-" VYR_PROCESSOR;

// Both packages, made by the build as a user makes them, and unpacked without installing them.
class Package : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        sFolder = house::FreshFolder("packages");
        const auto result =
            house::Shell("cpack -G 'DEB;TGZ' -B " + sFolder.string(), VYR_BINARY_DIR);
        ASSERT_EQ(result.mStatus, 0) << house::Transcript(result);
        const auto unpacked = house::Shell("dpkg -x vyr_*.deb deb; mkdir 'a folder';"
                                           "tar xzf vyr-*.tar.gz -C 'a folder'",
                                           sFolder);
        ASSERT_EQ(unpacked.mStatus, 0) << house::Transcript(unpacked);
    }
    static void TearDownTestSuite() { fs::remove_all(sFolder); }

    static fs::path Deb() { return sFolder / "deb/usr"; }
    static fs::path Archive() { return sFolder / "a folder" / archiveName; }

    // Plays from a folder that has nothing to do with the show, until Escape.
    static void ExpectPlays(const fs::path &launcher)
    {
        test::cScreen screen;
        test::cProcess program({launcher.string()}, "/");
        ASSERT_TRUE(screen.WaitForWindow("Demo", program));
        screen.PressEscape();
        const test::cProcessResult result = program.Wait();
        screen.ReleaseEscape();
        EXPECT_EQ(result.mStatus, 0) << house::Transcript(result);
    }

    static inline fs::path sFolder;
};

TEST_F(Package, DebPlaysThroughItsLauncher) { ExpectPlays(Deb() / "bin/vyr"); }

TEST_F(Package, ArchivePlaysWhereverItWasUnpacked) { ExpectPlays(Archive() / "bin/vyr"); }

TEST_F(Package, LauncherFindsTheShowThroughALink)
{
    fs::create_symlink(Archive() / "bin/vyr", sFolder / "link");
    ExpectPlays(sFolder / "link");
}

TEST_F(Package, LauncherTakesNoArguments)
{
    const auto result = test::Run({Deb() / "bin/vyr", "loud"});
    EXPECT_EQ(result.mStatus, 2);
    EXPECT_EQ(result.mErrors, "vyr: plays the show and takes no arguments; Escape ends it\n");
}

TEST_F(Package, ToolsRunAndTellTheOneVersion)
{
    for (const fs::path &root : {Deb(), Archive()})
        for (const char *name : {"vyr", "vyr-new", "vyr-record", "vyr-tracks", "vyr-check",
                                 "vyr-studio", "vyr-farm"}) {
            const auto result = test::Run({root / "bin" / name, "--version"}, "/");
            EXPECT_EQ(result.mOutput, std::string(name) + " " VYR_VERSION "\n") << root;
        }
}

// What is packed is what was built: every file of the show's folder, and no other. Programs are
// packed without their symbols, and the note of where the build had its sources is of no use
// elsewhere.
TEST_F(Package, ShowIsTheBuiltOne)
{
    for (const fs::path &root : {Deb(), Archive()}) {
        const auto result = house::Shell("diff -rq --exclude=demo --exclude=show.so "
                                         "--exclude=show.sources " VYR_BINARY_DIR "/show "
                                         "lib/vyr/show; test -x lib/vyr/show/demo",
                                         root);
        EXPECT_EQ(result.mStatus, 0) << house::Transcript(result);
    }
}

// With the library that is packed beside them.
TEST_F(Package, ToolsOpenTheShow)
{
    for (const fs::path &root : {Deb(), Archive()}) {
        const auto result = house::Shell(
            "bin/vyr-tracks sample lib/vyr/show tunnel:pos 10s 10s 1; ldd bin/vyr-tracks", root);
        EXPECT_EQ(result.mStatus, 0) << house::Transcript(result);
        EXPECT_EQ(result.mOutput.find("row,value\n176,"), 0u) << house::Transcript(result);
        EXPECT_NE(result.mOutput.find((root / "bin/../lib/libvyr.so.1").string()),
                  std::string::npos)
            << house::Transcript(result);
    }
}

TEST_F(Package, MenuEntryNamesTheLauncherAndTheIcon)
{
    const std::string entry = test::ReadFile(Deb() / "share/applications/vyr.desktop");
    EXPECT_NE(entry.find("\nExec=vyr\n"), std::string::npos);
    EXPECT_NE(entry.find("\nIcon=vyr\n"), std::string::npos);
    EXPECT_TRUE(fs::exists(Deb() / "share/icons/hicolor/scalable/apps/vyr.svg"));
}

TEST_F(Package, EveryProgramHasItsManualPage)
{
    for (const fs::directory_entry &program : fs::directory_iterator(Deb() / "bin")) {
        const std::string page = program.path().filename().string() + ".1.gz";
        EXPECT_TRUE(fs::exists(Deb() / "share/man/man1" / page)) << page;
    }
}

TEST_F(Package, LicencesComeAlong)
{
    for (const char *name : {"copyright", "LICENSE", "LICENSE-content"})
        EXPECT_TRUE(fs::exists(Deb() / "share/doc/vyr" / name)) << name;
}

// The machine that built it can run it, so each dependency must be there; and what the program's
// own dynamic linker asks for must be covered, which dpkg-shlibdeps sees to.
TEST_F(Package, DebDependsOnPackagesThatExist)
{
    const auto result = house::Shell("dpkg-deb -f vyr_*.deb Depends", sFolder);
    std::istringstream list(result.mOutput);
    int count = 0;
    for (std::string item; std::getline(list, item, ','); count++) {
        const std::string name = item.substr(item.find_first_not_of(' '));
        const std::string package = name.substr(0, name.find_first_of(" \n"));
        EXPECT_EQ(test::Run({"dpkg-query", "-W", package}).mStatus, 0) << package;
    }
    EXPECT_GE(count, 8) << result.mOutput;
    for (const char *package : {"libglfw3", "libopenal1", "libmpg123-0", "libegl1", "libgl1"})
        EXPECT_NE(result.mOutput.find(package), std::string::npos) << package;
}
} // namespace
