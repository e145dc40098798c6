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

/// Builds one layer from its chunks, in file order. All members that take a Cursor throw
/// FormatError for damage.
class LayerReader {
public:
    explicit LayerReader(Reading& reading) : reading_(reading), maps_(layer_.maps, reading) {}
    LayerReader(const LayerReader&) = delete; // the maps look into the layer
    LayerReader& operator=(const LayerReader&) = delete;
    ~LayerReader() = default;

    /// Takes the chunk that opens the layer; without it the layer is the unnamed one of data that
    /// stands before any.
    void open(Cursor& body);

    /// Takes a chunk of the layer's data; false for a chunk that is not such, which is left alone.
    [[nodiscard]] bool take(Cursor& body);

    /// Keeps a chunk as it is, in its place.
    void keep(mesh::FileChunk chunk) { layer_.chunks.push_back(std::move(chunk)); }

    /// The layer, whole. The reader is spent afterwards.
    [[nodiscard]] mesh::Layer finish();

    /// The highest number of a tag that a polygon was given, and where; none while `any` is false.
    struct HighestTag {
        bool any = false;
        std::uint16_t tag = 0;
        std::uint64_t offset = 0;
    };
    [[nodiscard]] const HighestTag& highest_tag() const noexcept { return highest_tag_; }

private:
    /// The points or polygons that indices in the following chunks count from.
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

    /// Room for some rows of a map, some thousand numbers in all.
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
        std::size_t count = 0; ///< how many there are
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
    std::vector<std::uint32_t> map_block_; ///< for each map: block whose chunk for it was kept, + 1
    Rows rows_;                            ///< of all maps, one after another
    std::unordered_set<mesh::FourCC> block_tag_kinds_; ///< kept for the latest polygons
    HighestTag highest_tag_;
};

} // namespace formats::lwo2
