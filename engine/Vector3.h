#pragma once

#include <cmath>

namespace vyr
{
/// Three single-precision components: positions and normals of meshes, offsets of quads.
class cVector3
{
public:
    float x = 0.0f, y = 0.0f, z = 0.0f;

    constexpr cVector3() = default;
    constexpr cVector3(float newX, float newY, float newZ) : x(newX), y(newY), z(newZ) {}

    float Magnitude() const { return std::sqrt(SquareMagnitude()); }
    float SquareMagnitude() const { return (x * x + y * y) + z * z; }
    float Dot(const cVector3 &other) const { return (x * other.x + y * other.y) + z * other.z; }

    /// Makes the length 1, scaling in double precision; a zero vector stays as it is, since a
    /// vertex that no face uses has a zero normal.
    void Normalise()
    {
        const float length = Magnitude();
        if (!(length > 0.0f))
            return;
        const double inverse = 1.0 / double(length);
        x = float(double(x) * inverse);
        y = float(double(y) * inverse);
        z = float(double(z) * inverse);
    }

    /// Right-handed: x cross y is z.
    cVector3 Cross(const cVector3 &other) const
    {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }

    cVector3 operator+(const cVector3 &other) const
    {
        return {x + other.x, y + other.y, z + other.z};
    }
    cVector3 operator-(const cVector3 &other) const
    {
        return {x - other.x, y - other.y, z - other.z};
    }
    /// Component by component.
    cVector3 operator*(const cVector3 &other) const
    {
        return {x * other.x, y * other.y, z * other.z};
    }
    cVector3 operator*(float factor) const { return {x * factor, y * factor, z * factor}; }
    cVector3 operator/(float divisor) const { return {x / divisor, y / divisor, z / divisor}; }

    cVector3 &operator+=(const cVector3 &other) { return *this = *this + other; }
    cVector3 &operator-=(const cVector3 &other) { return *this = *this - other; }
    cVector3 &operator*=(const cVector3 &other) { return *this = *this * other; }
    cVector3 &operator*=(float factor) { return *this = *this * factor; }
    cVector3 &operator/=(float divisor) { return *this = *this / divisor; }
};
} // namespace vyr
