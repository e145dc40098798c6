// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// Name for a layer that holds the clones of these models and nothing else.
/// @param models  their names, such as those of their files without folder and ending
[[nodiscard]] std::string clone_layer_name(std::span<const std::string> models);

/// The name, with the lowest number from 2 on behind it that makes it differ from the names of the
/// first `layers` layers of the document, where one of those has it already.
[[nodiscard]] std::string free_layer_name(const std::string& name, const mesh::Document& document,
                                          std::size_t layers);

/// Says that clones of an earlier run are part of the ground, so that the next ones will stand on
/// them, too, and in which layers; what helps is the caller's to add. Empty when there are none, or
/// polygons are selected and none of them is a clone's.
/// @param layer_title  names the layer at a position of the document
[[nodiscard]] std::string
earlier_clones(const mesh::Document& document, const std::vector<LayerRole>& roles,
               const std::function<std::string(std::size_t)>& layer_title);

} // namespace modeler
