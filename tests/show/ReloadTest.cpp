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

// A show that is drawn is exchanged for the next one: both are open then.
TEST(ShowReload, OpensWhatIsThereNowBesideWhatWasThere)
{
    const test::cTemporaryFolder folder;
    test::WriteBrokenShow("show");
    const vyr::cShowFolder first("show");
    test::WriteBrokenShow("other", "NoShow");
    fs::rename("other/show.so", "show/show.so");
    EXPECT_THAT([] { vyr::cShowFolder second("show"); },
                testing::ThrowsMessage<vyr::cShowError>(testing::HasSubstr("VYR_SHOW")));
}

TEST(ShowReload, KeysOfATrackCanBeOthersWhileItIsOpen)
{
    const test::cTemporaryFolder folder;
    test::WriteBrokenShow("show");
    vyr::cShowFolder show("show");
    fs::current_path("show");
    show.LoadTracks();
    const sync_track *track = &show.GetTrack(0);
    show.SetKeys(0, {{0, 1.0f, SYNC_KEY_LINEAR}, {8, 3.0f, SYNC_KEY_HOLD}});
    EXPECT_EQ(&show.GetTrack(0), track); // pointers to it stay good
    EXPECT_EQ(sync_get_val(track, 4.0), 2.0f);
    show.SetKeys(0, {});
    EXPECT_EQ(sync_get_val(track, 4.0), 0.0f);
    show.SetKeys(0, {{0, 1.0f, SYNC_KEY_HOLD}});
    show.LoadTracks(); // the file's again, which is not there
    EXPECT_EQ(show.GetTrack(0).num_keys, 0);
}
} // namespace
