// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "formats/lwo2/read/reading.h"
#include "mesh/vertex_map.h"

namespace formats::lwo2 {

/// Gathers the vertex maps of one layer from rows that may come in any order, in time that does not
/// grow with their disorder.
class MapBuilder {
public:
    explicit MapBuilder(Reading& reading) : reading_(reading) {}

    /// The number of the map of this type, name and dimension, in order of first appearance.
    [[nodiscard]] std::uint32_t number(mesh::FourCC type, const std::string& name,
                                       std::uint16_t dimension);

    [[nodiscard]] mesh::VertexMap& operator[](std::uint32_t map) { return maps_[map].map; }

    /// Gives points their values, one after another in `values`; where a point comes again, the
    /// last value counts.
    void add(std::uint32_t map, std::span<const std::uint32_t> points,
             std::span<const float> values);

    /// Accounts for the memory of a map after the rows of the chunk at `offset` were added to it.
    /// @throws FormatError
    void account(std::uint32_t map, std::uint64_t offset, const Cursor& at);

    /// All maps, whole. The builder is empty afterwards.
    [[nodiscard]] std::deque<mesh::VertexMap> finish();

private:
    struct Entry {
        mesh::VertexMap map;
        std::uint64_t offset = 0;    ///< the chunk that added to it last
        std::uint32_t next = 0;      ///< one past the last point in the map
        std::uint32_t late_end = 0;  ///< one past the last point among the late rows
        std::uint32_t accounted = 0; ///< points that memory was accounted for
        /// Rows that came after a row of the same or a later point, in order of the file.
        mesh::Buffer<std::uint32_t> late_points = {};
        mesh::Buffer<float> late_values = {};
    };

    void merge_late(Entry& entry);

    Reading& reading_;
    std::vector<Entry> maps_;
    std::unordered_map<std::string, std::uint32_t> numbers_;
};

} // namespace formats::lwo2
