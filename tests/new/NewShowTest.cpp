#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
class NewShow : public testing::Test
{
protected:
    static test::cProcessResult Run(std::vector<std::string> words,
                                    const std::vector<std::string> &environment = {})
    {
        words.insert(words.begin(), VYR_BINARY_DIR "/bin/vyr-new");
        return test::Run(words, fs::current_path(), environment);
    }

    static std::set<std::string> Files()
    {
        std::set<std::string> files;
        for (const auto &entry : fs::recursive_directory_iterator("."))
            files.insert(entry.path().string());
        return files;
    }

    static void ExpectRefusal(const std::vector<std::string> &words, const std::string &what,
                              int status = 2, const std::vector<std::string> &environment = {})
    {
        const auto before = Files();
        const auto result = Run(words, environment);
        EXPECT_EQ(result.mStatus, status) << what;
        EXPECT_THAT(result.mErrors, HasSubstr(what));
        EXPECT_EQ(std::ranges::count(result.mErrors, '\n'), 1) << result.mErrors;
        EXPECT_EQ(Files(), before) << what;
    }

    test::cTemporaryFolder mFolder;
};

// The show of the examples is what it writes: text for text, and the same files in data/.
TEST_F(NewShow, IsTheOneOfTheExamples)
{
    const auto result = Run({"night"});
    ASSERT_EQ(result.mStatus, 0) << result.mErrors;
    EXPECT_THAT(result.mOutput, StartsWith("Now: cd night && cmake "));
    const fs::path example = VYR_SOURCE_DIR "/examples/night";
    std::set<std::string> names;
    for (const auto &entry : fs::recursive_directory_iterator(example))
        if (entry.is_regular_file())
            names.insert(fs::relative(entry.path(), example).string());
    EXPECT_GE(names.size(), 10u);
    for (const std::string &name : names) {
        ASSERT_TRUE(fs::exists("night/" + name)) << name;
        const std::string extension = fs::path(name).extension().string();
        if (extension != ".png" && extension != ".mp3") { // ffmpeg's own versions differ
            EXPECT_EQ(test::ReadFile("night/" + name), test::ReadFile(example / name)) << name;
        }
    }
}

TEST_F(NewShow, TakesItsTitleAndItsTempo)
{
    fs::create_directory("second"); // empty: no obstacle
    const auto result = Run({"second", "--title", "So \"be\" it\\", "--tempo", "92.5"});
    ASSERT_EQ(result.mStatus, 0) << result.mErrors;
    const std::string source = test::ReadFile("second/second.cpp");
    EXPECT_THAT(source, HasSubstr("class cSecond : public vyr::cShow"));
    EXPECT_THAT(source, HasSubstr("show.mTitle = \"So \\\"be\\\" it\\\\\";"));
    EXPECT_THAT(source, HasSubstr("beatsPerMinute = 92.5;"));
    EXPECT_THAT(test::ReadFile("second/second.txt"), HasSubstr("\ntempo 92.5 8 4\n"));
}

TEST_F(NewShow, WhatCannotBeIsOneLineAndNothingIsWritten)
{
    test::WriteFile("full/something", "here");
    test::WriteFile("file", "no folder");
    ExpectRefusal({"full"}, "full: not empty");
    ExpectRefusal({"file"}, "file: is there, and no folder");
    for (const char *name : {"two words", "9lives", "na\xc3\xafve", "a-b", "", "/", "."})
        ExpectRefusal({std::string("x/../") + name},
                      name[0] == '.' ? "" : "is no name for a program");
    ExpectRefusal({std::string(61, 'a')}, "is no name for a program");
    ExpectRefusal({"test"}, "the build has a 'test' of its own");
    for (const char *tempo : {"fast", "", "0", "-120", "nan", "1e9", "120bpm"})
        ExpectRefusal({"night", "--tempo", tempo}, "--tempo");
    ExpectRefusal({"night", "--title", "two\nlines"}, "control characters");
    ExpectRefusal({"no/such/parent/night"}, "can't be written", 1);
    ExpectRefusal({"night"}, "ffmpeg", 1, {"PATH=/nowhere"});
}
} // namespace
