// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

#include "mesh/vec3.h"

namespace picture {

/// A position, direction or linear colour in single precision, as the ray tracer uses.
struct Float3 {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

[[nodiscard]] inline Float3 to_single(const mesh::Vec3& a) noexcept
{
    return {static_cast<float>(a.x), static_cast<float>(a.y), static_cast<float>(a.z)};
}

[[nodiscard]] inline mesh::Vec3 to_double(const Float3& a) noexcept
{
    return {static_cast<double>(a.x), static_cast<double>(a.y), static_cast<double>(a.z)};
}

[[nodiscard]] inline Float3 operator+(const Float3& a, const Float3& b) noexcept
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

[[nodiscard]] inline Float3 operator-(const Float3& a, const Float3& b) noexcept
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

[[nodiscard]] inline Float3 operator-(const Float3& a) noexcept { return {-a.x, -a.y, -a.z}; }

/// Component-wise product, for colours.
[[nodiscard]] inline Float3 operator*(const Float3& a, const Float3& b) noexcept
{
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

[[nodiscard]] inline Float3 operator*(const Float3& a, float factor) noexcept
{
    return {a.x * factor, a.y * factor, a.z * factor};
}

[[nodiscard]] inline float dot(const Float3& a, const Float3& b) noexcept
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

[[nodiscard]] inline Float3 cross(const Float3& a, const Float3& b) noexcept
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

[[nodiscard]] inline float length(const Float3& a) noexcept { return std::sqrt(dot(a, a)); }

/// The unit vector; a zero vector stays unchanged.
[[nodiscard]] inline Float3 normalized(const Float3& a) noexcept
{
    const float size = length(a);
    return size > 0.0F ? a * (1.0F / size) : a;
}

/// Linear interpolation from `a` (share 0) to `b` (share 1).
[[nodiscard]] inline Float3 mix(const Float3& a, const Float3& b, float share) noexcept
{
    return a * (1.0F - share) + b * share;
}

} // namespace picture
