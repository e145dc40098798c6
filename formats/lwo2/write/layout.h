// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "formats/lwo2/write/layer_part.h"
#include "mesh/file_chunk.h"
#include "mesh/layer.h"

namespace formats::lwo2 {

/// Block number of a step before any points or polygons.
constexpr std::uint32_t no_block = 0xFFFFFFFFu;

/// The points of a layer that one chunk holds. Point indices in the following chunks are relative
/// to `begin`.
using PointBlock = Range;

/// Polygons that are consecutive both in the layer and in one block of the file.
struct PolygonRun {
    std::uint32_t begin = 0; ///< first polygon, index in the layer
    std::uint32_t end = 0;   ///< one past the last
    std::uint32_t block = 0; ///< number of the block
    std::uint32_t first = 0; ///< index of `begin` within the block
};

/// The polygons of a layer that one chunk holds.
struct PolygonBlock {
    mesh::FourCC type = 0;
    std::uint32_t points = no_block; ///< the block of points that its indices refer to
    std::uint32_t size = 0;
    std::vector<std::uint32_t> runs = {}; ///< indices of its runs, in order
};

/// One chunk of a layer to be written.
struct Step {
    mesh::ChunkRole role = mesh::ChunkRole::opaque;
    mesh::FourCC kind = 0;                  ///< for polygon tags: their kind
    std::uint32_t points = no_block;        ///< preceding block of points
    std::uint32_t polygons = no_block;      ///< preceding block of polygons
    std::uint32_t map = 0;                  ///< for maps: index of the map
    std::uint32_t begin = 0;                ///< for corner values: first row
    std::uint32_t end = 0;                  ///< for corner values: one past the last row
    std::vector<Range> rows = {};           ///< for corner values: further rows
    const mesh::FileChunk* chunk = nullptr; ///< the file's chunk at this place, or null
};

/// The layout of a layer, or of a part of one, in a file: its chunks in order, and the points and
/// polygons of each.
///
/// A layer that was read from a file keeps the chunks of that file. Added points go into the last
/// block of points, added polygons into the last block of their type (created if there is none),
/// and their tags and map values into the chunks of these blocks. If the file has several blocks of
/// points and an added polygon uses points of more than one, which cannot be encoded, all points
/// are moved into the first block.
class Layout {
public:
    /// @param map_parameters  whether new maps get a chunk of map parameters
    Layout(LayerPart part, bool map_parameters);

    [[nodiscard]] const LayerPart& part() const noexcept { return part_; }

    [[nodiscard]] const std::vector<Step>& steps() const noexcept { return steps_; }
    [[nodiscard]] const PointBlock& point_block(std::uint32_t number) const
    {
        return points_[number];
    }
    [[nodiscard]] const PolygonBlock& polygon_block(std::uint32_t number) const
    {
        return polygons_[number];
    }
    [[nodiscard]] const PolygonRun& run(std::uint32_t number) const { return runs_[number]; }

    /// The run that contains a polygon of the layer; null if this part does not contain it.
    [[nodiscard]] const PolygonRun* run_of(std::uint32_t polygon) const;

    /// The largest number of points or polygons in one chunk.
    [[nodiscard]] std::uint32_t largest_block() const noexcept;

    /// Whether the layer has more points or polygons than its file.
    [[nodiscard]] bool grown() const noexcept { return grown_; }

private:
    /// A new step and its position: after step `after` of the file (-1: before all); several at the
    /// same position are sorted by `order`.
    struct Addition {
        std::ptrdiff_t after = -1;
        std::uint32_t order = 0;
        Step step;
    };

    [[nodiscard]] bool build(bool one_point_block, bool map_parameters);
    void follow_file(bool one_point_block);
    void follow_chunk(const mesh::FileChunk& chunk, bool one_point_block);
    void place_polygons();
    void extend(std::uint32_t block, std::uint32_t begin, std::uint32_t end);
    [[nodiscard]] std::uint32_t block_for(mesh::FourCC type);
    [[nodiscard]] bool polygons_are_encodable() const;
    [[nodiscard]] bool has_surfaces(const PolygonBlock& block) const;
    [[nodiscard]] bool has_tags(const PolygonBlock& block, const mesh::TagColumn& tags) const;
    void complete_tags();
    template <typename Visit>
    void for_each_block_with_values(const mesh::VertexMap& map, Visit visit) const;
    void complete_maps(bool map_parameters);
    void add_parameters(mesh::ChunkRole role, std::uint32_t map, std::ptrdiff_t after,
                        std::uint32_t order);
    [[nodiscard]] bool complete_corner_values(bool map_parameters);
    void merge_additions();

    [[nodiscard]] std::span<const mesh::FileChunk> chunks() const noexcept;

    LayerPart part_;
    const mesh::Layer& layer_;
    std::vector<Step> steps_;
    std::vector<Addition> additions_;
    std::vector<PointBlock> points_;
    std::vector<PolygonBlock> polygons_;
    std::vector<PolygonRun> runs_;
    std::vector<std::uint32_t>
        file_ends_; ///< for each of the file's blocks, the end of its polygons
    std::unordered_set<std::uint64_t> joined_; ///< roles and maps whose chunk covers several blocks
    std::unordered_map<mesh::FourCC, std::uint32_t> last_blocks_;          ///< by type
    std::unordered_map<std::uint64_t, const mesh::FileChunk*> parameters_; ///< by role and map
    bool parameters_known_ = false;
    std::ptrdiff_t end_of_data_ = -1; ///< index of the last step with data of the layer
    bool grown_ = false;
};

} // namespace formats::lwo2
