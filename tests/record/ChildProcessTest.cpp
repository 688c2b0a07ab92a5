#include "tools/record/ChildProcess.h"
#include "tests/support/Wait.h"
#include "tools/record/Failure.h"

#include <gmock/gmock.h>

using record::cChildProcess;
using record::cFailure;

namespace
{
// Asks again and again, as a recording does with each frame, until there is something to say.
std::string FirstComplaint(cChildProcess &program)
{
    std::string complaint = "none";
    test::WaitUntil([&] {
        try {
            program.Check();
            return false;
        } catch (const cFailure &failure) {
            complaint = failure.what();
            return true;
        }
    });
    return complaint;
}

TEST(ChildProcess, IsAskedWhileItRunsWithoutWaiting)
{
    cChildProcess program({"cat"}, true);
    EXPECT_NO_THROW(program.Check()); // would wait for ever: its input is open
    EXPECT_TRUE(program.Write("text", 4));
    EXPECT_NO_THROW(program.Finish());
    EXPECT_NO_THROW(program.Check());
}

TEST(ChildProcess, SaysBeforeItIsWaitedForThatItFailed)
{
    cChildProcess program({"sh", "-c", "echo first >&2; echo went away >&2; exit 9"}, false);
    EXPECT_EQ(FirstComplaint(program), "sh: went away");
    EXPECT_THROW(program.Finish(), cFailure); // and says so again
}

// What came of a full disk tells nobody that the disk is full.
TEST(ChildProcess, NamesWhatTheSystemRefusedBeforeWhatCameOfIt)
{
    cChildProcess program(
        {"sh", "-c", "echo 'header: No space left on device' >&2; echo gave up >&2; exit 9"},
        false);
    EXPECT_EQ(FirstComplaint(program), "sh: header: No space left on device");
}

TEST(ChildProcess, NamesTheSignalThatEndedIt)
{
    cChildProcess program({"sh", "-c", "kill -9 $$"}, false);
    EXPECT_EQ(FirstComplaint(program), "sh: ended by signal 9");
}
} // namespace
