// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "mesh/vec3.h"

namespace picture {

/// Counts self-intersections of polygons with a sweep line. Reuses its memory between polygons.
class Crossings {
public:
    /// Whether the polygon, projected along its normal, has more than `limit` self-intersections.
    /// Edges that only touch do not count. The time grows with the intersections up to the limit
    /// and with the pairs of edges that overlap in x.
    [[nodiscard]] bool more_than(std::size_t limit, std::span<const mesh::Vec3> corners,
                                 const mesh::Vec3& normal);

private:
    struct Place {
        double x;
        double y;
    };
    /// An edge; `from` is the end with the smaller x.
    struct Edge {
        Place from;
        Place to;
    };

    [[nodiscard]] static bool cross(const Edge& a, const Edge& b) noexcept;

    std::vector<Edge> edges_;  ///< sorted by x of `from`
    std::vector<Edge> active_; ///< edges that intersect the sweep line
};

} // namespace picture
