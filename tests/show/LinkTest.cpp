// VYR_SHOW stands once in a show's sources: otherwise the show does not link, and the linker says
// so.

#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
const char *const source = R"(#include "show/Show.h"
namespace
{
struct cOne : vyr::cShow
{
    vyr::cShowDescription Describe() const override { return {}; }
    void Load() override {}
    void Draw(double, double) override {}
};
}
)";

// As vyr_make_show_library links.
test::cProcessResult Link(const std::string &first, const std::string &second)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("first.cpp", first);
    test::WriteFile("second.cpp", second);
    return test::Run({"c++", "-std=c++20", "-shared", "-fPIC", "-I", VYR_SOURCE_DIR, "first.cpp",
                      "second.cpp", "-L", VYR_BINARY_DIR "/lib", "-lvyr",
                      "-Wl,--require-defined=vyr_create_show", "-o", "show.so"});
}

TEST(ShowLibrary, LinksWithOneShow)
{
    const auto result = Link(std::string(source) + "VYR_SHOW(cOne);\n", "\n");
    EXPECT_EQ(result.mStatus, 0) << result.mErrors;
}

TEST(ShowLibrary, TwoShowsDoNotLink)
{
    const auto result =
        Link(std::string(source) + "VYR_SHOW(cOne);\n", std::string(source) + "VYR_SHOW(cOne);\n");
    EXPECT_NE(result.mStatus, 0);
    EXPECT_THAT(result.mErrors, testing::HasSubstr("multiple definition of `vyr_create_show'"));
}

TEST(ShowLibrary, NoneDoesNotLinkEither)
{
    const auto result = Link(source, "\n");
    EXPECT_NE(result.mStatus, 0);
    EXPECT_THAT(result.mErrors,
                testing::HasSubstr("required symbol `vyr_create_show' not defined"));
}
} // namespace
