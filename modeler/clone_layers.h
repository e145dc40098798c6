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

/// Name for a layer that holds only clones of these models.
/// @param models  names of the models, such as file names without folder and extension
[[nodiscard]] std::string clone_layer_name(std::span<const std::string> models);

/// `name`, made unique among the first `layers` layers of the document: if one of them has it, with
/// the lowest free number from 2 on appended.
[[nodiscard]] std::string free_layer_name(const std::string& name, const mesh::Document& document,
                                          std::size_t layers);

/// Warning that the ground contains clones of an earlier run, on which new clones would be placed,
/// with the layers concerned. The caller appends the advice. Empty if there are no such clones, or
/// if polygons are selected and none of them belongs to a clone.
/// @param layer_title  returns the display name of the layer at an index of the document
[[nodiscard]] std::string
earlier_clones(const mesh::Document& document, const std::vector<LayerRole>& roles,
               const std::function<std::string(std::size_t)>& layer_title);

} // namespace modeler
