#include "tests/support/Process.h"
#include "tests/support/Screen.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace
{
// Each program in a real window, started from a folder that is not its own.
class ExampleWindow : public testing::TestWithParam<const char *>
{
protected:
    test::cTemporaryFolder mFolder;
};

// "Text from a bitmap font. Escape ends it."
std::string TitleOf(const std::string &output)
{
    const size_t end = output.rfind(". Escape ends it.");
    const size_t line = output.rfind('\n', end);
    const size_t start = line == std::string::npos ? 0 : line + 1;
    return output.substr(start, end - start);
}

TEST_P(ExampleWindow, OpensAndRunsUntilItIsEnded)
{
    const std::string program = std::string(VYR_BINARY_DIR "/examples/example-") + GetParam();
    test::cProcess example({program}, mFolder.Path());
    test::WaitUntil([&] {
        return example.GetOutput().find("Escape ends it.") != std::string::npos ||
               !example.IsRunning();
    });
    test::cScreen screen;
    ASSERT_TRUE(example.IsRunning()) << example.Wait().mErrors;
    ASSERT_TRUE(screen.WaitForWindow(TitleOf(example.GetOutput()), example));
    for (int pass = 0; pass < 10; pass++)
        EXPECT_TRUE(screen.AnswersPing()) << pass;
    screen.PressEscape();
    const test::cProcessResult result = example.Wait();
    EXPECT_EQ(result.mStatus, 0) << result.mErrors;
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
