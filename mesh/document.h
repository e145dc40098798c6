// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "mesh/file_chunk.h"
#include "mesh/layer.h"
#include "mesh/stable_list.h"
#include "mesh/tags.h"

namespace mesh {

/// A mesh with layers: the in-memory form of an object file. Movable, not copyable.
struct Document {
    StableList<Layer> layers;    ///< in file order
    TagList tags;                ///< strings that polygon tags refer to by index
    std::vector<FileChunk> head; ///< file chunks before the first layer, kept for saving
    std::vector<FileChunk> tail; ///< file chunks after the last layer, kept for saving
    std::size_t file_tags = 0;   ///< number of tags that were read from the file; the first ones
};

} // namespace mesh
