// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "mesh/fourcc.h"

namespace mesh {

/// What became of a piece of the file that a document came from.
enum class ChunkRole : std::uint8_t {
    opaque,        ///< no form of its own in the mesh: kept whole
    tags,          ///< the document's tags
    layer,         ///< opens a layer; `body` is what followed its name, the parent blanked
    points,        ///< the layer's points up to `end`
    bounds,        ///< the layer's box; `body` as it was
    polygons,      ///< the layer's polygons up to `end`, all of type `kind`
    polygon_tags,  ///< tags of kind `kind` of the polygons before it
    map,           ///< the point values of map number `map`
    corner_values, ///< rows `begin` to `end` of the corner values of map number `map`
};

/// One piece of the file that a document came from, in its place among its neighbours, so that
/// saving loses nothing. Only the room that read it knows what it means. What the mesh gained since
/// is not in these records: they tell how far the file went.
struct FileChunk {
    FourCC id = 0;
    ChunkRole role = ChunkRole::opaque;
    std::byte pad{0}; ///< the filler that followed a body of odd size
    FourCC kind = 0;
    std::uint32_t map = 0;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::vector<std::byte> body = {};
};

} // namespace mesh
