// SPDX-License-Identifier: MIT
#include "formats/lwo2/write/bodies.h"

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

template <typename Out> void put_layer(const mesh::Layer& layer, const Step& step, Out& out)
{
    out.u2(layer.number);
    out.u2(layer.flags);
    out.single(layer.pivot.x);
    out.single(layer.pivot.y);
    out.single(layer.pivot.z);
    out.text(layer.name);
    std::span<const std::byte> rest;
    if (step.chunk != nullptr)
        rest = step.chunk->body;
    const bool had_parent = rest.size() >= 2;
    // no parent is best left out, unless the file said so or has more behind it
    if (layer.parent || had_parent)
        out.u2(layer.parent.value_or(no_parent));
    if (had_parent || !layer.parent)
        out.bytes(rest.subspan(had_parent ? 2 : 0));
}

template <typename Out> void put_points(const mesh::Layer& layer, const PointBlock& block, Out& out)
{
    for (std::uint32_t i = block.begin; i < block.end; ++i) {
        const mesh::Vec3& point = layer.points[i];
        out.single(point.x);
        out.single(point.y);
        out.single(point.z);
    }
}

constexpr std::size_t box_size = 24;

/// The six numbers of the box as the file had them, where they are still right: they may differ in
/// the signs of zeros.
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

template <typename Out> void put_bounds(const mesh::Layer& layer, const Step& step, Out& out)
{
    const auto bounds = mesh::layer_bounds(layer);
    const bool from_file = step.chunk != nullptr && step.chunk->body.size() == box_size;
    std::array<double, 6> box{};
    if (bounds)
        box = {bounds->min.x, bounds->min.y, bounds->min.z,
               bounds->max.x, bounds->max.y, bounds->max.z};
    if (from_file && (!bounds || is_still_right(step.chunk->body, box))) {
        out.bytes(step.chunk->body);
        return;
    }
    // adding zero makes a zero positive: which one the box found is chance
    for (const double value : box)
        out.single(value + 0.0);
}

template <typename Out>
void put_polygons(const mesh::Layer& layer, const Layout& layout, const Step& step, Out& out)
{
    const PolygonBlock& block = layout.polygon_block(step.polygons);
    const std::uint32_t first_point =
        block.points == no_block ? 0 : layout.point_block(block.points).begin;
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
            out.u2(word);
            for (const std::uint32_t point : points)
                out.index(point - first_point);
        }
    }
}

template <typename Out>
void put_polygon_tags(const mesh::Layer& layer, const Layout& layout, const Step& step, Out& out)
{
    out.u4(step.kind);
    if (step.polygons == no_block)
        return;
    for (const std::uint32_t number : layout.polygon_block(step.polygons).runs) {
        const PolygonRun& run = layout.run(number);
        for (std::uint32_t p = run.begin; p < run.end; ++p) {
            const mesh::TagIndex tag = layer.polygons.tag(step.kind, p);
            if (tag == mesh::no_tag)
                continue;
            out.index(run.first + (p - run.begin));
            out.u2(tag);
        }
    }
}

template <typename Out> void put_map_head(const mesh::VertexMap& map, Out& out)
{
    out.u4(map.type());
    out.u2(static_cast<std::uint32_t>(map.dimension()));
    out.text(map.name());
}

template <typename Out>
void put_map(const mesh::VertexMap& map, const Layout& layout, const Step& step, Out& out)
{
    put_map_head(map, out);
    if (step.points == no_block)
        return;
    const PointBlock& block = layout.point_block(step.points);
    const auto put_row = [&](std::uint32_t point, std::span<const float> value) {
        out.index(point - block.begin);
        for (const float component : value)
            out.u4(std::bit_cast<std::uint32_t>(component));
    };
    if (block.begin == 0) {
        map.for_each([&](std::uint32_t point, std::span<const float> value) {
            if (point < block.end)
                put_row(point, value);
        });
        return;
    }
    for (std::uint32_t point = block.begin; point < block.end; ++point)
        if (map.has(point))
            put_row(point, map.find(point));
}

template <typename Out>
void put_corner_row(const BodySource& source, const Step& step, std::uint32_t row, Out& out)
{
    const mesh::VertexMap& map = source.layer->maps[step.map];
    const std::uint32_t point = map.corners.points[row];
    const std::uint32_t polygon = map.corners.polygons[row];
    if (polygon >= source.layer->polygons.size())
        return; // what it stood for is gone
    const PointBlock& points = source.layout->point_block(step.points);
    const PolygonRun& run = source.layout->run_of(polygon);
    if (run.block != step.polygons || point < points.begin || point >= points.end)
        return;
    out.index(point - points.begin);
    out.index(run.first + (polygon - run.begin));
    const std::size_t dimension = map.dimension();
    for (std::size_t i = 0; i < dimension; ++i)
        out.u4(std::bit_cast<std::uint32_t>(map.corners.values[row * dimension + i]));
}

template <typename Out> void put_corner_values(const BodySource& source, const Step& step, Out& out)
{
    const mesh::VertexMap& map = source.layer->maps[step.map];
    put_map_head(map, out);
    if (step.points == no_block || step.polygons == no_block)
        return;
    const auto size = static_cast<std::uint32_t>(map.corners.size());
    for (std::uint32_t row = step.begin; row < step.end && row < size; ++row)
        put_corner_row(source, step, row, out);
    for (const std::uint32_t row : step.rows)
        put_corner_row(source, step, row, out);
}

template <typename Out> void put_body(const BodySource& source, const Step& step, Out& out)
{
    switch (step.role) {
    case ChunkRole::opaque:
        out.bytes(step.chunk->body);
        break;
    case ChunkRole::tags:
        put_tags(source.document.tags, out);
        break;
    case ChunkRole::layer:
        put_layer(*source.layer, step, out);
        break;
    case ChunkRole::points:
        put_points(*source.layer, source.layout->point_block(step.points), out);
        break;
    case ChunkRole::bounds:
        put_bounds(*source.layer, step, out);
        break;
    case ChunkRole::polygons:
        put_polygons(*source.layer, *source.layout, step, out);
        break;
    case ChunkRole::polygon_tags:
        put_polygon_tags(*source.layer, *source.layout, step, out);
        break;
    case ChunkRole::map:
        put_map(source.layer->maps[step.map], *source.layout, step, out);
        break;
    case ChunkRole::corner_values:
        put_corner_values(source, step, out);
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
    if (step.role == ChunkRole::points) {
        const PointBlock& block = source.layout->point_block(step.points);
        return std::uint64_t{12} * (block.end - block.begin);
    }
    if (step.role == ChunkRole::bounds)
        return box_size;
    ByteCounter counter;
    put_body(source, step, counter);
    return counter.size();
}

void write_body(const BodySource& source, const Step& step, Encoder& out)
{
    put_body(source, step, out);
}

std::uint64_t plain_surface_size(const std::string& name)
{
    ByteCounter counter;
    put_plain_surface(name, counter);
    return counter.size();
}

void write_plain_surface(const std::string& name, Encoder& out) { put_plain_surface(name, out); }

} // namespace formats::lwo2
