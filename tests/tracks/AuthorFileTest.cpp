#include "tools/support/AuthorFile.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include <signal.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace
{
const char *const file = "timeline.txt";

class AuthorFile : public testing::Test
{
protected:
    std::string Replace(const std::string &before, const std::string &after)
    {
        std::string error;
        const bool isDone = tools::ReplaceAuthorFile(file, before, after, error);
        EXPECT_EQ(isDone, error.empty()) << error;
        return error;
    }

    static std::vector<std::string> Files()
    {
        std::vector<std::string> names;
        for (const fs::directory_entry &entry : fs::directory_iterator("."))
            names.push_back(entry.path().filename());
        return names;
    }

    test::cTemporaryFolder mFolder;
};

// Lets `child` go on to its next system call. False when it has ended.
bool StepToNextCall(pid_t child)
{
    int status = 0;
    return ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) == 0 &&
           waitpid(child, &status, 0) == child && WIFSTOPPED(status);
}

void Kill(pid_t child)
{
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

// A child that stops before the first system call of a replacement.
pid_t StartTraced(const std::string &before, const std::string &after)
{
    const pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        raise(SIGSTOP);
        std::string error;
        tools::ReplaceAuthorFile(file, before, after, error);
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    return child;
}

// A child that replaces the one by the other and back again, without end.
pid_t StartReplacing(const std::string &one, const std::string &other)
{
    const pid_t child = fork();
    while (child == 0) {
        std::string error;
        tools::ReplaceAuthorFile(file, one, other, error);
        tools::ReplaceAuthorFile(file, other, one, error);
    }
    return child;
}
} // namespace

TEST_F(AuthorFile, TakesTheNewBytesAndLeavesNothingBesideIt)
{
    test::WriteFile(file, "old");
    EXPECT_EQ(Replace("old", "new\n"), "");
    EXPECT_EQ(test::ReadFile(file), "new\n");
    EXPECT_THAT(Files(), testing::ElementsAre(file));
}

TEST_F(AuthorFile, IsNotReplacedWhereSomebodyElseHasWrittenToIt)
{
    test::WriteFile(file, "theirs");
    EXPECT_THAT(Replace("old", "new"),
                HasSubstr("timeline.txt: has been changed by another program meanwhile"));
    EXPECT_EQ(test::ReadFile(file), "theirs");
    EXPECT_THAT(Files(), testing::ElementsAre(file));
}

TEST_F(AuthorFile, KeepsItsMode)
{
    test::WriteFile(file, "old");
    chmod(file, 0640);
    Replace("old", "new");
    struct stat status;
    ASSERT_EQ(stat(file, &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(AuthorFile, ASymbolicLinkStaysOne)
{
    test::WriteFile("far/away.txt", "old");
    fs::create_symlink("far/away.txt", file);
    EXPECT_EQ(Replace("old", "new"), "");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(test::ReadFile("far/away.txt"), "new");
}

TEST_F(AuthorFile, WhatIsNoFileOrCannotBeWrittenIsRefused)
{
    EXPECT_THAT(Replace("", "new"), HasSubstr("timeline.txt: No such file"));
    fs::create_directory(file);
    EXPECT_NE(Replace("", "new"), "");
    EXPECT_THAT(Files(), testing::ElementsAre(file));
}

TEST_F(AuthorFile, WhatAKilledProgramHasLeftIsUsedUp)
{
    test::WriteFile(file, "old");
    test::WriteFile(".timeline.txt.vyr-new", std::string(1000, 'x'));
    EXPECT_EQ(Replace("old", "new"), "");
    EXPECT_EQ(test::ReadFile(file), "new");
    EXPECT_THAT(Files(), testing::ElementsAre(file));
}

// Killed before each system call in turn, until none is left.
TEST_F(AuthorFile, AKillAtAnyCallLeavesTheOldBytesOrTheNewOnes)
{
    const std::string before = "the old text\n", after = "the new text, which is longer\n";
    int kills = 0, old = 0, fresh = 0;
    for (int round = 0; kills < 250; round++) {
        bool isRunning = true;
        for (int calls = 1; isRunning; calls++) {
            test::WriteFile(file, before);
            const pid_t child = StartTraced(before, after);
            for (int i = 0; i < calls && isRunning; i++)
                isRunning = StepToNextCall(child);
            if (isRunning)
                Kill(child);
            const std::string now = test::ReadFile(file);
            ASSERT_TRUE(now == before || now == after) << calls << ": " << now;
            old += isRunning && now == before;
            fresh += isRunning && now == after;
            kills += isRunning;
        }
    }
    EXPECT_GT(old, 0);
    EXPECT_GT(fresh, 0);
}

// A large text, whose writing takes its time, and a kill at any moment of it.
TEST_F(AuthorFile, AKillAtAnyMomentLeavesTheOldBytesOrTheNewOnes)
{
    const std::string one(500'000, 'a'), other(400'000, 'b');
    std::mt19937 random(3);
    test::WriteFile(file, one);
    for (int kills = 0; kills < 250; kills++) {
        std::string now = test::ReadFile(file);
        const pid_t child = now == one ? StartReplacing(one, other) : StartReplacing(other, one);
        for (volatile auto spin = random() % 3'000'000; spin > 0;)
            spin = spin - 1;
        Kill(child);
        now = test::ReadFile(file);
        ASSERT_TRUE(now == one || now == other) << now.size();
    }
}
