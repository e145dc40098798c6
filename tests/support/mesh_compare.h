// SPDX-License-Identifier: MIT
/// Documents compared in everything that can be seen of them, numbers by their bits.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "mesh/fourcc.h"

namespace support {

/// A document equal to `document` in everything that `first_difference` looks at.
[[nodiscard]] inline mesh::Document copy_of(const mesh::Document& document)
{
    mesh::Document copy;
    copy.layers = document.layers;
    for (std::size_t i = 0; i < document.tags.size(); ++i)
        copy.tags.append(document.tags[static_cast<mesh::TagIndex>(i)]);
    copy.head = document.head;
    copy.tail = document.tail;
    copy.file_tags = document.file_tags;
    return copy;
}

namespace detail {

inline bool same(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}
inline bool same(float a, float b)
{
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}
inline bool same(const mesh::Vec3& a, const mesh::Vec3& b)
{
    return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z);
}
inline bool same(std::span<const float> a, std::span<const float> b)
{
    bool equal = a.size() == b.size();
    for (std::size_t i = 0; equal && i < a.size(); ++i)
        equal = same(a[i], b[i]);
    return equal;
}
inline bool same(const mesh::FileChunk& a, const mesh::FileChunk& b)
{
    return a.id == b.id && a.role == b.role && a.pad == b.pad && a.kind == b.kind &&
           a.map == b.map && a.begin == b.begin && a.end == b.end && a.body == b.body;
}
inline bool same(const std::vector<mesh::FileChunk>& a, const std::vector<mesh::FileChunk>& b)
{
    bool equal = a.size() == b.size();
    for (std::size_t i = 0; equal && i < a.size(); ++i)
        equal = same(a[i], b[i]);
    return equal;
}

template <typename... Parts> std::string text(const Parts&... parts)
{
    std::ostringstream out;
    (out << ... << parts);
    return out.str();
}

inline std::string difference(const mesh::Polygons& a, const mesh::Polygons& b)
{
    if (a.size() != b.size())
        return text("polygons: ", a.size(), " and ", b.size());
    if (a.corner_count() != b.corner_count())
        return text("corners: ", a.corner_count(), " and ", b.corner_count());
    if (a.other_tag_kinds() != b.other_tag_kinds())
        return "the kinds of polygon tags differ";
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a.type(i) != b.type(i))
            return text("polygon ", i, ": type ", mesh::to_text(a.type(i)), " and ",
                        mesh::to_text(b.type(i)));
        const auto p = a.points(i);
        const auto q = b.points(i);
        if (!std::equal(p.begin(), p.end(), q.begin(), q.end()))
            return text("polygon ", i, ": points differ");
        if (a.flags(i) != b.flags(i))
            return text("polygon ", i, ": flags ", int{a.flags(i)}, " and ", int{b.flags(i)});
        if (a.selected(i) != b.selected(i))
            return text("polygon ", i, ": selected in one only");
        if (a.surface(i) != b.surface(i))
            return text("polygon ", i, ": surface ", a.surface(i), " and ", b.surface(i));
        for (const mesh::FourCC kind : a.other_tag_kinds())
            if (a.tag(kind, i) != b.tag(kind, i))
                return text("polygon ", i, ": tag ", mesh::to_text(kind), " ", a.tag(kind, i),
                            " and ", b.tag(kind, i));
    }
    return {};
}

inline std::string difference(const mesh::VertexMap& a, const mesh::VertexMap& b,
                              std::size_t point_count)
{
    if (a.type() != b.type() || a.name() != b.name())
        return text(mesh::to_text(a.type()), " '", a.name(), "' and ", mesh::to_text(b.type()),
                    " '", b.name(), "'");
    if (a.dimension() != b.dimension())
        return text("dimension ", a.dimension(), " and ", b.dimension());
    if (a.size() != b.size())
        return text("values of ", a.size(), " and ", b.size(), " points");
    for (std::uint32_t p = 0; p < point_count; ++p)
        if (a.has(p) != b.has(p) || !same(a.find(p), b.find(p)))
            return text("point ", p, ": values differ");
    if (!same(a.values(), b.values()))
        return "packed values differ";
    for (std::size_t i = 0; i < a.corners().size() && i < b.corners().size(); ++i)
        if (a.corners().polygons[i] != b.corners().polygons[i] ||
            a.corners().points[i] != b.corners().points[i])
            return text("corner value ", i, ": is for another corner");
    if (a.corners().size() != b.corners().size() ||
        !same(a.corners().values.span(), b.corners().values.span()))
        return "corner values differ";
    return {};
}

inline std::string difference(const mesh::Layer& a, const mesh::Layer& b)
{
    if (a.name != b.name)
        return text("name '", a.name, "' and '", b.name, "'");
    if (a.number != b.number || a.flags != b.flags || a.parent != b.parent)
        return "number, flags or parent differ";
    if (!same(a.pivot, b.pivot))
        return "pivots differ";
    if (!same(a.chunks, b.chunks))
        return "file records differ";
    if (a.points.size() != b.points.size())
        return text("points: ", a.points.size(), " and ", b.points.size());
    for (std::size_t i = 0; i < a.points.size(); ++i)
        if (!same(a.points[i], b.points[i]))
            return text("point ", i, ": positions differ");
    std::string found = difference(a.polygons, b.polygons);
    if (!found.empty())
        return found;
    if (a.maps.size() != b.maps.size())
        return text("maps: ", a.maps.size(), " and ", b.maps.size());
    for (std::size_t i = 0; i < a.maps.size(); ++i) {
        found = difference(a.maps[i], b.maps[i], a.points.size());
        if (!found.empty())
            return text("map ", i, ": ", found);
    }
    return {};
}

} // namespace detail

/// What differs first between two documents, in words; empty when they are equal to the last bit.
[[nodiscard]] inline std::string first_difference(const mesh::Document& a, const mesh::Document& b)
{
    if (a.layers.size() != b.layers.size())
        return detail::text("layers: ", a.layers.size(), " and ", b.layers.size());
    for (std::size_t i = 0; i < a.layers.size(); ++i) {
        const std::string found = detail::difference(a.layers[i], b.layers[i]);
        if (!found.empty())
            return detail::text("layer ", i, ": ", found);
    }
    if (a.tags.size() != b.tags.size())
        return detail::text("tags: ", a.tags.size(), " and ", b.tags.size());
    for (mesh::TagIndex i = 0; i < a.tags.size(); ++i)
        if (a.tags[i] != b.tags[i])
            return detail::text("tag ", i, ": '", a.tags[i], "' and '", b.tags[i], "'");
    if (a.file_tags != b.file_tags)
        return "the number of tags from the file differs";
    if (!detail::same(a.head, b.head) || !detail::same(a.tail, b.tail))
        return "file records differ";
    return {};
}

} // namespace support
