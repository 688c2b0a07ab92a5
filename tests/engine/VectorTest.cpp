#include "engine/Vector2.h"
#include "engine/Vector3.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{
using vyr::cVector2;
using vyr::cVector3;

template <typename T>
concept HasComponentQuotient = requires(T a, T b)
{
    a /= b;
};
template <typename T>
concept HasComponentProduct = requires(const T a, const T b)
{
    a *b;
};

void ExpectEqual(const cVector2 &vector, float x, float y)
{
    EXPECT_EQ(vector.x, x);
    EXPECT_EQ(vector.y, y);
}

void ExpectEqual(const cVector3 &vector, float x, float y, float z)
{
    EXPECT_EQ(vector.x, x);
    EXPECT_EQ(vector.y, y);
    EXPECT_EQ(vector.z, z);
}

TEST(Vector2, Arithmetic)
{
    const cVector2 a(3, 4), b(1, 2);
    ExpectEqual(cVector2(), 0, 0);
    ExpectEqual(a + b, 4, 6);
    ExpectEqual(a - b, 2, 2);
    ExpectEqual(a * 2.0f, 6, 8);
    ExpectEqual(a / 2.0f, 1.5f, 2);
    EXPECT_EQ(a.Dot(b), 11.0f);
    EXPECT_EQ(a.Magnitude(), 5.0f);
    EXPECT_EQ(a.SquareMagnitude(), 25.0f);
}

TEST(Vector2, ArithmeticInPlace)
{
    cVector2 v(3, 4);
    ExpectEqual(v += cVector2(1, 1), 4, 5);
    ExpectEqual(v -= cVector2(2, 1), 2, 4);
    ExpectEqual(v *= cVector2(3, 2), 6, 8);
    ExpectEqual(v /= cVector2(2, 4), 3, 2);
    ExpectEqual(v *= 2.0f, 6, 4);
    ExpectEqual(v /= 2.0f, 3, 2);
}

TEST(Vector2, NormaliseGivesLengthOneAndTheVectorItself)
{
    cVector2 v(3, 4);
    EXPECT_EQ(&v.Normalise(), &v);
    EXPECT_FLOAT_EQ(v.x, 0.6f);
    EXPECT_FLOAT_EQ(v.y, 0.8f);
}

// Not guarded, unlike the three-component one.
TEST(Vector2, NormaliseOfZeroIsNotANumber)
{
    cVector2 zero;
    zero.Normalise();
    EXPECT_TRUE(std::isnan(zero.x));
    EXPECT_TRUE(std::isnan(zero.y));
}

TEST(Vector3, Arithmetic)
{
    const cVector3 a(1, 2, 2), b(4, 5, 6);
    ExpectEqual(cVector3(), 0, 0, 0);
    ExpectEqual(a + b, 5, 7, 8);
    ExpectEqual(b - a, 3, 3, 4);
    ExpectEqual(a * b, 4, 10, 12);
    ExpectEqual(a * 2.0f, 2, 4, 4);
    ExpectEqual(a / 2.0f, 0.5f, 1, 1);
    EXPECT_EQ(a.Dot(b), 26.0f);
    EXPECT_EQ(a.Magnitude(), 3.0f);
    EXPECT_EQ(a.SquareMagnitude(), 9.0f);
}

TEST(Vector3, ArithmeticInPlace)
{
    cVector3 v(1, 2, 3);
    ExpectEqual(v += cVector3(1, 1, 1), 2, 3, 4);
    ExpectEqual(v -= cVector3(1, 2, 3), 1, 1, 1);
    ExpectEqual(v *= cVector3(2, 4, 6), 2, 4, 6);
    ExpectEqual(v *= 2.0f, 4, 8, 12);
    ExpectEqual(v /= 4.0f, 1, 2, 3);
}

TEST(Vector3, CrossIsRightHanded)
{
    ExpectEqual(cVector3(1, 0, 0).Cross(cVector3(0, 1, 0)), 0, 0, 1);
    ExpectEqual(cVector3(1, 2, 3).Cross(cVector3(4, 5, 6)), -3, 6, -3);
}

TEST(Vector3, NormaliseGivesLengthOne)
{
    cVector3 v(3, 4, 0);
    v.Normalise();
    EXPECT_FLOAT_EQ(v.x, 0.6f);
    EXPECT_FLOAT_EQ(v.y, 0.8f);
    EXPECT_EQ(v.z, 0.0f);
    static_assert(std::is_void_v<decltype(v.Normalise())>);
}

// 1/3 is formed in double: 5/3 rounds up, where a single-precision reciprocal would round down.
TEST(Vector3, NormaliseScalesInDoublePrecision)
{
    for (float x : {1.0f, 5.0f, 7.0f, 11.0f, 13.0f}) {
        cVector3 v(x, 2.0f, 3.0f);
        const float length = std::sqrt(x * x + 4.0f + 9.0f);
        v.Normalise();
        EXPECT_EQ(v.x, float(double(x) * (1.0 / double(length))));
    }
}

TEST(Vector3, NormaliseLeavesZeroAsItIs)
{
    cVector3 zero;
    zero.Normalise();
    ExpectEqual(zero, 0, 0, 0);
}

// The two types offer different sets of operations; code that needs the missing ones says what it
// means.
TEST(Vectors, OfferTheirOwnSetsOfOperations)
{
    static_assert(HasComponentQuotient<cVector2> && !HasComponentQuotient<cVector3>);
    static_assert(!HasComponentProduct<cVector2> && HasComponentProduct<cVector3>);
    static_assert(sizeof(cVector2) == 8 && sizeof(cVector3) == 12);
    static_assert(std::is_trivially_copyable_v<cVector2>);
    static_assert(std::is_trivially_copyable_v<cVector3>);
}
} // namespace
