// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory_resource>
#include <span>

#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/geometry/turn.h"

namespace dastrel {

class face6_typ;
class random;

/// A polygon laid flat in its own plane, from which any number of random points can be drawn. Its
/// first edge runs along +X, its normal along +Y.
class flat_face {
public:
    /// `memory` holds the corners and must live as long.
    flat_face(const face6_typ& poly, std::pmr::memory_resource& memory);

    /// A point of the polygon, as random::z_polygonu tells.
    XYZ6_typ draw(random& sampler) const;

private:
    /// A corner in the frame, in its X-Z plane, as far as all corners lie in one.
    struct corner_typ {
        double x, z;
    };

    /// Height at which the line X = u crosses the edge from `a` to `b`. An edge that lies in that
    /// line has no one crossing; its first point is taken.
    static double crossing_height(const corner_typ& a, const corner_typ& b, double u);

    XYZ6_typ origin;  ///< the polygon's first point
    turn_typ turn[3]; ///< back out of the plane, about Y, Z and X
    double min_x = 0.0;
    double max_x = 0.0;
    std::span<const corner_typ> corners; ///< none for fewer than three
};

} // namespace dastrel
