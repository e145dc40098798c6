// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// Warnings about ground and model before a command runs: polygons with non-finite vertices (the
/// first one, and their number). At most one sentence for the ground and one for the model. Indices
/// count from 0, as in `dastrel dump`.
/// @param layer_title  returns the display name of the layer at an index of the document
[[nodiscard]] std::vector<std::string>
mesh_warnings(const mesh::Document& document, const std::vector<LayerRole>& roles,
              const std::function<std::string(std::size_t)>& layer_title);

/// The warnings with a default layer title: position from 1, and name.
[[nodiscard]] std::vector<std::string> mesh_warnings(const mesh::Document& document,
                                                     const std::vector<LayerRole>& roles);

} // namespace modeler
