// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace mesh {

/// The appearance of a surface in pictures. A surface without one is drawn with these defaults.
struct SurfaceLook {
    std::string name;              ///< the surface tag of its polygons
    float red = 200.0F / 255.0F;   ///< base colour, sRGB, 0 to 1
    float green = 200.0F / 255.0F; ///< sRGB, 0 to 1
    float blue = 200.0F / 255.0F;  ///< sRGB, 0 to 1
    double smoothing_angle = 0.0;  ///< radians; edges with a smaller angle are shaded smoothly;
                                   ///< 0 or less: flat shading
};

} // namespace mesh
