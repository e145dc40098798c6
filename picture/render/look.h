// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "picture/maps/map_values.h"
#include "picture/render/backdrop.h"
#include "picture/scene/scene.h"

namespace picture {

/// Flags by scene layer and polygon (index in the mesh layer). Missing elements at the end of
/// either vector count as 0.
using PolygonMarks = std::vector<std::vector<std::uint8_t>>;

/// Display options of a scene.
struct Look {
    Backdrop backdrop = {};
    bool wireframe = false; ///< draw polygon edges as thin dark lines
    bool grid = false;      ///< draw a grid in the horizontal plane through the origin or, in side
                            ///< views, in the plane that faces the viewer; spacing: powers of ten
    bool axes = false;      ///< draw the coordinate axes: x red, y green, z blue
    std::shared_ptr<const MapValues> map = {};         ///< colour by this map; null: by surface
    std::shared_ptr<const PolygonMarks> selected = {}; ///< polygons to tint; may be null
    std::shared_ptr<const Scene> ghost = {};           ///< drawn tinted and semi-transparent
};

} // namespace picture
