#include "tools/record/Picture.h"
#include "tools/record/Yuv.h"

#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <stb_image.h>

#include <cstdlib>

using record::cPicture;

namespace
{
cPicture Filled(int width, int height, std::array<uint8_t, 4> color)
{
    cPicture picture(width, height);
    for (size_t i = 0; i < picture.mBytes.size(); i++)
        picture.mBytes[i] = color[i % 4];
    return picture;
}

TEST(Shrink, TakesTheMeanOfWhatAPixelCovers)
{
    cPicture picture = Filled(4, 2, {0, 0, 0, 255});
    picture.Row(0)[0] = 200; // one of the four pixels of the left half
    const cPicture small = Shrink(picture, 2, 1);
    EXPECT_EQ(small.Row(0)[0], 50);
    EXPECT_EQ(small.Row(0)[4], 0);
    EXPECT_EQ(small.Row(0)[3], 255);
}

// Three pixels on two: the middle one belongs to both halves.
TEST(Shrink, SharesPixelsThatLieAcrossTheBorder)
{
    cPicture picture = Filled(3, 1, {0, 0, 0, 255});
    picture.Row(0)[4] = 90;
    const cPicture small = Shrink(picture, 2, 1);
    EXPECT_EQ(small.Row(0)[0], 30);
    EXPECT_EQ(small.Row(0)[4], 30);
}

TEST(Shrink, RepeatsPixelsOfSmallerPictures)
{
    cPicture picture = Filled(2, 1, {0, 0, 0, 255});
    picture.Row(0)[4] = 90;
    const cPicture large = Shrink(picture, 4, 2);
    for (int x = 0; x < 4; x++)
        EXPECT_EQ(large.Row(1)[4 * x], x < 2 ? 0 : 90) << x;
}

// Of eight bytes, 1 to 8; the value is that of the xxh128sum program.
TEST(HashPixels, IsXxh128OfTheBytes)
{
    cPicture picture(2, 1);
    for (size_t i = 0; i < 8; i++)
        picture.mBytes[i] = uint8_t(i + 1);
    EXPECT_EQ(HashPixels(picture), "2ab463fddb09a0b83e8675c57268fb02");
    picture.mBytes[7]++;
    EXPECT_NE(HashPixels(picture), "2ab463fddb09a0b83e8675c57268fb02");
}

TEST(WritePng, WritesWhatAReaderReads)
{
    const test::cTemporaryFolder folder;
    cPicture picture = Filled(5, 3, {10, 20, 30, 255});
    picture.Row(2)[4 * 4] = 99;
    ASSERT_TRUE(WritePng("a.png", picture));
    int width = 0, height = 0, components = 0;
    unsigned char *pixels = stbi_load("a.png", &width, &height, &components, 4);
    ASSERT_TRUE(pixels);
    EXPECT_EQ(components, 3);
    EXPECT_EQ(std::vector<uint8_t>(pixels, pixels + 4 * 5 * 3), picture.mBytes);
    std::free(pixels);
}

TEST(WritePng, FailsWhereThereIsNoRoom)
{
    EXPECT_FALSE(WritePng("/dev/full", Filled(400, 300, {1, 2, 3, 255})));
    EXPECT_FALSE(WritePng("/nowhere/a.png", Filled(4, 4, {1, 2, 3, 255})));
}

struct cYuvCase
{
    std::array<uint8_t, 4> mColor;
    int mY, mU, mV;
};

// The corners of the cube by BT.709: Y = 16 + 219 (0.2126 R + 0.7152 G + 0.0722 B), and so on.
TEST(ConvertToYuv, FollowsBt709)
{
    const cYuvCase cases[] = {
        {{0, 0, 0, 255}, 16, 128, 128},   {{255, 255, 255, 255}, 235, 128, 128},
        {{255, 0, 0, 255}, 63, 102, 240}, {{0, 255, 0, 255}, 173, 42, 26},
        {{0, 0, 255, 255}, 32, 240, 118}, {{128, 128, 128, 255}, 126, 128, 128}};
    for (const cYuvCase &each : cases) {
        std::vector<uint8_t> planes;
        ConvertToYuv(Filled(4, 2, each.mColor), planes);
        ASSERT_EQ(planes.size(), 12u);
        EXPECT_EQ(planes[0], each.mY);
        EXPECT_EQ(planes[7], each.mY);
        EXPECT_EQ(planes[8], each.mU);
        EXPECT_EQ(planes[10], each.mV);
    }
}
} // namespace
