// SPDX-License-Identifier: MIT
#include "formats/lwo2/read/layer_reader.h"

#include <algorithm>
#include <array>
#include <bit>

#include "formats/lwo2/ids.h"
#include "formats/lwo2/single.h"

namespace formats::lwo2 {

namespace {

using mesh::ChunkRole;
using mesh::FileChunk;

std::uint64_t chunk_start(const Cursor& body)
{
    constexpr std::uint64_t header = 8;
    return body.offset() - header;
}

std::vector<std::byte> copy(std::span<const std::byte> bytes)
{
    return {bytes.begin(), bytes.end()};
}

/// How many points a polygon has, out of the word before them.
std::uint32_t corner_count(mesh::FourCC type, std::uint16_t word)
{
    const std::uint32_t low = word & polygon_point_limit;
    return type == mesh::polygon_curv ? low | (static_cast<std::uint32_t>(word) >> 12u) << 10u
                                      : low;
}

std::uint8_t polygon_flags(mesh::FourCC type, std::uint16_t word)
{
    const unsigned flags = static_cast<unsigned>(word) >> 10u;
    return static_cast<std::uint8_t>(type == mesh::polygon_curv ? flags & 3u : flags);
}

} // namespace

void LayerReader::open(Cursor body)
{
    layer_.number = body.u2();
    layer_.flags = body.u2();
    layer_.pivot.x = widen(body.u4());
    layer_.pivot.y = widen(body.u4());
    layer_.pivot.z = widen(body.u4());
    layer_.name = body.text();
    FileChunk chunk{.id = id_layr, .role = ChunkRole::layer};
    Cursor after_name = body;
    chunk.body = copy(after_name.rest());
    if (body.left() >= 2) {
        const std::uint16_t parent = body.u2();
        if (parent != no_parent)
            layer_.parent = parent;
        std::fill_n(chunk.body.begin(), 2, std::byte{0}); // its place; the layer has its value
    }
    keep(std::move(chunk));
}

bool LayerReader::take(Cursor body)
{
    switch (body.chunk()) {
    case id_pnts:
        points(body);
        return true;
    case id_bbox:
        bounds(body);
        return true;
    case id_pols:
        polygons(body);
        return true;
    case id_ptag:
        polygon_tags(body);
        return true;
    case id_vmap:
        map(body);
        return true;
    case id_vmad:
        corner_values(body);
        return true;
    default:
        return false;
    }
}

void LayerReader::points(Cursor body)
{
    constexpr std::size_t point_size = 12;
    if (body.left() % point_size != 0)
        body.fail(fmt::format("a size of {} bytes holds no whole number of points; the file is "
                              "damaged",
                              body.left()));
    const std::size_t count = body.left() / point_size;
    points_.first = static_cast<std::uint32_t>(layer_.points.size());
    points_.count = static_cast<std::uint32_t>(count);
    ++point_blocks_;
    if (count > layer_.points.size() / 2) // else growth by halves is cheaper
        layer_.points.reserve(layer_.points.size() + count);
    std::array<mesh::Vec3, 256> run;
    for (std::size_t left = count; left > 0;) {
        const std::size_t now = std::min(left, run.size());
        for (std::size_t i = 0; i < now; ++i) {
            run[i].x = widen(body.u4());
            run[i].y = widen(body.u4());
            run[i].z = widen(body.u4());
        }
        layer_.points.append({run.data(), now});
        left -= now;
    }
    keep({.id = id_pnts,
          .role = ChunkRole::points,
          .end = static_cast<std::uint32_t>(layer_.points.size())});
}

void LayerReader::bounds(Cursor body)
{
    constexpr std::size_t box_size = 24;
    if (body.left() != box_size)
        reading_.warn(
            id_bbox, chunk_start(body),
            fmt::format("a box has 24 bytes, not {}; it will be computed anew", body.left()));
    keep({.id = id_bbox, .role = ChunkRole::bounds, .body = copy(body.rest())});
}

std::uint32_t LayerReader::point_index(Cursor& body) const
{
    const std::uint64_t offset = body.offset();
    const std::uint32_t index = body.index();
    if (index >= points_.count)
        body.fail_at(offset, fmt::format("index {} names no point ({} points); the file is damaged "
                                         "or cut short",
                                         index, points_.count));
    return points_.first + index;
}

std::uint32_t LayerReader::polygon_index(Cursor& body) const
{
    const std::uint64_t offset = body.offset();
    const std::uint32_t index = body.index();
    if (index >= polygons_.count)
        body.fail_at(offset, fmt::format("index {} names no polygon ({} polygons); the file is "
                                         "damaged or cut short",
                                         index, polygons_.count));
    return polygons_.first + index;
}

/// Remembers a kind of polygons or tags. Each costs a step wherever kinds are looked up, and some
/// cost memory for every polygon: only damage has many.
void LayerReader::note_kind(std::vector<mesh::FourCC>& kinds, mesh::FourCC kind, const Cursor& body,
                            const char* what) const
{
    constexpr std::size_t most = 32;
    if (std::find(kinds.begin(), kinds.end(), kind) != kinds.end())
        return;
    if (kinds.size() == most)
        body.fail(fmt::format("the layer has more than {} {}; the file is damaged", most, what));
    kinds.push_back(kind);
}

void LayerReader::reserve_polygons(Cursor body)
{
    const mesh::FourCC type = body.u4();
    std::size_t count = 0;
    std::size_t corners = 0;
    while (body.left() > 0) {
        const std::uint32_t own = corner_count(type, body.u2());
        for (std::uint32_t i = 0; i < own; ++i)
            static_cast<void>(body.index());
        ++count;
        corners += own;
    }
    mesh::Polygons& polygons = layer_.polygons;
    if (count > polygons.size() / 2 || corners > polygons.corner_count() / 2)
        polygons.reserve(polygons.size() + count, polygons.corner_count() + corners);
}

void LayerReader::polygons(Cursor body)
{
    reserve_polygons(body);
    const mesh::FourCC type = body.u4();
    note_kind(polygon_kinds_, type, body, "types of polygons");
    polygons_.first = static_cast<std::uint32_t>(layer_.polygons.size());
    std::array<std::uint32_t, curve_point_limit> corners{};
    while (body.left() > 0) {
        const std::uint64_t offset = body.offset();
        const std::uint16_t word = body.u2();
        const std::uint32_t count = corner_count(type, word);
        if (count == 0)
            body.fail_at(offset, fmt::format("polygon {} has no points; the file is damaged",
                                             layer_.polygons.size() - polygons_.first));
        for (std::uint32_t i = 0; i < count; ++i)
            corners[i] = point_index(body);
        layer_.polygons.add(type, {corners.data(), count});
        if (const std::uint8_t flags = polygon_flags(type, word); flags != 0)
            layer_.polygons.set_flags(layer_.polygons.size() - 1, flags);
    }
    polygons_.count = static_cast<std::uint32_t>(layer_.polygons.size()) - polygons_.first;
    block_tag_kinds_.clear();
    keep({.id = id_pols,
          .role = ChunkRole::polygons,
          .kind = type,
          .end = static_cast<std::uint32_t>(layer_.polygons.size())});
}

void LayerReader::polygon_tags(Cursor body)
{
    const std::uint64_t start = chunk_start(body);
    const mesh::FourCC kind = body.u4();
    note_kind(tag_kinds_, kind, body, "kinds of polygon tags");
    std::size_t changed = 0;
    while (body.left() > 0) {
        const std::uint32_t polygon = polygon_index(body);
        const std::uint64_t offset = body.offset();
        const std::uint16_t tag = body.u2();
        if (!highest_tag_.any || tag > highest_tag_.tag)
            highest_tag_ = {true, tag, offset};
        const mesh::TagIndex before = layer_.polygons.tag(kind, polygon);
        if (before != mesh::no_tag && before != tag)
            ++changed;
        layer_.polygons.set_tag(kind, polygon, tag);
    }
    if (changed > 0)
        reading_.warn(id_ptag, start,
                      fmt::format("{} polygons are given a {} tag more than once; the last one "
                                  "counts",
                                  changed, mesh::to_text(kind)));
    const std::size_t kept = block_tag_kinds_.size();
    note_kind(block_tag_kinds_, kind, body, "kinds of polygon tags");
    if (block_tag_kinds_.size() > kept)
        keep({.id = id_ptag, .role = ChunkRole::polygon_tags, .kind = kind});
}

/// A chunk of map parameters belongs to the map chunk behind it: it goes when that one is joined to
/// an earlier one.
void LayerReader::drop_map_parameters()
{
    if (!layer_.chunks.empty() && layer_.chunks.back().id == id_vmpa)
        layer_.chunks.pop_back();
}

void LayerReader::map(Cursor body)
{
    const std::uint64_t start = chunk_start(body);
    const mesh::FourCC type = body.u4();
    const std::uint16_t dimension = body.u2();
    const std::string name = body.text();
    const std::uint32_t number = maps_.number(type, name, dimension);
    std::vector<float> value(dimension);
    while (body.left() > 0) {
        const std::uint32_t point = point_index(body);
        for (float& component : value)
            component = std::bit_cast<float>(body.u4());
        maps_.set(number, point, value);
    }
    maps_.account(number, start, body);
    if (number >= map_block_.size())
        map_block_.resize(number + 1, 0);
    if (map_block_[number] == point_blocks_ + 1) {
        drop_map_parameters();
        return;
    }
    map_block_[number] = point_blocks_ + 1;
    keep({.id = id_vmap, .role = ChunkRole::map, .map = number});
}

void LayerReader::corner_values(Cursor body)
{
    const mesh::FourCC type = body.u4();
    const std::uint16_t dimension = body.u2();
    const std::string name = body.text();
    const std::uint32_t number = maps_.number(type, name, dimension);
    mesh::CornerValues& corners = maps_[number].corners;
    const auto begin = static_cast<std::uint32_t>(corners.size());
    while (body.left() > 0) {
        const std::uint32_t point = point_index(body);
        const std::uint32_t polygon = polygon_index(body);
        corners.points.push_back(point);
        for (std::uint16_t i = 0; i < dimension; ++i)
            corners.values.push_back(std::bit_cast<float>(body.u4()));
        corners.polygons.push_back(polygon);
    }
    keep({.id = id_vmad,
          .role = ChunkRole::corner_values,
          .map = number,
          .begin = begin,
          .end = static_cast<std::uint32_t>(corners.size())});
}

mesh::Layer LayerReader::finish()
{
    layer_.maps = maps_.finish();
    return std::move(layer_);
}

} // namespace formats::lwo2
