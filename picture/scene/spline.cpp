// SPDX-License-Identifier: MIT
#include "picture/scene/spline.h"

#include <cstddef>

#include "picture/view/vectors.h"

namespace picture {

using mesh::Vec3;

namespace {

/// A Catmull-Rom segment from `b` to `c` with the tangent directions `a` to `c` and `b` to `d`
/// (E. Catmull, R. Rom, "A class of local interpolating splines", 1974).
Vec3 between(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& d, double t)
{
    const Vec3 linear = (c - a) * 0.5;
    const Vec3 square = a - b * 2.5 + c * 2.0 - d * 0.5;
    const Vec3 cube = (b - c) * 1.5 + (d - a) * 0.5;
    return b + (linear + (square + cube * t) * t) * t;
}

} // namespace

std::vector<Vec3> spline(std::span<const Vec3> points, std::uint8_t flags)
{
    constexpr int steps = 8;
    const std::size_t first = (flags & 1U) != 0 ? 1 : 0;
    const std::size_t last = points.size() - ((flags & 2U) != 0 ? 2 : 1);
    std::vector<Vec3> line;
    for (std::size_t i = first; i < last; ++i) {
        const Vec3& before = points[i == 0 ? 0 : i - 1];
        const Vec3& after = points[i + 2 < points.size() ? i + 2 : points.size() - 1];
        for (int step = 0; step < steps; ++step)
            line.push_back(between(before, points[i], points[i + 1], after,
                                   static_cast<double>(step) / steps));
    }
    line.push_back(points[last]);
    return line;
}

} // namespace picture
