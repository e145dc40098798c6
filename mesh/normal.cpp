// SPDX-License-Identifier: MIT
#include "mesh/normal.h"

#include <cmath>

namespace mesh {

Vec3 polygon_normal(const Layer& layer, std::size_t polygon) noexcept
{
    const auto corners = layer.polygons.points(polygon);
    Vec3 sum;
    if (corners.size() < 3)
        return sum;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Vec3& a = layer.points[corners[i]];
        const Vec3& b = layer.points[corners[i + 1 == corners.size() ? 0 : i + 1]];
        sum.x += (a.y - b.y) * (a.z + b.z);
        sum.y += (a.z - b.z) * (a.x + b.x);
        sum.z += (a.x - b.x) * (a.y + b.y);
    }
    const double length = std::sqrt(sum.x * sum.x + sum.y * sum.y + sum.z * sum.z);
    if (length == 0.0)
        return {};
    return {sum.x / length, sum.y / length, sum.z / length};
}

} // namespace mesh
