// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/geometry/turn.h"

namespace dastrel {

class face6_typ;
class random;

/// A polygon laid flat in its own plane, from which any number of random points can be drawn. Its
/// first edge runs along +X, its normal along +Y.
class flat_face {
public:
    /// `poly` has at least three points.
    explicit flat_face(const face6_typ& poly);

    /// A point of the polygon, as random::z_polygonu tells.
    XYZ6_typ draw(random& sampler) const;

private:
    XYZ6_typ origin;  ///< the polygon's first point
    turn_typ turn[3]; ///< back out of the plane, about Y, Z and X
    double min_x;
    double max_x;
    std::vector<XYZ6_typ> points; ///< in the frame; in its X-Z plane, as far as they lie in one
};

} // namespace dastrel
