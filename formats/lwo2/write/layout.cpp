// SPDX-License-Identifier: MIT
#include "formats/lwo2/write/layout.h"

#include <algorithm>
#include <array>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "formats/lwo2/ids.h"

namespace formats::lwo2 {

namespace {

using mesh::ChunkRole;
using mesh::FileChunk;

/// Parameters of a new map: linear interpolation, default colour.
const FileChunk usual_map_parameters{.id = id_vmpa,
                                     .body = {std::byte{0}, std::byte{0}, std::byte{0},
                                              std::byte{0}, std::byte{0}, std::byte{0},
                                              std::byte{0}, std::byte{6}}};

/// The default chunks of a layer that was not read from a file.
const std::array<FileChunk, 3> usual_chunks{{{.id = id_layr, .role = ChunkRole::layer},
                                             {.id = id_pnts, .role = ChunkRole::points},
                                             {.id = id_bbox, .role = ChunkRole::bounds}}};

std::uint64_t pair_key(std::uint32_t a, std::uint32_t b)
{
    return static_cast<std::uint64_t>(a) << 32u | b;
}

std::uint32_t size32(std::size_t size) { return static_cast<std::uint32_t>(size); }

} // namespace

Layout::Layout(LayerPart part, bool map_parameters) : part_(std::move(part)), layer_(*part_.layer)
{
    // with one block of points everything can be encoded
    if (!build(false, map_parameters))
        static_cast<void>(build(true, map_parameters));
}

/// The chunks of the layer's file, or the default ones.
std::span<const FileChunk> Layout::chunks() const noexcept
{
    if (part_.is_first && !layer_.chunks.empty())
        return layer_.chunks;
    // no points, no box
    return std::span(usual_chunks).first(part_.points.size() == 0 ? 2 : 3);
}

bool Layout::build(bool one_point_block, bool map_parameters)
{
    steps_.clear();
    additions_.clear();
    points_.clear();
    polygons_.clear();
    runs_.clear();
    file_ends_.clear();
    joined_.clear();
    last_blocks_.clear();
    follow_file(one_point_block);
    place_polygons();
    if (!polygons_are_encodable())
        return false;
    complete_maps(map_parameters);
    complete_tags();
    if (!complete_corner_values(map_parameters))
        return false;
    merge_additions();
    return true;
}

void Layout::follow_file(bool one_point_block)
{
    const auto all = chunks();
    const bool has_points = std::any_of(all.begin(), all.end(), [](const FileChunk& chunk) {
        return chunk.role == ChunkRole::points;
    });
    const bool opens_layer = all.front().role == ChunkRole::layer;
    const bool lacks_points = !has_points && part_.points.size() > 0;
    if (lacks_points && !opens_layer)
        follow_chunk(usual_chunks[1], one_point_block);
    for (const FileChunk& chunk : all) {
        follow_chunk(chunk, one_point_block);
        if (lacks_points && chunk.role == ChunkRole::layer)
            follow_chunk(usual_chunks[1], one_point_block);
    }
    grown_ = part_.is_first && !layer_.chunks.empty() &&
             ((points_.empty() ? 0 : points_.back().end) < layer_.points.size() ||
              (file_ends_.empty() ? 0 : file_ends_.back()) < layer_.polygons.size());
    if (!points_.empty())
        points_.back().end = part_.points.end;
    end_of_data_ = -1;
    for (std::size_t i = 0; i < steps_.size(); ++i)
        if (steps_[i].role != ChunkRole::opaque && steps_[i].role != ChunkRole::tags)
            end_of_data_ = static_cast<std::ptrdiff_t>(i);
}

void Layout::follow_chunk(const FileChunk& chunk, bool one_point_block)
{
    Step step{.role = chunk.role,
              .kind = chunk.kind,
              .map = chunk.map,
              .begin = chunk.begin,
              .end = chunk.end,
              .chunk = &chunk};
    switch (chunk.role) {
    case ChunkRole::points: {
        const std::uint32_t begin = points_.empty() ? part_.points.begin : points_.back().end;
        const std::uint32_t end = std::min(chunk.end, part_.points.end);
        if (one_point_block && !points_.empty()) {
            points_.back().end = std::max(begin, end);
            return;
        }
        points_.push_back({begin, std::max(begin, end)});
        break;
    }
    case ChunkRole::polygons: {
        const std::uint32_t begin = file_ends_.empty() ? 0 : file_ends_.back();
        const std::uint32_t end = std::min(chunk.end, size32(layer_.polygons.size()));
        file_ends_.push_back(std::max(begin, end));
        polygons_.push_back({.type = chunk.kind, .points = size32(points_.size()) - 1});
        break;
    }
    case ChunkRole::bounds:
    case ChunkRole::map:
        // one chunk for the merged points replaces the chunks of the blocks
        if (one_point_block &&
            !joined_.insert(pair_key(static_cast<std::uint32_t>(chunk.role), chunk.map)).second) {
            if (chunk.role == ChunkRole::map && steps_.back().chunk->id == id_vmpa)
                steps_.pop_back();
            return;
        }
        break;
    default:
        break;
    }
    // without blocks yet, one before the first is the mark for none
    static_assert(no_block == std::uint32_t{0} - 1);
    step.points = size32(points_.size()) - 1;
    step.polygons = size32(polygons_.size()) - 1;
    steps_.push_back(std::move(step));
}

/// Assigns each polygon to a block: polygons of the file to their block of the file, others to the
/// last block of their type.
void Layout::place_polygons()
{
    const mesh::Polygons& polygons = layer_.polygons;
    const auto file_blocks = size32(file_ends_.size());
    const std::uint32_t last_points = size32(points_.size()) - 1;
    // blocks before the last block of points refer to earlier points
    for (auto last = polygons_.rbegin(); last != polygons_.rend() && last->points == last_points;
         ++last)
        last_blocks_.try_emplace(last->type,
                                 size32(static_cast<std::size_t>(polygons_.rend() - last)) - 1);
    std::uint32_t block = 0;
    for (const Range& range : part_.polygons) {
        for (std::uint32_t begin = range.begin; begin < range.end;) {
            while (block < file_blocks && begin >= file_ends_[block])
                ++block;
            const mesh::FourCC type = polygons.type(begin);
            const std::uint32_t limit =
                block < file_blocks ? std::min(file_ends_[block], range.end) : range.end;
            std::uint32_t end = begin + 1;
            while (end < limit && polygons.type(end) == type)
                ++end;
            const bool at_home = block < file_blocks && polygons_[block].type == type;
            extend(at_home ? block : block_for(type), begin, end);
            begin = end;
        }
    }
    // readers expect a polygon chunk in every layer, even an empty one
    const bool from_file = part_.is_first && !layer_.chunks.empty();
    if (!from_file && part_.polygons.empty())
        static_cast<void>(block_for(mesh::polygon_face));
}

void Layout::extend(std::uint32_t block, std::uint32_t begin, std::uint32_t end)
{
    PolygonBlock& target = polygons_[block];
    target.runs.push_back(size32(runs_.size()));
    runs_.push_back({begin, end, block, target.size});
    target.size += end - begin;
}

/// The last block of this type that refers to the last block of points; created if missing.
std::uint32_t Layout::block_for(mesh::FourCC type)
{
    const std::uint32_t last_points = size32(points_.size()) - 1;
    const std::uint32_t made = size32(polygons_.size());
    if (const auto [known, added] = last_blocks_.try_emplace(type, made); !added)
        return known->second;
    polygons_.push_back({.type = type, .points = last_points});
    additions_.push_back({end_of_data_,
                          made + 1,
                          {.role = ChunkRole::polygons, .points = last_points, .polygons = made}});
    return made;
}

bool Layout::polygons_are_encodable() const
{
    if (points_.size() < 2)
        return true;
    for (const PolygonRun& run : runs_) {
        const std::uint32_t points = polygons_[run.block].points;
        if (points == no_block)
            return false;
        const PointBlock& block = points_[points];
        for (std::uint32_t polygon = run.begin; polygon < run.end; ++polygon)
            for (const std::uint32_t point : layer_.polygons.points(polygon))
                if (point < block.begin || point >= block.end)
                    return false;
    }
    return true;
}

bool Layout::has_surfaces(const PolygonBlock& block) const
{
    return std::any_of(block.runs.begin(), block.runs.end(), [this](std::uint32_t number) {
        for (std::uint32_t p = runs_[number].begin; p < runs_[number].end; ++p)
            if (layer_.polygons.surface(p) != mesh::no_tag)
                return true;
        return false;
    });
}

bool Layout::has_tags(const PolygonBlock& block, const mesh::TagColumn& tags) const
{
    return std::any_of(block.runs.begin(), block.runs.end(), [&](std::uint32_t number) {
        return tags.any_in(runs_[number].begin, runs_[number].end);
    });
}

void Layout::complete_tags()
{
    const mesh::Polygons& polygons = layer_.polygons;

    // where further tags of a block go, and which kinds it has
    std::vector<std::ptrdiff_t> place(polygons_.size(), end_of_data_);
    std::unordered_set<std::uint64_t> present;
    for (std::size_t i = 0; i < steps_.size(); ++i) {
        const Step& step = steps_[i];
        const bool tags = step.role == ChunkRole::polygon_tags && step.polygons != no_block;
        if (tags)
            present.insert(pair_key(step.polygons, step.kind));
        if (tags || step.role == ChunkRole::polygons)
            place[step.polygons] = static_cast<std::ptrdiff_t>(i);
    }
    for (std::uint32_t block = 0; block < polygons_.size(); ++block) {
        const PolygonBlock& own = polygons_[block];
        const bool made = block >= file_ends_.size();
        const auto add = [&](mesh::FourCC kind) {
            additions_.push_back({place[block],
                                  made ? block + 1 : 0,
                                  {.role = ChunkRole::polygon_tags,
                                   .kind = kind,
                                   .points = own.points,
                                   .polygons = block}});
        };
        // readers expect a surface chunk after every polygon chunk
        if (!present.contains(pair_key(block, mesh::tag_surf)) && (made || has_surfaces(own)))
            add(mesh::tag_surf);
        for (const mesh::TagColumn& tags : polygons.other_tags())
            if (!present.contains(pair_key(block, tags.kind())) && has_tags(own, tags))
                add(tags.kind());
    }
}

/// Adds the parameter chunk before a map's chunk: a copy of the map's parameters elsewhere in the
/// layer, else the defaults.
void Layout::add_parameters(ChunkRole role, std::uint32_t map, std::ptrdiff_t after,
                            std::uint32_t order)
{
    if (!parameters_known_) {
        parameters_known_ = true;
        const std::vector<FileChunk>& own = layer_.chunks;
        for (std::size_t i = 1; i < own.size(); ++i)
            if (own[i - 1].id == id_vmpa)
                parameters_[pair_key(static_cast<std::uint32_t>(own[i].role), own[i].map)] =
                    &own[i - 1];
    }
    const auto own = parameters_.find(pair_key(static_cast<std::uint32_t>(role), map));
    const FileChunk* const chunk = own != parameters_.end() ? own->second : &usual_map_parameters;
    additions_.push_back({after, order, {.role = ChunkRole::opaque, .chunk = chunk}});
}

/// Calls `visit` for each block of points with a value in the map, in order. Takes time for the
/// smaller of the number of values and the number of blocks.
template <typename Visit>
void Layout::for_each_block_with_values(const mesh::VertexMap& map, Visit visit) const
{
    if (points_.size() <= map.size()) {
        for (std::uint32_t block = 0; block < points_.size(); ++block)
            if (map.count_in(points_[block].begin, points_[block].end) != 0)
                visit(block);
        return;
    }
    std::uint32_t behind = 0; // the block behind the last one visited
    map.for_each([&](std::uint32_t point, std::span<const float>) {
        if (behind > 0 && point < points_[behind - 1].end)
            return;
        const auto found = std::upper_bound(
            points_.begin() + behind, points_.end(), point,
            [](std::uint32_t p, const PointBlock& block) { return p < block.end; });
        if (found == points_.end() || point < found->begin)
            return;
        behind = size32(static_cast<std::size_t>(found - points_.begin())) + 1;
        visit(behind - 1);
    });
}

void Layout::complete_maps(bool map_parameters)
{
    std::unordered_set<std::uint64_t> present;
    std::vector<std::ptrdiff_t> place(points_.size(), -1);
    for (std::size_t i = 0; i < steps_.size(); ++i) {
        const Step& step = steps_[i];
        if (step.points == no_block)
            continue;
        const auto at = static_cast<std::ptrdiff_t>(i);
        if (step.role == ChunkRole::map)
            present.insert(pair_key(step.map, step.points));
        const bool box_of_points = step.role == ChunkRole::bounds && place[step.points] == at - 1;
        if (step.role == ChunkRole::map || step.role == ChunkRole::points || box_of_points)
            place[step.points] = at;
    }
    for (std::uint32_t map = 0; map < layer_.maps.size(); ++map) {
        for_each_block_with_values(layer_.maps[map], [&](std::uint32_t block) {
            if (present.contains(pair_key(map, block)))
                return;
            if (map_parameters)
                add_parameters(ChunkRole::map, map, place[block], 0);
            additions_.push_back(
                {place[block], 0, {.role = ChunkRole::map, .points = block, .map = map}});
        });
    }
}

bool Layout::complete_corner_values(bool map_parameters)
{
    std::vector<std::uint32_t> in_file(layer_.maps.size(), 0);
    std::vector<std::ptrdiff_t> place(polygons_.size(), end_of_data_);
    for (std::size_t i = 0; i < steps_.size(); ++i) {
        const Step& step = steps_[i];
        if (step.role == ChunkRole::corner_values && step.map < in_file.size())
            in_file[step.map] = std::max(in_file[step.map], step.end);
        if (step.role == ChunkRole::corner_values || step.role == ChunkRole::polygon_tags ||
            step.role == ChunkRole::polygons)
            if (step.polygons != no_block && step.points == polygons_[step.polygons].points)
                place[step.polygons] = static_cast<std::ptrdiff_t>(i);
    }
    std::unordered_map<std::uint64_t, std::size_t> added;
    for (std::uint32_t map = 0; map < layer_.maps.size(); ++map) {
        const mesh::CornerValues& corners = layer_.maps[map].corners();
        for (std::uint32_t row = in_file[map]; row < corners.size(); ++row) {
            const std::uint32_t point = corners.points[row];
            if (point >= layer_.points.size() || corners.polygons[row] >= layer_.polygons.size())
                continue; // what it stood for is gone
            const PolygonRun* const run = run_of(corners.polygons[row]);
            if (run == nullptr)
                continue; // of another part
            const std::uint32_t block = run->block;
            const std::uint32_t points = polygons_[block].points;
            if (point < points_[points].begin || point >= points_[points].end)
                return false;
            const auto [found, made] =
                added.try_emplace(pair_key(map, block), additions_.size() + map_parameters);
            if (made) {
                const std::uint32_t order = block >= file_ends_.size() ? block + 1 : 0;
                if (map_parameters)
                    add_parameters(ChunkRole::corner_values, map, place[block], order);
                additions_.push_back({place[block],
                                      order,
                                      {.role = ChunkRole::corner_values,
                                       .points = points,
                                       .polygons = block,
                                       .map = map}});
            }
            append(additions_[found->second].step.rows, row);
        }
    }
    return true;
}

void Layout::merge_additions()
{
    if (additions_.empty())
        return;
    std::stable_sort(additions_.begin(), additions_.end(),
                     [](const Addition& a, const Addition& b) {
                         return a.after != b.after ? a.after < b.after : a.order < b.order;
                     });
    std::vector<Step> merged;
    merged.reserve(steps_.size() + additions_.size());
    std::size_t next = 0;
    for (std::ptrdiff_t at = -1; at < static_cast<std::ptrdiff_t>(steps_.size()); ++at) {
        if (at >= 0)
            merged.push_back(std::move(steps_[static_cast<std::size_t>(at)]));
        for (; next < additions_.size() && additions_[next].after == at; ++next)
            merged.push_back(std::move(additions_[next].step));
    }
    steps_ = std::move(merged);
    additions_.clear();
}

const PolygonRun* Layout::run_of(std::uint32_t polygon) const
{
    const auto behind =
        std::upper_bound(runs_.begin(), runs_.end(), polygon,
                         [](std::uint32_t p, const PolygonRun& run) { return p < run.begin; });
    if (behind == runs_.begin() || polygon >= (behind - 1)->end)
        return nullptr;
    return &*(behind - 1);
}

std::uint32_t Layout::largest_block() const noexcept
{
    std::uint32_t largest = 0;
    for (const PointBlock& block : points_)
        largest = std::max(largest, block.size());
    for (const PolygonBlock& block : polygons_)
        largest = std::max(largest, block.size);
    return largest;
}

} // namespace formats::lwo2
