// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

/// A local frame given by two directions: with perpendicular unit axes `to_local` maps `axis[0]` to
/// +X and `axis[1]` to +Y.
class axes_typ {
public:
    XYZ6_typ axis[3];                  ///< becomes +X; becomes +Y; kept for callers, not used here
    double angle[3] = {0.0, 0.0, 0.0}; ///< radians about Y, Z and X, set by `calc_transf_angles`

    /// Computes `angle` from `axis[0]` and `axis[1]`. Of the first only the direction counts, of
    /// the second only its component perpendicular to the first.
    void calc_transf_angles();

    /// Transforms `n` points in place into the frame placed at `origin`.
    void to_local(XYZ6_typ* pts, int n, XYZ6_typ origin) const;

    /// Transforms `n` points in place back from the frame placed at `origin`.
    void to_global(XYZ6_typ* pts, int n, XYZ6_typ origin) const;
};

} // namespace dastrel
