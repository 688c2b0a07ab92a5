#pragma once

#include "base/Truncate.h"

namespace vyr
{
/// Red, green, blue and alpha, each 0 to 1 by custom; other values are kept and computed with.
class cColor
{
public:
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 0.0f;

    constexpr cColor() = default;
    constexpr cColor(float red, float green, float blue, float alpha)
        : r(red), g(green), b(blue), a(alpha)
    {}

    /// The components as bytes, alpha (or red) topmost. Each is scaled by 255 and truncated,
    /// neither clamped nor masked: what exceeds a byte spills into its neighbour.
    unsigned int ToARGB() { return Pack(a, r, g, b); }
    unsigned int ToRGBA() { return Pack(r, g, b, a); }

    /// Compares the packed bytes: colours less than a step of 1/255 apart may count as the same.
    bool operator!=(cColor &other) { return ToRGBA() != other.ToRGBA(); }

    /// Unpacks an integer in the order of ToRGBA: red in the top byte.
    cColor &operator=(const int &rgba)
    {
        const auto bits = static_cast<unsigned int>(rgba);
        r = float(bits >> 24 & 255u) / 255.0f;
        g = float(bits >> 16 & 255u) / 255.0f;
        b = float(bits >> 8 & 255u) / 255.0f;
        a = float(bits & 255u) / 255.0f;
        return *this;
    }

    cColor operator+(const cColor &other)
    {
        return {r + other.r, g + other.g, b + other.b, a + other.a};
    }
    cColor operator-(const cColor &other)
    {
        return {r - other.r, g - other.g, b - other.b, a - other.a};
    }
    cColor operator*(float factor) { return {r * factor, g * factor, b * factor, a * factor}; }
    cColor operator/(float divisor) { return {r / divisor, g / divisor, b / divisor, a / divisor}; }

    cColor &operator+=(const cColor &other) { return *this = *this + other; }
    cColor &operator-=(const cColor &other) { return *this = *this - other; }
    cColor &operator*=(float factor) { return *this = *this * factor; }
    cColor &operator/=(float divisor) { return *this = *this / divisor; }

private:
    static unsigned int Pack(float top, float second, float third, float bottom)
    {
        return ToByte(top) << 24 | ToByte(second) << 16 | ToByte(third) << 8 | ToByte(bottom);
    }
    // contract: neither clamped nor masked
    static unsigned int ToByte(float component)
    {
        return static_cast<unsigned int>(TruncateToInt(double(component * 255.0f)));
    }
};
} // namespace vyr
