// SPDX-License-Identifier: MIT
#include "mesh/finite.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace mesh {

bool is_finite(const Vec3& point) noexcept
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

NonFiniteCorners find_non_finite_corners(const Layer& layer)
{
    NonFiniteCorners found;
    const std::span<const Vec3> points = layer.points.span();
    if (std::all_of(points.begin(), points.end(), is_finite))
        return found;
    for (std::size_t polygon = 0; polygon < layer.polygons.size(); ++polygon) {
        const std::span<const std::uint32_t> corners = layer.polygons.points(polygon);
        for (std::size_t corner = 0; corner < corners.size(); ++corner) {
            if (is_finite(points[corners[corner]]))
                continue;
            if (found.count++ == 0) {
                found.polygon = polygon;
                found.corner = corner;
                found.point = corners[corner];
            }
        }
    }
    return found;
}

} // namespace mesh
