// The show with memory short at one allocation after the other, from its start to its end: it stops
// in an orderly way or plays on with what it has; it never runs into what it did not get.

#include "tests/faults/Faults.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>

namespace
{
const long triedByDefault = 24; // of some thousands; all of them with VYR_ALL_FAULTS

class MemoryFaults : public testing::Test
{
protected:
    MemoryFaults() { faults::WriteShowWithEverythingOn(mFolder.Path()); }

    test::cProcessResult PlayShortAt(long allocation) const
    {
        test::cProcess program({VYR_SCRIPTED_DEMO}, mFolder.Path(),
                               {"VYR_TEST_ROWS=0,10,3624", "LD_PRELOAD=" VYR_SHORT_MEMORY,
                                "VYR_SHORT_AT=" + std::to_string(allocation)});
        return program.Wait();
    }

    test::cTemporaryFolder mFolder;
};

long CountIn(const std::string &errors)
{
    long count = 0;
    const size_t place = errors.find("allocations: ");
    if (place != std::string::npos)
        std::sscanf(errors.c_str() + place, "allocations: %ld", &count);
    return count;
}

// Without memory for its track device the show ends with a status, and no message.
bool HasEnded(const test::cProcessResult &result) { return result.mStatus == 255; }

bool HasStopped(const test::cProcessResult &result)
{
    return result.mSignal == SIGABRT &&
           (result.mErrors.find("Assertion failed: ") != std::string::npos ||
            result.mErrors.find("std::bad_alloc") != std::string::npos);
}

TEST_F(MemoryFaults, EachAllocationStopsTheShowOrItPlaysOn)
{
    const test::cProcessResult whole = PlayShortAt(0);
    ASSERT_EQ(whole.mStatus, 0) << whole.mErrors;
    const long count = CountIn(whole.mErrors);
    ASSERT_GT(count, 100) << whole.mErrors;
    const long step = faults::WantsAll() ? 1 : count / triedByDefault;
    int stopped = 0, played = 0;
    for (long allocation = 1; allocation <= count; allocation += step) {
        const test::cProcessResult result = PlayShortAt(allocation);
        const bool hasPlayed = !result.mTimedOut && result.mStatus == 0;
        EXPECT_TRUE(hasPlayed || HasEnded(result) || HasStopped(result))
            << "allocation " << allocation << ": status " << result.mStatus << ", signal "
            << result.mSignal << (result.mTimedOut ? ", hung" : "") << "\n"
            << result.mErrors;
        (hasPlayed ? played : stopped)++;
    }
    std::printf("%d of %ld allocations short: stopped %d times, played on %d times\n",
                stopped + played, count, stopped, played);
}
} // namespace
