// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "mesh/fourcc.h"

namespace mesh {

/// How the content of a file chunk is represented in the document.
enum class ChunkRole : std::uint8_t {
    opaque,        ///< not represented in the mesh; `body` holds the whole body
    tags,          ///< the document's tag list
    layer,         ///< starts a layer; `body` holds the bytes after its name, parent zeroed
    points,        ///< the layer's points up to index `end`
    bounds,        ///< the layer's bounding box; `body` holds it
    polygons,      ///< the layer's polygons up to index `end`, all of type `kind`
    polygon_tags,  ///< tags of kind `kind` of the preceding polygons
    map,           ///< the point values of vertex map number `map`
    corner_values, ///< rows `begin` to `end` (exclusive) of the corner values of map number `map`
};

/// One chunk of the file that a document was read from. The chunks keep their file order, so that
/// saving reproduces the file. Only the reader and writer of the format interpret them. They cover
/// the elements that the file had; elements added later have no chunk.
struct FileChunk {
    FourCC id = 0;
    ChunkRole role = ChunkRole::opaque;
    std::byte pad{0}; ///< the padding byte after a body of odd size
    FourCC kind = 0;
    std::uint32_t map = 0;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::vector<std::byte> body = {};
};

} // namespace mesh
