// SPDX-License-Identifier: MIT
#include "mesh/bounds.h"

#include <limits>

namespace mesh {

namespace {

/// The lowest and the highest of the numbers seen so far.
struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void widen(double value) noexcept
    {
        // a comparison with what is not a number is false: it changes nothing
        low = value < low ? value : low;
        high = value > high ? value : high;
    }

    /// Where there was no number, there is none to tell either.
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
