// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "modeler/modeler.h"
#include "picture/render/look.h"
#include "picture/scene/scene.h"

namespace desktop {

/// What becomes of the selection when polygons are pointed at.
enum class SelectMode {
    replace, ///< they and nothing else
    add,     ///< they too
    toggle,  ///< they change over
    remove   ///< they no longer
};

/// Polygons of the document.
struct PolygonRef {
    std::size_t layer = 0;
    std::size_t polygon = 0;
};

/// All of these work on the foreground layers; polygons of other layers are passed over.
void select_polygons(modeler::Modeler& session, std::span<const PolygonRef> polygons,
                     SelectMode mode);
void select_all(modeler::Modeler& session, bool on);
void invert_selection(modeler::Modeler& session);
/// Selects the polygons with this surface, and nothing else. Gives how many these are.
std::size_t select_surface(modeler::Modeler& session, std::string_view surface);

/// Polygons of the foreground that are selected.
[[nodiscard]] std::size_t selected_count(const modeler::Modeler& session);

/// The selection as a picture shows it; `document_layers` tells which layer of the document each
/// layer of the picture's scene is. Null when nothing is selected.
[[nodiscard]] std::shared_ptr<const picture::PolygonMarks>
selection_marks(const modeler::Modeler& session, std::span<const std::size_t> document_layers);

} // namespace desktop
