// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "mesh/file_chunk.h"
#include "mesh/layer.h"
#include "mesh/stable_list.h"
#include "mesh/tags.h"

namespace mesh {

/// A mesh with layers, as it is read from a file, edited, and saved. It can be moved, not copied.
struct Document {
    StableList<Layer> layers;    ///< in file order
    TagList tags;                ///< what the polygons' tags refer to
    std::vector<FileChunk> head; ///< kept for saving: what stood before the first layer
    std::vector<FileChunk> tail; ///< kept for saving: what stood after the last layer
    std::size_t file_tags = 0;   ///< how many of the tags came with the file, whether described
                                 ///< there as surfaces or not
};

} // namespace mesh
