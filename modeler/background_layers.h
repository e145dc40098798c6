// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// Returns the background layers of a document in their order: the model that a command clones. The
/// pointers are valid until layers are added or removed.
/// @param roles  one for each layer
[[nodiscard]] std::vector<const mesh::Layer*> background_layers(const mesh::Document& document,
                                                                std::span<const LayerRole> roles);

} // namespace modeler
