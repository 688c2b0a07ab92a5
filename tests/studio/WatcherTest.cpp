#include "studio/Watcher.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;
using studio::cWatcher;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
/// A file that is watched; the test moves the time.
class Watcher : public testing::Test
{
protected:
    Watcher() : mFile(fs::current_path() / "file.txt")
    {
        test::WriteFile(mFile, "first");
        mWatcher.Watch({mFile});
    }

    /// What has changed once everything has been quiet for a moment.
    std::vector<fs::path> Changes()
    {
        std::vector<fs::path> changes = mWatcher.TakeChanges(mNow);
        mNow += 2.0 * cWatcher::kQuietSeconds;
        for (const fs::path &file : mWatcher.TakeChanges(mNow))
            changes.push_back(file);
        return changes;
    }

    test::cTemporaryFolder mFolder;
    const fs::path mFile;
    cWatcher mWatcher;
    double mNow = 1000.0;
};

TEST_F(Watcher, FileWrittenInPlaceHasChangedOnce)
{
    EXPECT_THAT(Changes(), IsEmpty());
    test::WriteFile(mFile, "second");
    EXPECT_THAT(Changes(), ElementsAre(mFile));
    EXPECT_THAT(Changes(), IsEmpty());
}

TEST_F(Watcher, FileReplacedByRenameHasChanged)
{
    for (const char *bytes : {"second", "third"}) { // the folder is watched, not the file
        test::WriteFile("other", bytes);
        fs::rename("other", mFile);
        EXPECT_THAT(Changes(), ElementsAre(mFile));
    }
}

// As some editors do: the old file goes aside, a new one is written under its name.
TEST_F(Watcher, FileMovedAsideAndWrittenAnewHasChangedOnce)
{
    fs::rename(mFile, "file.txt~");
    EXPECT_THAT(Changes(), IsEmpty()); // not gone yet
    test::WriteFile(mFile, "second");
    EXPECT_THAT(Changes(), ElementsAre(mFile));
    fs::remove("file.txt~");
    EXPECT_THAT(Changes(), IsEmpty());
}

TEST_F(Watcher, SameBytesAreNoChange)
{
    test::WriteFile(mFile, "first");
    EXPECT_THAT(Changes(), IsEmpty());
}

// Half a file never counts, however long its writer takes.
TEST_F(Watcher, FileThatIsBeingWrittenHasNotChangedYet)
{
    const int handle = open(mFile.c_str(), O_WRONLY | O_TRUNC);
    ASSERT_GE(handle, 0);
    EXPECT_THAT(Changes(), IsEmpty());
    ASSERT_EQ(write(handle, "sec", 3), 3);
    mNow += 0.3;
    EXPECT_THAT(Changes(), IsEmpty());
    ASSERT_EQ(write(handle, "ond", 3), 3);
    close(handle);
    EXPECT_THAT(Changes(), ElementsAre(mFile));
}

TEST_F(Watcher, WhatItsOwnerHasWrittenIsKnown)
{
    test::WriteFile(mFile, "own");
    mWatcher.Note(mFile);
    EXPECT_THAT(Changes(), IsEmpty());
    test::WriteFile(mFile, "own too");
    mWatcher.Note(mFile);
    test::WriteFile(mFile, "another's"); // in the same moment
    EXPECT_THAT(Changes(), ElementsAre(mFile));
}

TEST_F(Watcher, FileThatStaysAwayHasChanged)
{
    fs::remove(mFile);
    EXPECT_THAT(Changes(), IsEmpty());
    mNow += cWatcher::kGoneSeconds;
    EXPECT_THAT(Changes(), ElementsAre(mFile));
    test::WriteFile(mFile, "first");
    EXPECT_THAT(Changes(), ElementsAre(mFile));
}

TEST_F(Watcher, SymbolicLinkChangesWithWhatItPointsTo)
{
    fs::create_directory("elsewhere");
    test::WriteFile("elsewhere/real.txt", "first");
    const fs::path link = fs::current_path() / "link.txt";
    fs::create_symlink("elsewhere/real.txt", link);
    mWatcher.Watch({link});
    test::WriteFile("elsewhere/real.txt", "second");
    EXPECT_THAT(Changes(), ElementsAre(link));
    test::WriteFile("elsewhere/other.txt", "third");
    fs::remove(link);
    fs::create_symlink("elsewhere/other.txt", link);
    EXPECT_THAT(Changes(), ElementsAre(link));
}

TEST_F(Watcher, SeveralFilesChangeTogether)
{
    std::vector<fs::path> files;
    for (int i = 0; i < 20; i++) {
        files.push_back(fs::current_path() / ("part" + std::to_string(10 + i)));
        test::WriteFile(files.back(), "first");
    }
    mWatcher.Watch(files);
    for (const fs::path &file : files) // as a checkout does
        fs::remove(file);
    for (const fs::path &file : files)
        test::WriteFile(file, "second");
    EXPECT_EQ(Changes(), files);
}

TEST_F(Watcher, ThousandSavesEndInTheLast)
{
    std::string known = "first";
    for (int i = 0; i < 1000; i++) {
        test::WriteFile(mFile, "save " + std::to_string(i));
        mNow += 0.05; // 20 in a second
        if (!mWatcher.TakeChanges(mNow).empty())
            known = test::ReadFile(mFile);
    }
    if (!Changes().empty())
        known = test::ReadFile(mFile);
    EXPECT_EQ(known, "save 999");
    EXPECT_FALSE(mWatcher.IsBusy());
}

// Where no events come, as from a file system of a network, or of a folder that has come back.
TEST_F(Watcher, FolderThatGoesAndComesBackIsWatchedAgain)
{
    fs::create_directory("folder");
    const fs::path file = fs::current_path() / "folder/file";
    test::WriteFile(file, "first");
    mWatcher.Watch({file});
    fs::rename("folder", "away");
    fs::create_directory("folder");
    test::WriteFile(file, "second");
    mWatcher.TakeChanges(mNow);
    mNow += 2.0 * cWatcher::kLookSeconds;
    EXPECT_THAT(mWatcher.TakeChanges(mNow), ElementsAre(file));
    test::WriteFile(file, "third");
    EXPECT_THAT(Changes(), ElementsAre(file));
}
} // namespace
