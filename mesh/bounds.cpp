// SPDX-License-Identifier: MIT
#include "mesh/bounds.h"

#include <limits>

namespace mesh {

namespace {

/// Minimum and maximum of the numbers so far.
struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void widen(double value) noexcept
    {
        // comparisons with NaN are false, so NaN is ignored
        low = value < low ? value : low;
        high = value > high ? value : high;
    }

    /// If all numbers were NaN, the result is NaN.
    void settle() noexcept
    {
        if (low > high)
            low = high = std::numeric_limits<double>::quiet_NaN();
    }
};

} // namespace

std::optional<Bounds> bounds_of(std::span<const Vec3> points) noexcept
{
    if (points.empty())
        return std::nullopt;
    Extent x;
    Extent y;
    Extent z;
    for (const Vec3& point : points) {
        x.widen(point.x);
        y.widen(point.y);
        z.widen(point.z);
    }
    x.settle();
    y.settle();
    z.settle();
    return Bounds{{x.low, y.low, z.low}, {x.high, y.high, z.high}};
}

std::optional<Bounds> layer_bounds(const Layer& layer) noexcept
{
    return bounds_of(layer.points.span());
}

} // namespace mesh
