// SPDX-License-Identifier: MIT
#include "formats/lwo2/write/bodies.h"

#include <algorithm>
#include <array>
#include <bit>

#include "mesh/bounds.h"

namespace formats::lwo2 {

namespace {

using mesh::ChunkRole;

template <typename Out> void put_tags(const mesh::TagList& tags, Out& out)
{
    for (std::size_t i = 0; i < tags.size(); ++i)
        out.text(tags[static_cast<mesh::TagIndex>(i)]);
}

template <typename Out> void put_layer(const LayerPart& part, const Step& step, Out& out)
{
    const mesh::Layer& layer = *part.layer;
    out.u2(part.number);
    out.u2(layer.flags);
    out.single(layer.pivot.x);
    out.single(layer.pivot.y);
    out.single(layer.pivot.z);
    out.text(part.name);
    std::span<const std::byte> rest;
    if (step.chunk != nullptr)
        rest = step.chunk->body;
    const bool had_parent = rest.size() >= 2;
    // omit the field if there is no parent, unless the file had it or data after it
    if (layer.parent || had_parent)
        out.u2(layer.parent.value_or(no_parent));
    if (had_parent || !layer.parent)
        out.bytes(rest.subspan(had_parent ? 2 : 0));
}

constexpr std::size_t point_size = 12;

void put_points(std::span<const mesh::Vec3> points, Encoder& out)
{
    constexpr std::size_t most = 1024;
    while (!points.empty()) {
        const auto run = points.first(std::min(most, points.size()));
        std::byte* to = out.reserve(run.size() * point_size);
        for (const mesh::Vec3& point : run) {
            to = put_u4(to, narrow(point.x));
            to = put_u4(to, narrow(point.y));
            to = put_u4(to, narrow(point.z));
        }
        out.advance(to);
        points = points.subspan(run.size());
    }
}

constexpr std::size_t box_size = 24;

/// The bounding box as in the file if it is still correct; signs of zeros may differ.
bool is_still_right(std::span<const std::byte> body, const std::array<double, 6>& box)
{
    for (std::size_t i = 0; i < box.size(); ++i) {
        std::uint32_t bits = 0;
        for (std::size_t byte = 0; byte < 4; ++byte)
            bits = bits << 8u | std::to_integer<std::uint32_t>(body[i * 4 + byte]);
        if (std::bit_cast<float>(bits) != std::bit_cast<float>(narrow(box[i])))
            return false;
    }
    return true;
}

void put_bounds(std::span<const mesh::Vec3> points, const Step& step, Encoder& out)
{
    const auto bounds = mesh::bounds_of(points);
    const bool from_file = step.chunk != nullptr && step.chunk->body.size() == box_size;
    std::array<double, 6> box{};
    if (bounds)
        box = {bounds->min.x, bounds->min.y, bounds->min.z,
               bounds->max.x, bounds->max.y, bounds->max.z};
    if (from_file && (!bounds || is_still_right(step.chunk->body, box))) {
        out.bytes(step.chunk->body);
        return;
    }
    // adding 0 makes -0 positive, so the sign does not depend on the order of the points
    for (const double value : box)
        out.single(value + 0.0);
}

/// The first point of the block that the indices of a block of polygons refer to.
std::uint32_t first_point(const Layout& layout, const PolygonBlock& block)
{
    return block.points == no_block ? 0 : layout.point_block(block.points).begin;
}

std::uint64_t polygons_size(const mesh::Layer& layer, const Layout& layout, const Step& step)
{
    constexpr unsigned type_size = 4;
    constexpr unsigned count_size = 2;
    const PolygonBlock& block = layout.polygon_block(step.polygons);
    const std::uint32_t first_long = first_point(layout, block) + first_long_index;
    std::uint64_t size = type_size;
    for (const std::uint32_t number : block.runs) {
        const PolygonRun& run = layout.run(number);
        const auto corners = layer.polygons.corners(run.begin, run.end);
        std::size_t longs = 0;
        for (const std::uint32_t point : corners)
            longs += point >= first_long ? 1u : 0u;
        size += std::uint64_t{count_size} * (run.end - run.begin) + 2 * (corners.size() + longs);
    }
    return size;
}

void put_polygons(const mesh::Layer& layer, const Layout& layout, const Step& step, Encoder& out)
{
    const PolygonBlock& block = layout.polygon_block(step.polygons);
    const std::uint32_t first = first_point(layout, block);
    const bool curve = block.type == mesh::polygon_curv;
    out.u4(block.type);
    for (const std::uint32_t number : block.runs) {
        const PolygonRun& run = layout.run(number);
        for (std::uint32_t p = run.begin; p < run.end; ++p) {
            const auto points = layer.polygons.points(p);
            const auto count = static_cast<std::uint32_t>(points.size());
            const std::uint32_t flags = layer.polygons.flags(p);
            std::uint32_t word = (count & polygon_point_limit) | flags << 10u;
            if (curve)
                word = (word & 0x0FFFu) | count >> 10u << 12u;
            std::byte* to = put_u2(out.reserve(2 + 4 * points.size()), word);
            for (const std::uint32_t point : points)
                to = put_index(to, point - first);
            out.advance(to);
        }
    }
}

template <typename Out>
void put_polygon_tags(const mesh::Layer& layer, const Layout& layout, const Step& step, Out& out)
{
    out.u4(step.kind);
    if (step.polygons == no_block)
        return;
    const mesh::Polygons& polygons = layer.polygons;
    const bool surfaces = step.kind == mesh::tag_surf;
    const auto others = polygons.other_tags();
    const auto tags = std::find_if(others.begin(), others.end(), [&](const mesh::TagColumn& kind) {
        return kind.kind() == step.kind;
    });
    for (const std::uint32_t number : layout.polygon_block(step.polygons).runs) {
        const PolygonRun& run = layout.run(number);
        const auto put = [&](std::size_t polygon, mesh::TagIndex tag) {
            out.index(run.first + static_cast<std::uint32_t>(polygon - run.begin));
            out.u2(tag);
        };
        if (surfaces) {
            for (std::uint32_t p = run.begin; p < run.end; ++p)
                if (const mesh::TagIndex tag = polygons.surface(p); tag != mesh::no_tag)
                    put(p, tag);
        } else if (tags != others.end()) {
            tags->for_each_in(run.begin, run.end, put);
        }
    }
}

template <typename Out> void put_map_head(const mesh::VertexMap& map, Out& out)
{
    out.u4(map.type());
    out.u2(static_cast<std::uint32_t>(map.dimension()));
    out.text(map.name());
}

std::uint64_t map_size(const mesh::VertexMap& map, const Layout& layout, const Step& step)
{
    ByteCounter head;
    put_map_head(map, head);
    if (step.points == no_block)
        return head.size();
    const PointBlock& block = layout.point_block(step.points);
    const std::uint64_t rows = map.count_in(block.begin, block.end);
    const std::uint64_t shorts =
        map.count_in(block.begin, block.begin + std::min(block.size(), first_long_index));
    return head.size() + rows * (index_size(first_long_index) + map.dimension() * sizeof(float)) -
           shorts * (index_size(first_long_index) - index_size(0));
}

void put_map(const mesh::VertexMap& map, const Layout& layout, const Step& step, Encoder& out)
{
    put_map_head(map, out);
    if (step.points == no_block)
        return;
    const PointBlock& block = layout.point_block(step.points);
    const std::size_t longest = 4 + map.dimension() * sizeof(float);
    map.for_each_in(block.begin, block.end, [&](std::uint32_t point, std::span<const float> value) {
        std::byte* to = put_index(out.reserve(longest), point - block.begin);
        for (const float component : value)
            to = put_u4(to, std::bit_cast<std::uint32_t>(component));
        out.advance(to);
    });
}

template <typename Out>
void put_corner_row(const BodySource& source, const Step& step, std::uint32_t row, Out& out)
{
    const mesh::VertexMap& map = source.layer->maps[step.map];
    const std::uint32_t point = map.corners().points[row];
    const std::uint32_t polygon = map.corners().polygons[row];
    const PointBlock& points = source.layout->point_block(step.points);
    const PolygonRun* const run = source.layout->run_of(polygon);
    if (run == nullptr || run->block != step.polygons || point < points.begin ||
        point >= points.end)
        return;
    out.index(point - points.begin);
    out.index(run->first + (polygon - run->begin));
    const std::size_t dimension = map.dimension();
    for (std::size_t i = 0; i < dimension; ++i)
        out.u4(std::bit_cast<std::uint32_t>(map.corners().values[row * dimension + i]));
}

template <typename Out> void put_corner_values(const BodySource& source, const Step& step, Out& out)
{
    const mesh::VertexMap& map = source.layer->maps[step.map];
    put_map_head(map, out);
    if (step.points == no_block || step.polygons == no_block)
        return;
    const auto size = static_cast<std::uint32_t>(map.corners().size());
    for (std::uint32_t row = step.begin; row < step.end && row < size; ++row)
        put_corner_row(source, step, row, out);
    for (const Range& rows : step.rows)
        for (std::uint32_t row = rows.begin; row < rows.end; ++row)
            put_corner_row(source, step, row, out);
}

/// The points of the source's layer or part.
std::span<const mesh::Vec3> points_of(const BodySource& source)
{
    const Range& range = source.layout->part().points;
    return source.layer->points.span().subspan(range.begin, range.size());
}

/// The bodies whose size is determined with a ByteCounter.
template <typename Out> void put_small_body(const BodySource& source, const Step& step, Out& out)
{
    switch (step.role) {
    case ChunkRole::opaque:
        out.bytes(step.chunk->body);
        break;
    case ChunkRole::tags:
        put_tags(source.document.tags, out);
        break;
    case ChunkRole::layer:
        put_layer(source.layout->part(), step, out);
        break;
    case ChunkRole::polygon_tags:
        put_polygon_tags(*source.layer, *source.layout, step, out);
        break;
    case ChunkRole::corner_values:
        put_corner_values(source, step, out);
        break;
    case ChunkRole::points:
    case ChunkRole::bounds:
    case ChunkRole::polygons:
    case ChunkRole::map:
        break;
    }
}

template <typename Out> void put_plain_surface(const std::string& name, Out& out)
{
    constexpr double grey = 200.0 / 255.0;
    out.text(name);
    out.text("");
    out.u4(fourcc("COLR"));
    out.u2(14);
    out.single(grey);
    out.single(grey);
    out.single(grey);
    out.index(0);
    out.u4(fourcc("DIFF"));
    out.u2(6);
    out.single(1.0);
    out.index(0);
}

} // namespace

mesh::FourCC step_id(const Step& step) noexcept
{
    switch (step.role) {
    case ChunkRole::opaque:
        break;
    case ChunkRole::tags:
        return id_tags;
    case ChunkRole::layer:
        return id_layr;
    case ChunkRole::points:
        return id_pnts;
    case ChunkRole::bounds:
        return id_bbox;
    case ChunkRole::polygons:
        return id_pols;
    case ChunkRole::polygon_tags:
        return id_ptag;
    case ChunkRole::map:
        return id_vmap;
    case ChunkRole::corner_values:
        return id_vmad;
    }
    return step.chunk->id;
}

std::uint64_t body_size(const BodySource& source, const Step& step)
{
    switch (step.role) {
    case ChunkRole::points:
        return std::uint64_t{point_size} * source.layout->point_block(step.points).size();
    case ChunkRole::bounds:
        return box_size;
    case ChunkRole::polygons:
        return polygons_size(*source.layer, *source.layout, step);
    case ChunkRole::map:
        return map_size(source.layer->maps[step.map], *source.layout, step);
    default:
        ByteCounter counter;
        put_small_body(source, step, counter);
        return counter.size();
    }
}

void write_body(const BodySource& source, const Step& step, Encoder& out)
{
    switch (step.role) {
    case ChunkRole::points: {
        const PointBlock& block = source.layout->point_block(step.points);
        put_points(source.layer->points.span().subspan(block.begin, block.size()), out);
        break;
    }
    case ChunkRole::bounds:
        put_bounds(points_of(source), step, out);
        break;
    case ChunkRole::polygons:
        put_polygons(*source.layer, *source.layout, step, out);
        break;
    case ChunkRole::map:
        put_map(source.layer->maps[step.map], *source.layout, step, out);
        break;
    default:
        put_small_body(source, step, out);
    }
}

std::uint64_t plain_surface_size(const std::string& name)
{
    ByteCounter counter;
    put_plain_surface(name, counter);
    return counter.size();
}

void write_plain_surface(const std::string& name, Encoder& out) { put_plain_surface(name, out); }

} // namespace formats::lwo2
