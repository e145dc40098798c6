// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "mesh/layer.h"
#include "mesh/opaque.h"
#include "mesh/tags.h"

namespace mesh {

/// A mesh with layers, as it is read from a file, edited, and saved. It can be moved, not copied.
struct Document {
    std::vector<Layer> layers;     ///< in file order
    TagList tags;                  ///< what the polygons' tags refer to
    std::vector<OpaqueChunk> head; ///< kept for saving: what stood before the first layer
    std::vector<OpaqueChunk> tail; ///< kept for saving: what stood after the last layer
};

} // namespace mesh
