// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"
#include "tests/literal/scene.h"

namespace whole {

/// A document as the literal command takes it, and where its polygons came from.
struct LiteralScene {
    /// A polygon of the document.
    struct Place {
        std::size_t layer = 0;
        std::size_t polygon = 0;
    };

    literal::Scene scene;
    std::vector<Place> places; ///< of `scene.polygons`, in their order
};

/// Hidden layers are left out; polygons stand in layer order, and nothing selected in the layers of
/// a role counts as everything selected there. Maps of one type and name are one, listed as they
/// first appear, those of the foreground before those of the background.
[[nodiscard]] LiteralScene literal_scene(const mesh::Document& document,
                                         const std::vector<modeler::LayerRole>& roles);

} // namespace whole
