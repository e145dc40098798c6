// SPDX-License-Identifier: MIT
#pragma once

#include "formats/copies_size.h"
#include "mesh/layer.h"

namespace formats {

/// Adds to `clone` the size of one model layer in a clone: the points used by polygons, with their
/// map values and the clone number, and all polygons.
void add_clone_of(const mesh::Layer& layer, CopiedMesh& clone);

} // namespace formats
