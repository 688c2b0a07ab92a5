#pragma once

#include <cmath>

namespace vyr
{
/// Two single-precision components. Plain arithmetic, nothing checked.
class cVector2
{
public:
    float x = 0.0f, y = 0.0f;

    constexpr cVector2() = default;
    constexpr cVector2(float newX, float newY) : x(newX), y(newY) {}

    float Magnitude() const { return std::sqrt(SquareMagnitude()); }
    float SquareMagnitude() const { return x * x + y * y; }
    float Dot(const cVector2 &other) const { return x * other.x + y * other.y; }

    /// Makes the length 1. A zero vector becomes NaN in both components: unlike cVector3's, this
    /// one is not guarded: the caller checks that its vector has a direction.
    cVector2 &Normalise()
    {
        const float inverse = 1.0f / Magnitude(); // contract: infinite for a zero vector
        return *this *= inverse;
    }

    cVector2 operator+(const cVector2 &other) const { return {x + other.x, y + other.y}; }
    cVector2 operator-(const cVector2 &other) const { return {x - other.x, y - other.y}; }
    cVector2 operator*(float factor) const { return {x * factor, y * factor}; }
    cVector2 operator/(float divisor) const { return {x / divisor, y / divisor}; }

    cVector2 &operator+=(const cVector2 &other) { return *this = *this + other; }
    cVector2 &operator-=(const cVector2 &other) { return *this = *this - other; }
    cVector2 &operator*=(float factor) { return *this = *this * factor; }
    cVector2 &operator/=(float divisor) { return *this = *this / divisor; }

    /// Component by component.
    cVector2 &operator*=(const cVector2 &other) { return *this = {x * other.x, y * other.y}; }
    cVector2 &operator/=(const cVector2 &other) { return *this = {x / other.x, y / other.y}; }
};
} // namespace vyr
