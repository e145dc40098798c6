// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"
#include "tests/whole/numbers.h"

namespace whole {

/// What a command is run on.
struct Session {
    mesh::Document document;
    std::vector<modeler::LayerRole> roles; ///< one for each layer
};

/// What the clones stand on.
enum class Ground {
    terrain,    ///< quads and triangles with hills
    walls,      ///< faces of all directions, straight up, down and sideways among them
    shapes,     ///< concave and large polygons, faces of few points, curves and patches
    degenerate, ///< faces without area, repeated points, first edges without length
    layers      ///< a terrain in two foreground layers with a hidden one between them
};

/// What is cloned.
enum class Model {
    triangle, ///< one face, no maps
    tree,     ///< shared points, all types of maps, some partial, surfaces and parts
    mixed,    ///< curves, patches, polygons that name a point twice, two background layers
    points    ///< points without a polygon
};

/// A scene of that kind, the details of which follow from `numbers`. The ground carries weight
/// maps, partial and with negative values.
[[nodiscard]] Session make_session(Ground ground, Model model, Numbers& numbers);

} // namespace whole
