// SPDX-License-Identifier: MIT
#include "formats/lwo2/read/layer_reader.h"

#include <algorithm>
#include <array>
#include <bit>

#include "formats/lwo2/big_endian.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/single.h"
#include "mesh/plural.h"

namespace formats::lwo2 {

namespace {

using mesh::ChunkRole;
using mesh::FileChunk;

std::uint64_t chunk_start(const Cursor& body)
{
    constexpr std::uint64_t header = 8;
    return body.offset() - header;
}

/// Number of points of a polygon, from the word that precedes them.
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

/// Reads coordinates into `points`.
void widen_all(const std::byte* from, std::span<mesh::Vec3> points)
{
    for (mesh::Vec3& point : points) {
        point.x = widen(read_u4(from));
        point.y = widen(read_u4(from + 4));
        point.z = widen(read_u4(from + 8));
        from += 12;
    }
}

} // namespace

void LayerReader::open(Cursor& body)
{
    layer_.number = body.u2();
    layer_.flags = body.u2();
    layer_.pivot.x = widen(body.u4());
    layer_.pivot.y = widen(body.u4());
    layer_.pivot.z = widen(body.u4());
    layer_.name = body.text();
    FileChunk chunk{.id = id_layr, .role = ChunkRole::layer};
    chunk.body = body.rest();
    if (chunk.body.size() >= 2) {
        const std::uint16_t parent = read_u2(chunk.body.data());
        if (parent != no_parent)
            layer_.parent = parent;
        std::fill_n(chunk.body.begin(), 2, std::byte{0}); // its place; the layer has its value
    }
    keep(std::move(chunk));
}

bool LayerReader::take(Cursor& body)
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

void LayerReader::points(Cursor& body)
{
    constexpr std::size_t point_size = 12;
    if (body.remaining() % point_size != 0)
        body.fail(fmt::format("a size of {} holds no whole number of points; the file is "
                              "damaged",
                              mesh::counted(body.remaining(), "byte")));
    const auto count = static_cast<std::size_t>(body.remaining() / point_size);
    points_.first = static_cast<std::uint32_t>(layer_.points.size());
    points_.count = static_cast<std::uint32_t>(count);
    ++point_blocks_;
    if (count > layer_.points.size() / 2) // else growth by halves is cheaper
        layer_.points.reserve(layer_.points.size() + count);
    std::array<mesh::Vec3, 256> run;
    while (body.remaining() > 0) {
        const auto bytes = body.peek(point_size);
        const std::size_t now = std::min(bytes.size() / point_size, run.size());
        widen_all(bytes.data(), {run.data(), now});
        layer_.points.append({run.data(), now});
        body.skip(now * point_size);
    }
    keep({.id = id_pnts,
          .role = ChunkRole::points,
          .end = static_cast<std::uint32_t>(layer_.points.size())});
}

void LayerReader::bounds(Cursor& body)
{
    constexpr std::size_t box_size = 24;
    if (body.remaining() != box_size)
        reading_.warn(
            id_bbox, chunk_start(body),
            fmt::format("a box has 24 bytes, not {}; it will be computed anew", body.remaining()));
    keep({.id = id_bbox, .role = ChunkRole::bounds, .body = body.rest()});
}

std::uint32_t LayerReader::point_index(Cursor& body) const
{
    const std::uint64_t offset = body.offset();
    const std::uint32_t index = body.index();
    if (index >= points_.count)
        body.fail_at(offset, fmt::format("index {} names no point ({}); the file is damaged "
                                         "or cut short",
                                         index, mesh::counted(points_.count, "point")));
    return points_.first + index;
}

std::uint32_t LayerReader::polygon_index(Cursor& body) const
{
    const std::uint64_t offset = body.offset();
    const std::uint32_t index = body.index();
    if (index >= polygons_.count)
        body.fail_at(offset, fmt::format("index {} names no polygon ({}); the file is "
                                         "damaged or cut short",
                                         index, mesh::counted(polygons_.count, "polygon")));
    return polygons_.first + index;
}

/// Checks that a further polygon type or tag kind is within the limit of a layer.
void LayerReader::check_kind(bool is_known, std::size_t known, std::size_t most, const Cursor& body,
                             const char* what) const
{
    if (!is_known && known >= most)
        body.fail(fmt::format("the layer has more than {} {}, which is more than can be held; the "
                              "file is damaged, or has to be divided into layers",
                              most, what));
}

/// Fast path: reads the buffered polygons up to the first invalid or incomplete one.
void LayerReader::read_polygons_fast(Cursor& body, mesh::FourCC type)
{
    constexpr std::size_t longest = 2 + 4 * curve_point_limit;
    static_assert(longest <= ChunkSource::longest_run);
    const auto bytes = body.peek(longest);
    const std::byte* const end = bytes.data() + bytes.size();
    const std::byte* taken = bytes.data();
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): a chunk may hold a single triangle
    std::array<std::uint32_t, curve_point_limit> corners;
    while (end - taken >= 2) {
        const std::uint16_t word = read_u2(taken);
        const std::uint32_t count = corner_count(type, word);
        const std::byte* at = taken + 2;
        if (count == 0 || end - at < std::ptrdiff_t{4} * count)
            break;
        std::uint32_t highest = 0;
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint32_t index = read_index(at);
            highest = std::max(highest, index);
            corners[i] = points_.first + index;
        }
        if (highest >= points_.count)
            break;
        add_polygon(type, word, {corners.data(), count});
        taken = at;
    }
    body.skip(static_cast<std::size_t>(taken - bytes.data()));
}

