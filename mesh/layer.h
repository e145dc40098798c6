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

/// One layer of a document: points, the polygons over them, and their vertex maps.
struct Layer {
    std::string name;                    ///< bytes as they stand in the file; may be empty
    std::uint16_t number = 0;            ///< the layer's own number, from 0
    std::uint16_t flags = 0;             ///< bit 0: hidden; the others as the file has them
    Vec3 pivot;                          ///< centre of rotation; points are not relative to it
    std::optional<std::uint16_t> parent; ///< number of another layer

    Buffer<Vec3> points;
    Polygons polygons;
    StableList<VertexMap> maps;    ///< in order of appearance
    std::vector<FileChunk> chunks; ///< kept for saving: the file's layout; empty without a file

    /// The first map of this type and name, or null. Valid as long as the map is there.
    [[nodiscard]] const VertexMap* find_map(FourCC type, std::string_view map_name) const noexcept;
    [[nodiscard]] VertexMap* find_map(FourCC type, std::string_view map_name) noexcept;
};

} // namespace mesh
