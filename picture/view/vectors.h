// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

#include "mesh/vec3.h"

namespace picture {

using mesh::Vec3;

[[nodiscard]] inline Vec3 operator+(const Vec3& a, const Vec3& b) noexcept
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

[[nodiscard]] inline Vec3 operator-(const Vec3& a, const Vec3& b) noexcept
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

[[nodiscard]] inline Vec3 operator*(const Vec3& a, double factor) noexcept
{
    return {a.x * factor, a.y * factor, a.z * factor};
}

[[nodiscard]] inline double dot(const Vec3& a, const Vec3& b) noexcept
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// The cross product; x cross y is z in left-handed axes, too.
[[nodiscard]] inline Vec3 cross(const Vec3& a, const Vec3& b) noexcept
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

[[nodiscard]] inline double length(const Vec3& a) noexcept { return std::sqrt(dot(a, a)); }

/// The unit vector; a zero vector stays unchanged.
[[nodiscard]] inline Vec3 normalized(const Vec3& a) noexcept
{
    const double size = length(a);
    return size > 0.0 ? a * (1.0 / size) : a;
}

[[nodiscard]] inline bool is_finite(const Vec3& a) noexcept
{
    return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

} // namespace picture
