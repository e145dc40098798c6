// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// What a person should know of ground and model before a command runs: polygons with vertices that
/// are not finite numbers, the first of them by name and how many there are. At most one sentence
/// for the ground and one for the model. Numbers count from 0, as `dastrel dump` prints them.
/// @param layer_title  names the layer at a position of the document
[[nodiscard]] std::vector<std::string>
mesh_warnings(const mesh::Document& document, const std::vector<LayerRole>& roles,
              const std::function<std::string(std::size_t)>& layer_title);

/// The same with layers named by their position from 1 and their name.
[[nodiscard]] std::vector<std::string> mesh_warnings(const mesh::Document& document,
                                                     const std::vector<LayerRole>& roles);

} // namespace modeler
