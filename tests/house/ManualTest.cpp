#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <set>

namespace
{
using Options = std::set<std::string>;

Options LongOptions(const std::string &text)
{
    Options options;
    for (std::size_t i = text.find("--"), end; i != std::string::npos; i = text.find("--", end)) {
        end = text.find_first_not_of("-abcdefghijklmnopqrstuvwxyz", i);
        options.insert(text.substr(i, end - i));
    }
    options.erase("--"); // a dash of the prose
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
    std::string page = test::ReadFile(VYR_SOURCE_DIR "/packaging/man/" + program + ".1.in");
    std::erase(page, '\\');
    return page;
}

TEST(Manual, RecorderPageNamesTheOptionsThatItHas)
{
    EXPECT_EQ(LongOptions(PageOf("vyr-record")), LongOptions(HelpOf("vyr-record", {})));
}

TEST(Manual, CheckPageNamesTheOptionsThatItHas)
{
    EXPECT_EQ(LongOptions(PageOf("vyr-check")), LongOptions(HelpOf("vyr-check", {})));
}

TEST(Manual, NewPageNamesTheOptionsThatItHas)
{
    EXPECT_EQ(LongOptions(PageOf("vyr-new")), LongOptions(HelpOf("vyr-new", {})));
}

TEST(Manual, StudioPageNamesTheOptionsThatItHas)
{
    EXPECT_EQ(LongOptions(PageOf("vyr-studio")), LongOptions(HelpOf("vyr-studio", {})));
}

TEST(Manual, FarmPageNamesTheOptionsOfAllCommands)
{
    std::string help = HelpOf("vyr-farm", {});
    for (const char *command : {"slurm", "parallel", "plan", "piece", "missing", "join"})
        help += HelpOf("vyr-farm", {command});
    EXPECT_EQ(LongOptions(PageOf("vyr-farm")), LongOptions(help));
}

TEST(Manual, TracksPageNamesTheOptionsOfAllCommands)
{
    std::string help = HelpOf("vyr-tracks", {});
    for (const char *command : {"compile", "edit", "dump", "sample", "plot", "captions"})
        help += HelpOf("vyr-tracks", {command});
    EXPECT_EQ(LongOptions(PageOf("vyr-tracks")), LongOptions(help));
}
} // namespace
