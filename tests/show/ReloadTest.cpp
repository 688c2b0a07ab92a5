#include "show/ShowFolder.h"

#include "tests/show/BrokenShow.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace
{
// A folder is closed whole: what is opened after a rebuild is the new library.
TEST(ShowReload, OpensWhatIsThereNow)
{
    const test::cTemporaryFolder folder;
    test::WriteBrokenShow("show");
    {
        const vyr::cShowFolder first("show");
    }
    fs::remove("show/show.so");
    test::WriteBrokenShow("other", "NoShow");
    fs::rename("other/show.so", "show/show.so");
    EXPECT_THAT([] { vyr::cShowFolder second("show"); },
                testing::ThrowsMessage<vyr::cShowError>(testing::HasSubstr("VYR_SHOW")));
}
} // namespace
