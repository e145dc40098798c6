// SPDX-License-Identifier: MIT
#include "mesh/bounds.h"

#include <cmath>
#include <limits>

namespace mesh {

namespace {

void widen(double& low, double& high, double value) noexcept
{
    // fmin and fmax take the other argument where one is not a number
    low = std::fmin(low, value);
    high = std::fmax(high, value);
}

} // namespace

std::optional<Bounds> layer_bounds(const Layer& layer) noexcept
{
    if (layer.points.empty())
        return std::nullopt;
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    Bounds bounds{{nan, nan, nan}, {nan, nan, nan}};
    for (const Vec3& p : layer.points) {
        widen(bounds.min.x, bounds.max.x, p.x);
        widen(bounds.min.y, bounds.max.y, p.y);
        widen(bounds.min.z, bounds.max.z, p.z);
    }
    return bounds;
}

} // namespace mesh
