#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

namespace
{
// Each program in a real window, started from a folder that is not its own.
class ExampleWindow : public testing::TestWithParam<const char *>
{
protected:
    // Runs it for a while, then ends it.
    test::cProcessResult RunFor(int seconds)
    {
        const std::string program = std::string(VYR_BINARY_DIR "/examples/example-") + GetParam();
        test::cProcess example({program}, mFolder.Path());
        std::this_thread::sleep_for(std::chrono::seconds(seconds));
        EXPECT_TRUE(example.IsRunning());
        example.Signal(SIGTERM);
        return example.Wait();
    }

    test::cTemporaryFolder mFolder;
};

TEST_P(ExampleWindow, OpensAndRunsUntilItIsEnded)
{
    test::cProcessResult result;
    for (int seconds : {2, 10, 40}) { // a busy machine takes longer to load everything
        result = RunFor(seconds);
        ASSERT_EQ(result.mSignal, SIGTERM) << result.mErrors;
        if (result.mOutput.find("Escape ends it.") != std::string::npos)
            return;
    }
    FAIL() << result.mOutput << result.mErrors;
}

std::string NameOf(const testing::TestParamInfo<const char *> &info)
{
    std::string name = info.param;
    std::erase(name, '-');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, ExampleWindow,
                         testing::Values("sprite", "movement", "object", "rgb-split",
                                         "feedback-blur", "signal-distort", "text", "show"),
                         NameOf);

TEST(ExampleWithoutADisplay, SaysSoAndFails)
{
    const std::string sprite = VYR_BINARY_DIR "/examples/example-sprite";
    const test::cProcessResult result =
        test::Run({"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", sprite});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_EQ(std::count(result.mErrors.begin(), result.mErrors.end(), '\n'), 1) << result.mErrors;
}
} // namespace
