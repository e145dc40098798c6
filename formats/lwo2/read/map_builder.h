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

/// Gathers the vertex maps of one layer from rows that may come in any order, in time that does not
/// grow with their disorder.
class MapBuilder {
public:
    /// @param maps  takes the maps; nobody else adds to it
    MapBuilder(mesh::StableList<mesh::VertexMap>& maps, Reading& reading)
        : maps_(maps), reading_(reading)
    {}

    /// The number of the map of this type, name and dimension, in order of first appearance.
    [[nodiscard]] std::uint32_t number(mesh::FourCC type, std::string_view name,
                                       std::uint16_t dimension);

    /// Gives points their values, one after another in `values`; where a point comes again, the
    /// last value counts.
    void add(std::uint32_t map, std::span<const std::uint32_t> points,
             std::span<const float> values);

    /// Ends the rows of the chunk at `offset`, which were of this map.
    void end_chunk(std::uint32_t map, std::uint64_t offset);

    /// Makes the maps whole. The builder is spent afterwards.
    void finish();

private:
    /// Rows that came after a row of the same or a later point, in order of the file.
    struct OutOfOrder {
        mesh::Buffer<std::uint32_t> points = {};
        mesh::Buffer<float> values = {};
        std::uint64_t offset = 0; ///< the chunk that added to the map last
    };

    void grow_table();
    /// The place of a map in the table, or the free one where it would go.
    [[nodiscard]] std::size_t place_of(mesh::FourCC type, std::string_view name,
                                       std::size_t dimension) const;
    void merge_out_of_order(std::uint32_t map, OutOfOrder& late);

    mesh::StableList<mesh::VertexMap>& maps_;
    Reading& reading_;
    /// Numbers of maps plus one, each at the first free place from its hash on; 0 is free. A power
    /// of two long, and never full. Millions of maps of a few bytes each would cost several times
    /// as much in a standard container.
    std::vector<std::uint32_t> table_;
    std::unordered_map<std::uint32_t, OutOfOrder> out_of_order_; ///< by number of the map
};

} // namespace formats::lwo2
