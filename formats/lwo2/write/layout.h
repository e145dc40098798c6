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

/// Marks a step that stands before any points or polygons.
constexpr std::uint32_t no_block = 0xFFFFFFFFu;

/// Points of a layer that one chunk holds: indices in the chunks behind it count from `begin`.
using PointBlock = Range;

/// Polygons that stand side by side in the layer and in one block of the file.
struct PolygonRun {
    std::uint32_t begin = 0; ///< in the layer
    std::uint32_t end = 0;
    std::uint32_t block = 0;
    std::uint32_t first = 0; ///< number of `begin` within the block
};

/// Polygons of a layer that one chunk holds.
struct PolygonBlock {
    mesh::FourCC type = 0;
    std::uint32_t points = no_block; ///< the block of points that it counts in
    std::uint32_t size = 0;
    std::vector<std::uint32_t> runs = {}; ///< numbers of its runs, in order
};

/// One chunk of a layer to be written.
struct Step {
    mesh::ChunkRole role = mesh::ChunkRole::opaque;
    mesh::FourCC kind = 0;             ///< of polygon tags
    std::uint32_t points = no_block;   ///< the latest block of points
    std::uint32_t polygons = no_block; ///< the latest block of polygons
    std::uint32_t map = 0;             ///< number of the map
    std::uint32_t begin = 0;           ///< rows of corner values
    std::uint32_t end = 0;
    std::vector<Range> rows = {};           ///< further rows of corner values
    const mesh::FileChunk* chunk = nullptr; ///< what the file had here, if it had anything
};

/// How a layer, or a part of one, is laid out in a file: its chunks in order, and which points and
/// polygons stand in which of them.
///
/// A layer that came from a file keeps that file's chunks. Added points join the last block of
/// points, added polygons the last block of their type (one is made when there is none), and tags
/// and map values for them join the chunks of those blocks. Where the file has several blocks of
/// points and an addition joins points of different ones, which no chunk can say, all points are
/// put into the first.
class Layout {
public:
    /// @param map_parameters  whether a new map is preceded by its parameters
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

    /// The run that holds a polygon of the layer; null for one that is not of this part.
    [[nodiscard]] const PolygonRun* run_of(std::uint32_t polygon) const;

    /// Most points or polygons that one chunk has.
    [[nodiscard]] std::uint32_t largest_block() const noexcept;

    /// Whether the layer has points or polygons that its file did not have.
    [[nodiscard]] bool grown() const noexcept { return grown_; }

private:
    /// A step that the file did not have, and its place: behind step number `after` of the file's
    /// (-1: before all), among others of the same place by `order`.
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
    std::unordered_set<std::uint64_t> joined_; ///< roles and maps that stand for several blocks
    std::unordered_map<mesh::FourCC, std::uint32_t> last_blocks_;          ///< by type
    std::unordered_map<std::uint64_t, const mesh::FileChunk*> parameters_; ///< by role and map
    bool parameters_known_ = false;
    std::ptrdiff_t end_of_data_ = -1; ///< number of the last step with data of the layer
    bool grown_ = false;
};

} // namespace formats::lwo2
