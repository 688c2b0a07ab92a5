#include "demo/Show.h"

#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <set>

namespace
{
using namespace demo;

TEST(Show, NamesItsTracksInLoadingOrder)
{
    EXPECT_STREQ(TrackName(FADE_BG_WHITE), "fade:bg_white");
    EXPECT_STREQ(TrackName(FLARE_SIZE), "flare:size");
    EXPECT_STREQ(TrackName(IMAGE_CENTER_ALPHA), "image:center_alpha");
    EXPECT_EQ(TUNNEL_POS, 21);
    EXPECT_STREQ(TrackName(TUNNEL_POS), "tunnel:pos");
    std::set<std::string> names;
    for (int i = 0; i < TRACK_COUNT; i++)
        names.insert(TrackName(eTrack(i)));
    EXPECT_EQ(names.size(), size_t(TRACK_COUNT));
}

TEST(Show, NamesItsPhotosInTheOrderOfTheTracks)
{
    const auto names = PhotoNames();
    EXPECT_EQ(names[0], "data/duck.png");
    EXPECT_EQ(names[1], "data/frenchduck.png");
    EXPECT_EQ(names[2], "data/photos/tovak01.png");
    EXPECT_EQ(names[13], "data/photos/tovak12.png");
    EXPECT_EQ(names[14], "data/photos/vemby01.png");
    EXPECT_EQ(names[20], "data/photos/vembyskarnold01.png");
    EXPECT_EQ(names[21], "data/photos/skarnold01.png");
    EXPECT_EQ(names[26], "data/photos/skarnold06.png");
    EXPECT_EQ(names[27], "data/photos/leather.png");
    EXPECT_EQ(names[28], "data/photos/heart.png");
}

TEST(Show, LyricsHaveNoExtension)
{
    EXPECT_EQ(LyricName(0), "data/lyrics/lyrics000");
    EXPECT_EQ(LyricName(33), "data/lyrics/lyrics033");
}

TEST(Show, LoadsItsTracksThroughTheDevice)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("sync_tunnel:pos.track", std::string("\1\0\0\0\0\0\0\0"
                                                         "\0\0\0\0\0\0\x80\x3F\0",
                                                         17));
    sync_device *device = sync_create_device(kTrackPrefix);
    const tTracks tracks = LoadTracks(device);
    EXPECT_EQ(device->data.num_tracks, size_t(TRACK_COUNT));
    EXPECT_STREQ(tracks[FADE_BG_WHITE]->name, "fade:bg_white");
    EXPECT_EQ(sync_get_val(tracks[TUNNEL_POS], 0.0), 1.0f);
    EXPECT_EQ(sync_get_val(tracks[FLARE_X], 0.0), 0.0f); // missing
    sync_destroy_device(device);
}
} // namespace
