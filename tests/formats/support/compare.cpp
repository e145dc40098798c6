// SPDX-License-Identifier: MIT
#include "tests/formats/support/compare.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace test {

namespace {

bool same(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool same(const mesh::Vec3& a, const mesh::Vec3& b)
{
    return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z);
}

template <typename T> bool same_bytes(const T* a, const T* b, std::size_t count)
{
    return count == 0 || std::memcmp(a, b, count * sizeof(T)) == 0;
}

template <typename T> bool same(const mesh::Buffer<T>& a, const mesh::Buffer<T>& b)
{
    return a.size() == b.size() && same_bytes(a.data(), b.data(), a.size());
}

std::string chunks_difference(const std::vector<mesh::FileChunk>& a,
                              const std::vector<mesh::FileChunk>& b, const std::string& where)
{
    if (a.size() != b.size())
        return where + ": number of chunks";
    for (std::size_t i = 0; i < a.size(); ++i) {
        const bool same_chunk = a[i].id == b[i].id && a[i].role == b[i].role &&
                                a[i].kind == b[i].kind && a[i].map == b[i].map &&
                                a[i].begin == b[i].begin && a[i].end == b[i].end;
        const bool computed = a[i].role == mesh::ChunkRole::bounds;
        if (!same_chunk || (!computed && a[i].body != b[i].body))
            return where + ": chunk " + mesh::to_text(a[i].id) + " number " + std::to_string(i);
    }
    return {};
}

std::string text_of(const mesh::TagList& tags, mesh::TagIndex tag)
{
    return tag == mesh::no_tag ? "no tag" : "tag " + tags[tag];
}

std::string polygon_difference(const mesh::Polygons& a, const mesh::TagList& a_tags,
                               const mesh::Polygons& b, const mesh::TagList& b_tags)
{
    if (a.size() != b.size())
        return "number of polygons";
    auto kinds = a.other_tag_kinds();
    kinds.push_back(mesh::tag_surf);
    if (b.other_tag_kinds().size() + 1 > kinds.size())
        return "kinds of tags";
    for (std::size_t p = 0; p < a.size(); ++p) {
        const std::string where = " of polygon " + std::to_string(p);
        if (a.type(p) != b.type(p))
            return "type" + where;
        if (a.flags(p) != b.flags(p))
            return "flags" + where;
        if (!std::ranges::equal(a.points(p), b.points(p)))
            return "points" + where;
        for (const mesh::FourCC kind : kinds)
            if (text_of(a_tags, a.tag(kind, p)) != text_of(b_tags, b.tag(kind, p)))
                return mesh::to_text(kind) + where;
    }
    return {};
}

std::string map_difference(const mesh::VertexMap& a, const mesh::VertexMap& b)
{
    if (a.type() != b.type() || a.name() != b.name() || a.dimension() != b.dimension())
        return "identity";
    std::vector<std::uint32_t> a_points;
    std::vector<std::uint32_t> b_points;
    a.for_each([&](std::uint32_t point, std::span<const float>) { a_points.push_back(point); });
    b.for_each([&](std::uint32_t point, std::span<const float>) { b_points.push_back(point); });
    if (a_points != b_points)
        return "points with values";
    if (a.values().size() != b.values().size() ||
        !same_bytes(a.values().data(), b.values().data(), a.values().size()))
        return "values";
    if (!same(a.corners().polygons, b.corners().polygons) ||
        !same(a.corners().points, b.corners().points))
        return "corners";
    if (!same(a.corners().values, b.corners().values))
        return "corner values";
    return {};
}

} // namespace

std::string mesh_difference(const mesh::Layer& a, const mesh::TagList& a_tags, const mesh::Layer& b,
                            const mesh::TagList& b_tags)
{
    if (a.points.size() != b.points.size())
        return "number of points";
    for (std::size_t i = 0; i < a.points.size(); ++i)
        if (!same(a.points[i], b.points[i]))
            return "point " + std::to_string(i);
    if (const auto text = polygon_difference(a.polygons, a_tags, b.polygons, b_tags); !text.empty())
        return text;
    if (a.maps.size() != b.maps.size())
        return "number of maps";
    for (std::size_t i = 0; i < a.maps.size(); ++i)
        if (const auto text = map_difference(a.maps[i], b.maps[i]); !text.empty())
            return text + " of map " + std::to_string(i);
    return {};
}

std::string difference(const mesh::Document& a, const mesh::Document& b)
{
    if (a.tags.size() != b.tags.size())
        return "number of tags";
    for (std::size_t i = 0; i < a.tags.size(); ++i)
        if (const auto tag = static_cast<mesh::TagIndex>(i); a.tags[tag] != b.tags[tag])
            return "tag " + std::to_string(i);
    if (a.layers.size() != b.layers.size())
        return "number of layers";
    for (std::size_t i = 0; i < a.layers.size(); ++i) {
        const mesh::Layer& x = a.layers[i];
        const mesh::Layer& y = b.layers[i];
        const std::string where = "layer " + std::to_string(i);
        if (x.name != y.name || x.number != y.number || x.flags != y.flags ||
            x.parent != y.parent || !same(x.pivot, y.pivot))
            return where + ": heading";
        if (const auto text = mesh_difference(x, a.tags, y, b.tags); !text.empty())
            return where + ": " + text;
        if (const auto text = chunks_difference(x.chunks, y.chunks, where); !text.empty())
            return text;
    }
    if (const auto text = chunks_difference(a.head, b.head, "head"); !text.empty())
        return text;
    return chunks_difference(a.tail, b.tail, "tail");
}

} // namespace test
