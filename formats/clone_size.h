// SPDX-License-Identifier: MIT
#pragma once

#include "formats/copies_size.h"
#include "mesh/layer.h"

namespace formats {

/// Adds what every clone that the command makes has of one layer of the model: all points that
/// polygons of the layer use, with their map values and the clone's number, and all its polygons.
void add_clone_of(const mesh::Layer& layer, CopiedMesh& clone);

} // namespace formats
