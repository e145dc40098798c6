// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "formats/lwo2/read/reading.h"
#include "mesh/stable_list.h"
#include "mesh/vertex_map.h"

namespace formats::lwo2 {

/// Builds the vertex maps of one layer from rows in any order. The time does not depend on the
/// order of the rows.
class MapBuilder {
public:
    /// @param maps  receives the maps; must not be modified otherwise
    MapBuilder(mesh::StableList<mesh::VertexMap>& maps, Reading& reading)
        : maps_(maps), reading_(reading)
    {}

    /// Index of the map of this type, name and dimension; appends it if it does not exist.
    [[nodiscard]] std::uint32_t number(mesh::FourCC type, std::string_view name,
                                       std::uint16_t dimension);

    /// Adds rows: points and their packed values. For duplicate points the last value counts.
    void add(std::uint32_t map, std::span<const std::uint32_t> points,
             std::span<const float> values);

    /// Marks the end of a chunk of this map, which is at `offset` in the file.
    void end_chunk(std::uint32_t map, std::uint64_t offset);

    /// Completes the maps. The builder must not be used afterwards.
    void finish();

private:
    /// Rows that follow a row of the same or a higher point, in file order; merged at the end.
    struct OutOfOrder {
        mesh::Buffer<std::uint32_t> points = {};
        mesh::Buffer<float> values = {};
        std::uint64_t offset = 0; ///< offset of the last chunk of the map
    };

    void grow_table();
    /// The slot of a map in the table, or the free slot for it.
    [[nodiscard]] std::size_t place_of(mesh::FourCC type, std::string_view name,
                                       std::size_t dimension) const;
    void merge_out_of_order(std::uint32_t map, OutOfOrder& late);

    mesh::StableList<mesh::VertexMap>& maps_;
    Reading& reading_;
    /// Open-addressing hash table of map indices plus one; 0: free. Its size is a power of two, and
    /// it is never full. For millions of tiny maps a standard container needs several times the
    /// memory.
    std::vector<std::uint32_t> table_;
    std::unordered_map<std::uint32_t, OutOfOrder> out_of_order_; ///< by index of the map
};

} // namespace formats::lwo2
