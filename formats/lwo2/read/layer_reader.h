// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_set>
#include <utility>
#include <vector>

#include "formats/lwo2/read/map_builder.h"
#include "formats/lwo2/read/reading.h"
#include "mesh/buffer.h"
#include "mesh/layer.h"

namespace formats::lwo2 {

/// Builds one layer from its chunks, passed in file order. Members with a Cursor argument throw
/// FormatError for invalid data.
class LayerReader {
public:
    explicit LayerReader(Reading& reading) : reading_(reading), maps_(layer_.maps, reading) {}
    LayerReader(const LayerReader&) = delete; // maps_ refers to layer_
    LayerReader& operator=(const LayerReader&) = delete;
    ~LayerReader() = default;

    /// Reads the chunk that starts the layer. Not called for data before the first such chunk,
    /// which goes into an unnamed layer.
    void open(Cursor& body);

    /// Reads a chunk of layer data. Returns false, without reading, for any other chunk.
    [[nodiscard]] bool take(Cursor& body);

    /// Keeps a chunk unread, in file order.
    void keep(mesh::FileChunk chunk) { layer_.chunks.push_back(std::move(chunk)); }

    /// Returns the finished layer. The reader must not be used afterwards.
    [[nodiscard]] mesh::Layer finish();

    /// The highest tag index of a polygon, and its offset in the file; invalid while `any` is
    /// false.
    struct HighestTag {
        bool any = false;
        std::uint16_t tag = 0;
        std::uint64_t offset = 0;
    };
    [[nodiscard]] const HighestTag& highest_tag() const noexcept { return highest_tag_; }

private:
    /// The current block of points or polygons, which indices in the following chunks refer to.
    struct Block {
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };

    void points(Cursor& body);
    void bounds(Cursor& body);
    void polygons(Cursor& body);
    void polygon_tags(Cursor& body);
    void map(Cursor& body);
    void corner_values(Cursor& body);

    /// A buffer for rows of a map, about 4096 numbers.
    struct Rows {
        void fit(std::size_t dimension_of_map)
        {
            dimension = dimension_of_map;
            most = 1 + 4096 / (dimension + 1);
            points.resize(most);
            values.resize(most * dimension);
        }
        std::size_t dimension = 0;
        std::size_t most = 0;
        std::size_t count = 0; ///< rows in use
        mesh::Buffer<std::uint32_t> points;
        mesh::Buffer<float> values;
    };

    void read_polygons_fast(Cursor& body, mesh::FourCC type);
    void add_polygon(mesh::FourCC type, std::uint16_t word, std::span<const std::uint32_t> corners);
    void read_rows_fast(Cursor& body);
    [[nodiscard]] std::uint32_t point_index(Cursor& body) const;
    [[nodiscard]] std::uint32_t polygon_index(Cursor& body) const;
    void check_kind(bool is_known, std::size_t known, std::size_t most, const Cursor& body,
                    const char* what) const;
    void drop_map_parameters();

    Reading& reading_;
    mesh::Layer layer_;
    MapBuilder maps_;
    Block points_;
    Block polygons_;
    std::uint32_t point_blocks_ = 0;
    std::vector<std::uint32_t> map_block_; ///< per map: block of its last chunk record, plus 1
    Rows rows_;                            ///< reused for all maps
    std::unordered_set<mesh::FourCC> block_tag_kinds_; ///< kinds recorded for the latest polygons
    HighestTag highest_tag_;
};

} // namespace formats::lwo2