void LayerReader::add_polygon(mesh::FourCC type, std::uint16_t word,
                              std::span<const std::uint32_t> corners)
{
    layer_.polygons.add(type, corners);
    if (const std::uint8_t flags = polygon_flags(type, word); flags != 0)
        layer_.polygons.set_flags(layer_.polygons.size() - 1, flags);
}

void LayerReader::polygons(Cursor& body)
{
    const mesh::FourCC type = body.u4();
    const auto types = layer_.polygons.types();
    if (body.remaining() > 0)
        check_kind(std::find(types.begin(), types.end(), type) != types.end(), types.size(),
                   polygon_type_limit, body, "types of polygons");
    polygons_.first = static_cast<std::uint32_t>(layer_.polygons.size());
    std::vector<std::uint32_t> corners;
    for (;;) {
        read_polygons_fast(body, type);
        if (body.remaining() == 0)
            break;
        // slow path: value by value, with error checks
        const std::uint64_t offset = body.offset();
        const std::uint16_t word = body.u2();
        const std::uint32_t count = corner_count(type, word);
        if (count == 0)
            body.fail_at(offset, fmt::format("polygon {} has no points; the file is damaged",
                                             layer_.polygons.size() - polygons_.first));
        corners.clear();
        for (std::uint32_t i = 0; i < count; ++i)
            corners.push_back(point_index(body));
        add_polygon(type, word, corners);
    }
    polygons_.count = static_cast<std::uint32_t>(layer_.polygons.size()) - polygons_.first;
    block_tag_kinds_.clear();
    keep({.id = id_pols,
          .role = ChunkRole::polygons,
          .kind = type,
          .end = static_cast<std::uint32_t>(layer_.polygons.size())});
}

void LayerReader::polygon_tags(Cursor& body)
{
    const std::uint64_t start = chunk_start(body);
    const mesh::FourCC kind = body.u4();
    const bool surfaces = kind == mesh::tag_surf;
    mesh::Polygons& polygons = layer_.polygons;
    const auto kinds = polygons.other_tags();
    const bool is_known =
        surfaces || std::any_of(kinds.begin(), kinds.end(),
                                [&](const auto& tags) { return tags.kind() == kind; });
    if (body.remaining() > 0)
        check_kind(is_known, kinds.size(), tag_kind_limit, body, "kinds of polygon tags");
    std::size_t changed = 0;
    while (body.remaining() > 0) {
        const std::uint32_t polygon = polygon_index(body);
        const std::uint64_t offset = body.offset();
        const std::uint16_t tag = body.u2();
        if (!highest_tag_.any || tag > highest_tag_.tag)
            highest_tag_ = {true, tag, offset};
        const mesh::TagIndex before =
            surfaces ? polygons.surface(polygon) : polygons.tag(kind, polygon);
        if (before != mesh::no_tag && before != tag)
            ++changed;
        if (surfaces)
            polygons.set_surface(polygon, tag);
        else
            polygons.set_tag(kind, polygon, tag);
    }
    if (changed > 0)
        reading_.warn(id_ptag, start,
                      fmt::format("{} {} given a {} tag more than once; the last one counts",
                                  mesh::counted(changed, "polygon"), changed == 1 ? "is" : "are",
                                  mesh::to_text(kind)));
    if (block_tag_kinds_.insert(kind).second)
        keep({.id = id_ptag, .role = ChunkRole::polygon_tags, .kind = kind});
}

