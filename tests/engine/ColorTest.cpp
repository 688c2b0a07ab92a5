#include "engine/Color.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{
using vyr::cColor;

TEST(Color, IsZeroUnlessToldOtherwise)
{
    const cColor color;
    EXPECT_EQ(color.r + color.g + color.b + color.a, 0.0f);
    static_assert(std::is_trivially_copyable_v<cColor>);
    static_assert(sizeof(cColor) == 4 * sizeof(float));
}

TEST(Color, PacksByTruncation)
{
    cColor color(1.0f, 0.5f, 0.0f, 1.0f); // 0.5 * 255 = 127.5 gives 127
    EXPECT_EQ(color.ToARGB(), 0xFFFF7F00u);
    EXPECT_EQ(color.ToRGBA(), 0xFF7F00FFu);
    cColor almost(0.999f, 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(almost.ToRGBA(), 254u << 24);
}

// Neither clamped nor masked: 2.0 is 510, whose ninth bit lands in the neighbour above.
TEST(Color, ComponentsAboveOneSpillIntoTheirNeighbour)
{
    cColor red(2.0f, 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(red.ToRGBA(), 0xFE000000u);
    cColor green(0.0f, 2.0f, 0.0f, 0.0f);
    EXPECT_EQ(green.ToRGBA(), 510u << 16);
    EXPECT_EQ(green.ToRGBA() >> 24, 1u);
}

TEST(Color, NegativeComponentsFillEverythingAbove)
{
    cColor color(0.0f, 0.0f, 0.0f, -1.0f); // -255 = 0xFFFFFF01
    EXPECT_EQ(color.ToRGBA(), 0xFFFFFF01u);
}

TEST(Color, HugeComponentsAreDefined)
{
    cColor color(1e30f, 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(color.ToRGBA(), 0u); // the smallest integer, shifted out
}

TEST(Color, IsUnequalOnlyByAWholeStep)
{
    cColor a(0.5f, 0, 0, 1), b(0.501f, 0, 0, 1), c(0.51f, 0, 0, 1);
    EXPECT_FALSE(a != b); // both pack red as 127
    EXPECT_TRUE(a != c);
}

TEST(Color, UnpacksAnIntegerWithRedOnTop)
{
    cColor color;
    color = 0x11223344;
    EXPECT_EQ(color.r, 0x11 / 255.0f);
    EXPECT_EQ(color.g, 0x22 / 255.0f);
    EXPECT_EQ(color.b, 0x33 / 255.0f);
    EXPECT_EQ(color.a, 0x44 / 255.0f);
    color = -1;
    EXPECT_EQ(color.r, 1.0f);
}

TEST(Color, ArithmeticTakesAlphaAlong)
{
    cColor a(1, 2, 3, 4), b(4, 3, 2, 1);
    const cColor sum = a + b, difference = a - b, twice = a * 2.0f, half = a / 2.0f;
    EXPECT_EQ(sum.r, 5.0f);
    EXPECT_EQ(sum.a, 5.0f);
    EXPECT_EQ(difference.a, 3.0f);
    EXPECT_EQ(twice.a, 8.0f);
    EXPECT_EQ(half.a, 2.0f);
    a += b;
    EXPECT_EQ(a.g, 5.0f);
    a -= b;
    EXPECT_EQ(a.a, 4.0f);
    a *= 3.0f;
    EXPECT_EQ(a.b, 9.0f);
    a /= 3.0f;
    EXPECT_EQ(a.b, 3.0f);
}
} // namespace
