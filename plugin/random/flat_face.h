// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory_resource>
#include <span>

#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/geometry/rotation.h"

namespace dastrel {

class face6_typ;
class random;

/// A polygon transformed into its own plane, to draw random points from. Its first edge runs along
/// +X, its normal along +Y.
class flat_face {
public:
    /// `memory` holds the corners and must outlive this object.
    flat_face(const face6_typ& poly, std::pmr::memory_resource& memory);

    /// A random point of the polygon; see random::z_polygonu.
    XYZ6_typ draw(random& sampler) const;

private:
    /// A corner projected onto the X-Z plane of the frame.
    struct corner_typ {
        double x, z;
    };

    /// The Z at which the line X = u crosses the edge from `a` to `b`; that of `a` for an edge that
    /// lies in the line.
    static double crossing_height(const corner_typ& a, const corner_typ& b, double u);

    XYZ6_typ origin;      ///< the polygon's first point
    rotation_typ turn[3]; ///< rotations from the plane back to the polygon, about Y, Z and X
    double min_x = 0.0;
    double max_x = 0.0;
    std::span<const corner_typ> corners; ///< none for fewer than three
};

} // namespace dastrel
