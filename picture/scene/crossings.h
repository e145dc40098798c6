// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "mesh/vec3.h"

namespace picture {

/// Counts how often the edges of a polygon cross each other. Holds memory from one polygon to the
/// next.
class Crossings {
public:
    /// Whether the polygon, seen along its normal, crosses itself more than `limit` times. Edges
    /// that only touch do not cross. Takes time for the crossings up to the limit, and for pairs of
    /// edges that lie side by side.
    [[nodiscard]] bool more_than(std::size_t limit, std::span<const mesh::Vec3> corners,
                                 const mesh::Vec3& normal);

private:
    struct Place {
        double x;
        double y;
    };
    /// From the end of lesser x to the other.
    struct Edge {
        Place from;
        Place to;
    };

    [[nodiscard]] static bool cross(const Edge& a, const Edge& b) noexcept;

    std::vector<Edge> edges_;  ///< by the x that they begin at
    std::vector<Edge> active_; ///< those that reach the x looked at
};

} // namespace picture
