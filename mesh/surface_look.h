// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace mesh {

/// What is shown of a surface. Surfaces without a look are shown as one of the defaults.
struct SurfaceLook {
    std::string name;              ///< the tag of the polygons that have it
    float red = 200.0F / 255.0F;   ///< base colour as it is stored: 0 to 1, encoded for a screen
    float green = 200.0F / 255.0F; ///< the same
    float blue = 200.0F / 255.0F;  ///< the same
    double smoothing_angle = 0.0;  ///< radians: polygons that meet at less are shaded as one;
                                   ///< 0 or less: every polygon is shaded flat
};

} // namespace mesh
