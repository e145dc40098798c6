// SPDX-License-Identifier: MIT
#include "formats/lwo2/write/limits.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "formats/errors.h"
#include "formats/lwo2/ids.h"
#include "mesh/plural.h"

namespace formats::lwo2 {

namespace {

constexpr std::uint64_t size_limit = 0xFFFFFFFF;

template <typename... Values>
[[noreturn]] void refuse(const std::string& where, fmt::format_string<Values...> text,
                         Values&&... values)
{
    throw LimitError(
        fmt::format("{}: {}", where, fmt::format(text, std::forward<Values>(values)...)));
}

void check_text(const std::string& text, const std::string& where, const char* what)
{
    if (text.find('\0') != std::string::npos)
        refuse(where,
               "the name of {} \"{}\" has a zero byte in it, which LWO2 cannot hold; rename "
               "it",
               what, text.c_str());
}

bool fits_single(double value)
{
    // half an ulp above the largest float: this and larger values would round to infinity
    constexpr double limit = 0x1.ffffffp127;
    const double size = std::abs(value);
    return !(size >= limit) || size == std::numeric_limits<double>::infinity();
}

bool fits_single(const mesh::Vec3& value)
{
    // without short-circuiting, since branches are slower for millions of points
    const bool x = fits_single(value.x);
    const bool y = fits_single(value.y);
    const bool z = fits_single(value.z);
    return x & y & z;
}

void check_tags(const mesh::TagList& tags)
{
    if (tags.size() > tag_limit)
        refuse("tags",
               "{} surface and part names are more than the {} that LWO2 can number; use "
               "fewer",
               tags.size(), tag_limit);
    for (std::size_t i = 0; i < tags.size(); ++i)
        check_text(tags[static_cast<mesh::TagIndex>(i)], "tags", "tag");
}

void check_points(const mesh::Layer& layer, const std::string& title)
{
    for (std::size_t i = 0; i < layer.points.size(); ++i)
        if (!fits_single(layer.points[i]))
            refuse(title,
                   "point {} lies beyond the range of LWO2's single precision; move or "
                   "scale the mesh",
                   i);
    if (!fits_single(layer.pivot))
        refuse(title, "the pivot lies beyond the range of LWO2's single precision; move it");
}

void check_kinds(std::size_t count, std::size_t most, const char* what, const std::string& title)
{
    if (count > most)
        refuse(title,
               "{} {} are more than the {} that a layer can hold; use fewer, or several layers",
               count, what, most);
}

void check_polygons(const mesh::Layer& layer, std::size_t tag_count, const std::string& title)
{
    const mesh::Polygons& polygons = layer.polygons;
    check_kinds(polygons.types().size(), polygon_type_limit, "types of polygons", title);
    check_kinds(polygons.other_tags().size(), tag_kind_limit, "kinds of polygon tags", title);
    const auto check_tag = [&](std::size_t polygon, mesh::TagIndex tag) {
        if (tag != mesh::no_tag && tag >= tag_count)
            refuse(title, "polygon {} has a tag that is not in the list ({}); give it another",
                   polygon, mesh::counted(tag_count, "tag"));
    };
    for (std::size_t p = 0; p < polygons.size(); ++p) {
        const auto points = polygons.points(p);
        const bool curve = polygons.type(p) == mesh::polygon_curv;
        const std::size_t most = curve ? curve_point_limit : polygon_point_limit;
        if (points.empty())
            refuse(title, "polygon {} has no points; remove it", p);
        if (points.size() > most)
            refuse(title, "polygon {} has {} points, more than the {} that LWO2 can hold; split it",
                   p, points.size(), most);
        const auto bad_point = std::find_if(points.begin(), points.end(), [&](std::uint32_t point) {
            return point >= layer.points.size();
        });
        if (bad_point != points.end())
            refuse(title, "polygon {} names point {} of {}; remove it", p, *bad_point,
                   layer.points.size());
        check_tag(p, polygons.surface(p));
    }
    for (const mesh::TagColumn& tags : polygons.other_tags())
        tags.for_each_in(0, polygons.size(), check_tag);
}

void check_layer(const mesh::Layer& layer, std::size_t tag_count, const std::string& title)
{
    check_text(layer.name, title, "layer");
    // a number read from a file is written back unchanged
    if (layer.number == no_parent && layer.chunks.empty())
        refuse(title, "its number {} is past the last one of LWO2, {}; renumber it", layer.number,
               no_parent - 1);
    if (layer.parent == no_parent)
        refuse(title, "its parent has the number {}, which means none in LWO2; renumber it",
               no_parent);
    for (const mesh::VertexMap& map : layer.maps) {
        check_text(map.name(), title, "vertex map");
        if (map.dimension() > std::numeric_limits<std::uint16_t>::max())
            refuse(title,
                   "vertex map \"{}\" has {} numbers a value, more than the 65535 that LWO2 "
                   "can hold; remove it",
                   map.name(), map.dimension());
    }
    check_points(layer, title);
    check_polygons(layer, tag_count, title);
}

} // namespace

std::string layer_title(const mesh::Document& document, std::size_t layer)
{
    const std::string& name = document.layers[layer].name;
    if (name.empty())
        return fmt::format("layer {}", layer + 1);
    // up to a zero byte, which an exception's text could not hold
    return fmt::format("layer {} \"{}\"", layer + 1, name.c_str());
}

void check_contents(const mesh::Document& document)
{
    check_tags(document.tags);
    for (std::size_t i = 0; i < document.layers.size(); ++i)
        check_layer(document.layers[i], document.tags.size(), layer_title(document, i));
}

void check_blocks(const Layout& layout, const Limits& limits, const std::string& title)
{
    for (const Step& step : layout.steps()) {
        if (step.role == mesh::ChunkRole::points) {
            const PointBlock& block = layout.point_block(step.points);
            check_count(block.size(), "points", limits, title);
        } else if (step.role == mesh::ChunkRole::polygons) {
            check_count(layout.polygon_block(step.polygons).size, "polygons", limits, title);
        }
    }
}

void check_count(std::uint64_t count, const char* what, const Limits& limits,
                 const std::string& title)
{
    if (count > limits.layer)
        refuse(title,
               "{} {} are more than the {} that LWO2 can number; make fewer clones, or "
               "spread them over several layers or files",
               count, what, limits.layer);
}

void check_chunk_size(std::uint64_t size, mesh::FourCC id, const std::string& title)
{
    if (size > size_limit)
        refuse(title,
               "chunk {} would take {} bytes, more than the {} that LWO2 can hold; make "
               "fewer clones, or spread them over several layers or files",
               mesh::to_text(id), size, size_limit);
}

void check_file_size(std::uint64_t size, const Limits& limits)
{
    if (size > limits.file_size)
        refuse("document",
               "the file would take {} bytes, more than the {} that LWO2 can hold; "
               "make fewer clones, or spread them over several files",
               size, limits.file_size);
}

} // namespace formats::lwo2