/// A chunk of map parameters belongs to the following map chunk; it is dropped if that chunk is
/// merged with an earlier one.
void LayerReader::drop_map_parameters()
{
    if (!layer_.chunks.empty() && layer_.chunks.back().id == id_vmpa)
        layer_.chunks.pop_back();
}

/// Fast path: reads buffered rows of a map into `rows_`, up to the first invalid or incomplete one.
void LayerReader::read_rows_fast(Cursor& body)
{
    Rows& rows = rows_;
    const std::size_t size = rows.dimension * sizeof(float);
    const std::size_t longest = 4 + size;
    const auto bytes = body.peek(longest);
    const std::byte* const end = bytes.data() + bytes.size();
    const std::byte* taken = bytes.data();
    std::uint32_t* points = rows.points.data();
    float* values = rows.values.data();
    rows.count = 0;
    while (rows.count < rows.most && end - taken >= static_cast<std::ptrdiff_t>(longest)) {
        const std::byte* at = taken;
        const std::uint32_t index = read_index(at);
        if (index >= points_.count)
            break;
        *points++ = points_.first + index;
        taken = at + size;
        for (; at != taken; at += 4)
            *values++ = std::bit_cast<float>(read_u4(at));
        ++rows.count;
    }
    body.skip(static_cast<std::size_t>(taken - bytes.data()));
}

void LayerReader::map(Cursor& body)
{
    const std::uint64_t start = chunk_start(body);
    const mesh::FourCC type = body.u4();
    const std::uint16_t dimension = body.u2();
    const std::string name = body.text();
    const std::uint32_t number = maps_.number(type, name, dimension);
    Rows& rows = rows_;
    if (body.remaining() > 0)
        rows.fit(dimension);
    while (body.remaining() > 0) {
        read_rows_fast(body);
        if (rows.count == 0) {
            // slow path: value by value, with error checks
            rows.count = 1;
            rows.points[0] = point_index(body);
            for (std::uint16_t i = 0; i < dimension; ++i)
                rows.values[i] = std::bit_cast<float>(body.u4());
        }
        maps_.add(number, rows.points.span().first(rows.count),
                  rows.values.span().first(rows.count * dimension));
    }
    maps_.end_chunk(number, start);
    if (number >= map_block_.size())
        map_block_.resize(number + 1, 0);
    if (map_block_[number] == point_blocks_ + 1) {
        drop_map_parameters();
        return;
    }
    map_block_[number] = point_blocks_ + 1;
    keep({.id = id_vmap, .role = ChunkRole::map, .map = number});
}

void LayerReader::corner_values(Cursor& body)
{
    const mesh::FourCC type = body.u4();
    const std::uint16_t dimension = body.u2();
    const std::string name = body.text();
    const std::uint32_t number = maps_.number(type, name, dimension);
    mesh::VertexMap& map = layer_.maps[number];
    const auto begin = static_cast<std::uint32_t>(map.corners().size());
    while (body.remaining() > 0) {
        mesh::CornerValues& corners = map.edit_corners();
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
          .end = static_cast<std::uint32_t>(map.corners().size())});
}

mesh::Layer LayerReader::finish()
{
    maps_.finish();
    return std::move(layer_);
}

} // namespace formats::lwo2
