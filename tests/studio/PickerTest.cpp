#include "studio/Picker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using studio::cPlacedKey;
using testing::ElementsAre;
using timeline::cKeyId;

namespace
{
// Two near each other, two on one spot, one far away.
const std::vector<cPlacedKey> keys = {{{1, 0}, {100.0, 50.0}},
                                      {{2, 0}, {104.0, 50.0}},
                                      {{3, 0}, {200.0, 50.0}},
                                      {{4, 0}, {200.0, 50.0}},
                                      {{5, 0}, {400.0, 90.0}}};
} // namespace

// At every scale: six pixels on each side are twelve.
TEST(Picker, AKeyTakesAtLeastTenPixels)
{
    for (double scale : {1.0, 2.0, 3.0}) {
        const studio::cPicker picker(scale);
        for (const cPlacedKey &key : keys)
            for (double dx : {-5.0, 0.0, 5.0})
                for (double dy : {-5.0, 0.0, 5.0})
                    EXPECT_THAT(picker.KeysAt(keys, {key.mAt.x + dx, key.mAt.y + dy}),
                                testing::Contains(key.mId));
        EXPECT_TRUE(picker.KeysAt(keys, {400.0 + 6.5 * scale, 90.0}).empty());
        EXPECT_TRUE(picker.KeysAt(keys, {400.0, 90.0 - 6.5 * scale}).empty());
    }
}

TEST(Picker, TheNearestComesFirst)
{
    const studio::cPicker picker(1.0);
    EXPECT_THAT(picker.KeysAt(keys, {101.0, 50.0}), ElementsAre(cKeyId{1, 0}, cKeyId{2, 0}));
    EXPECT_THAT(picker.KeysAt(keys, {103.0, 50.0}), ElementsAre(cKeyId{2, 0}, cKeyId{1, 0}));
    EXPECT_THAT(picker.KeysAt(keys, {200.0, 52.0}), ElementsAre(cKeyId{4, 0}, cKeyId{3, 0}));
}

TEST(Picker, ClickingAgainGoesThroughTheStackAndRound)
{
    studio::cPicker picker(1.0);
    EXPECT_EQ(picker.Click(keys, {200.0, 50.0}), (cKeyId{4, 0}));
    EXPECT_EQ(picker.Click(keys, {201.0, 51.0}), (cKeyId{3, 0}));
    EXPECT_EQ(picker.Click(keys, {200.0, 50.0}), (cKeyId{4, 0}));
    EXPECT_EQ(picker.Click(keys, {101.0, 50.0}), (cKeyId{1, 0}));
    EXPECT_EQ(picker.Click(keys, {200.0, 50.0}), (cKeyId{4, 0})); // another spot begins anew
    EXPECT_EQ(picker.Click(keys, {300.0, 50.0}).mLine, timeline::kNoLine);
}

TEST(Picker, ABoxTakesWhatLiesInIt)
{
    EXPECT_THAT(studio::cPicker::KeysIn(keys, {401.0, 91.0}, {199.0, 40.0}),
                ElementsAre(cKeyId{3, 0}, cKeyId{4, 0}, cKeyId{5, 0}));
    EXPECT_TRUE(studio::cPicker::KeysIn(keys, {0.0, 0.0}, {50.0, 50.0}).empty());
}
