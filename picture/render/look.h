// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "picture/maps/map_values.h"
#include "picture/render/backdrop.h"
#include "picture/scene/scene.h"

namespace picture {

/// For each layer of a scene and each polygon of that layer (from its very first one) whether it is
/// marked. Layers and polygons that are left out at the end are not.
using PolygonMarks = std::vector<std::vector<std::uint8_t>>;

/// How a scene is shown.
struct Look {
    Backdrop backdrop = {};
    bool wireframe = false; ///< edges of the polygons, as thin dark lines
    bool grid = false;      ///< on the level plane through the origin, or on the plane that a view
                            ///< from the side faces; its squares are powers of ten of a metre
    bool axes = false;      ///< lines through the origin: x red, y green, z blue
    std::shared_ptr<const MapValues> map = {};         ///< colours by it in place of surfaces
    std::shared_ptr<const PolygonMarks> selected = {}; ///< these polygons are tinted
    std::shared_ptr<const Scene> ghost = {};           ///< shown tinted and half seen through
};

} // namespace picture
