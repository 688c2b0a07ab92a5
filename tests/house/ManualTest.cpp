#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace
{
using Options = std::set<std::string>;

Options LongOptions(const std::string &text)
{
    const std::regex option("--[a-z][a-z-]*");
    Options options;
    for (std::sregex_iterator i(text.begin(), text.end(), option), end; i != end; ++i)
        options.insert(i->str());
    return options;
}

std::string HelpOf(const std::string &program, const std::vector<std::string> &arguments)
{
    std::vector<std::string> command{VYR_BINARY_DIR "/bin/" + program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    command.push_back("--help");
    return test::Run(command).mOutput;
}

// A manual page writes a dash of an option as \-.
std::string PageOf(const std::string &program)
{
    const std::string source = test::ReadFile(VYR_SOURCE_DIR "/packaging/man/" + program + ".1.in");
    return std::regex_replace(source, std::regex("\\\\-"), "-");
}

TEST(Manual, RecorderPageNamesTheOptionsThatItHas)
{
    EXPECT_EQ(LongOptions(PageOf("vyr-record")), LongOptions(HelpOf("vyr-record", {})));
}

TEST(Manual, CheckPageNamesTheOptionsThatItHas)
{
    EXPECT_EQ(LongOptions(PageOf("vyr-check")), LongOptions(HelpOf("vyr-check", {})));
}

TEST(Manual, TracksPageNamesTheOptionsOfAllCommands)
{
    std::string help = HelpOf("vyr-tracks", {});
    for (const char *command : {"compile", "dump", "sample", "plot", "captions"})
        help += HelpOf("vyr-tracks", {command});
    EXPECT_EQ(LongOptions(PageOf("vyr-tracks")), LongOptions(help));
}
} // namespace
