// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

/// A local frame given by two directions: with unit axes that stand square, `to_local` takes
/// `axis[0]` onto +X and `axis[1]` onto +Y.
class axes_typ {
public:
    XYZ6_typ axis[3];                  ///< becomes +X; becomes +Y; kept for callers, not used here
    double angle[3] = {0.0, 0.0, 0.0}; ///< radians about Y, Z and X, set by `calc_transf_angles`

    /// Computes `angle` from `axis[0]` and `axis[1]`. Of the first only the direction matters, of
    /// the second only what stands square to the first.
    void calc_transf_angles();

    /// Takes `n` points in place into the frame placed at `origin`.
    void to_local(XYZ6_typ* pts, int n, XYZ6_typ origin) const;

    /// Takes `n` points in place out of the frame placed at `origin`.
    void to_global(XYZ6_typ* pts, int n, XYZ6_typ origin) const;
};

} // namespace dastrel
