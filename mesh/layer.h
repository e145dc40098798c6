// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mesh/buffer.h"
#include "mesh/file_chunk.h"
#include "mesh/polygons.h"
#include "mesh/stable_list.h"
#include "mesh/vec3.h"
#include "mesh/vertex_map.h"

namespace mesh {

/// One layer of a document: points, polygons over these points, and vertex maps.
struct Layer {
    std::string name;                    ///< raw bytes of the file; may be empty
    std::uint16_t number = 0;            ///< from 0; unique within the document
    std::uint16_t flags = 0;             ///< bit 0: hidden; other bits are kept as read
    Vec3 pivot;                          ///< centre of rotation; points are not relative to it
    std::optional<std::uint16_t> parent; ///< number of the parent layer

    Buffer<Vec3> points;
    Polygons polygons;
    StableList<VertexMap> maps; ///< in order of first appearance
    std::vector<FileChunk>
        chunks; ///< the layer's chunks of the file, kept for saving; may be empty

    /// The first map of this type and name, or null. Valid until the map is removed.
    [[nodiscard]] const VertexMap* find_map(FourCC type, std::string_view map_name) const noexcept;
    [[nodiscard]] VertexMap* find_map(FourCC type, std::string_view map_name) noexcept;
};

} // namespace mesh
