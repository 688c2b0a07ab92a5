#include "show/ShowFolder.h"

#include "tests/show/BrokenShow.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
std::string ErrorOf(const std::function<void()> &call)
{
    try {
        call();
    } catch (const vyr::cShowError &error) {
        return error.what();
    }
    return "no error";
}

std::string ErrorOfOpening(const fs::path &folder)
{
    return ErrorOf([&] { vyr::cShowFolder show(folder); });
}

class ShowFolder : public testing::Test
{
protected:
    ~ShowFolder() override { unsetenv("VYR_BROKEN"); }
    static void Break(const char *how) { setenv("VYR_BROKEN", how, 1); }

    test::cTemporaryFolder mFolder;
};

TEST_F(ShowFolder, OpensAShowAndHasItsDescription)
{
    test::WriteBrokenShow("a show, \xc3\xbc"
                          "ber");
    ASSERT_TRUE(vyr::IsShowFolder("a show, \xc3\xbc"
                                  "ber"));
    const vyr::cShowFolder show("a show, \xc3\xbc"
                                "ber");
    EXPECT_EQ(show.GetDescription().mTitle, "Broken");
    EXPECT_EQ(show.GetDescription().mTracks.size(), 2u);
}

TEST_F(ShowFolder, WhatIsNoneIsNamedWithTheReason)
{
    EXPECT_EQ(ErrorOfOpening("nowhere"), "nowhere/show.so: not there, so this is no show's folder");
    fs::create_directories("folder/show.so");
    EXPECT_EQ(ErrorOfOpening("folder"), "folder/show.so: not a file");
    test::WriteFile("text/show.so", "no library at all, but as long as the beginning of one is: "
                                    "sixty-four bytes and a few more");
    EXPECT_EQ(ErrorOfOpening("text"), "text/show.so: not a library");
    test::WriteFile("short/show.so", "\x7f"
                                     "ELF");
    EXPECT_EQ(ErrorOfOpening("short"), "short/show.so: not a library");
    test::WriteBrokenShow("none", "NoShow");
    EXPECT_EQ(ErrorOfOpening("none"),
              "none/show.so: no show in it: VYR_SHOW stands in none of its sources");
}

// Not made: that would end this test.
TEST_F(ShowFolder, AnotherInterfaceIsRefused)
{
    test::WriteBrokenShow("other", "OtherVersion");
    EXPECT_THAT(ErrorOfOpening("other"),
                StartsWith("other/show.so: made for version 999 of the interface of shows, and "
                           "this program has version "));
}

TEST_F(ShowFolder, AnotherMachineIsTold)
{
    test::WriteBrokenShow("foreign");
    std::string library = test::ReadFile("foreign/show.so");
    library[18] = char(library[18] + 1); // e_machine
    test::WriteFile("foreign/show.so", library);
    EXPECT_EQ(ErrorOfOpening("foreign"), "foreign/show.so: a library for another kind of machine");
}

TEST_F(ShowFolder, AFaultyDescriptionIsRefused)
{
    test::WriteBrokenShow("show");
    for (const auto &[how, what] :
         {std::pair("no tracks", "no tracks"), std::pair("no music", "no music"),
          std::pair("no tempo", "no tempo"), std::pair("a track twice", "'height' is named twice"),
          std::pair("a choice for no track", "'pack': no track"),
          std::pair("a file outside", "not a path under"),
          std::pair("throw in Describe", "thrown on purpose"),
          std::pair("throw a number in Describe", "no std::exception")}) {
        Break(how);
        EXPECT_THAT(ErrorOfOpening("show"), StartsWith("show/show.so: ")) << how;
        EXPECT_THAT(ErrorOfOpening("show"), HasSubstr(what)) << how;
    }
}

TEST_F(ShowFolder, TracksWithoutFilesAreZero)
{
    test::WriteBrokenShow(".");
    fs::remove("sync_height.track");
    vyr::cShowFolder show(".");
    show.LoadTracks();
    EXPECT_EQ(sync_get_val(&show.GetTrack(0), 100), 0.0f);
    EXPECT_EQ(show.FindTrack("height"), &show.GetTrack(0));
    EXPECT_EQ(show.FindTrack("width"), nullptr);
}

TEST_F(ShowFolder, WhatAShowThrowsSaysWhere)
{
    test::WriteBrokenShow(".");
    vyr::cShowFolder show(".");
    show.LoadTracks();
    show.Load();
    show.Draw(99, 0);
    Break("throw in Load");
    EXPECT_EQ(ErrorOf([&] { show.Load(); }), "show.so: Load: thrown on purpose");
    Break("throw in Draw");
    EXPECT_EQ(ErrorOf([&] { show.Draw(100, 0); }), "show.so: Draw at row 100: thrown on purpose");
}
} // namespace
