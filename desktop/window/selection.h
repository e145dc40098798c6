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

/// How picked polygons change the selection.
enum class SelectMode { replace, add, toggle, remove };

/// A polygon of the document.
struct PolygonRef {
    std::size_t layer = 0;
    std::size_t polygon = 0;
};

// All functions work on the foreground layers; polygons of other layers are ignored.

/// Changes the selection by the given polygons.
void select_polygons(modeler::Modeler& session, std::span<const PolygonRef> polygons,
                     SelectMode mode);
/// Selects or deselects all polygons.
void select_all(modeler::Modeler& session, bool on);
/// Inverts the selection of each polygon.
void invert_selection(modeler::Modeler& session);
/// Selects exactly the polygons with this surface. Returns their number.
std::size_t select_surface(modeler::Modeler& session, std::string_view surface);

/// Number of selected foreground polygons.
[[nodiscard]] std::size_t selected_count(const modeler::Modeler& session);

/// The selection for rendering; null if nothing is selected.
/// @param document_layers  document layer of each scene layer
[[nodiscard]] std::shared_ptr<const picture::PolygonMarks>
selection_marks(const modeler::Modeler& session, std::span<const std::size_t> document_layers);

} // namespace desktop
