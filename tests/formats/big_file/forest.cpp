// SPDX-License-Identifier: MIT
#include "tests/formats/big_file/forest.h"

#include <array>
#include <bit>
#include <cstddef>
#include <span>

#include <fmt/format.h>

namespace big_file {

namespace {

constexpr std::uint32_t tree_points = 205;
constexpr std::uint32_t tree_polygons = 192;
constexpr std::uint32_t polygon_points = 4;

/// A number from 0 on that singles hold exactly and that hardly repeats.
float mixed(std::uint32_t a, std::uint32_t b)
{
    std::uint32_t bits = (a * 0x9E3779B1u) ^ (b * 0x85EBCA77u);
    bits ^= bits >> 15u;
    return static_cast<float>(bits >> 9u) / 1024.0f;
}

mesh::Vec3 point_at(std::uint32_t point)
{
    return {static_cast<double>(mixed(point, 1)), static_cast<double>(-mixed(point, 2)),
            static_cast<double>(mixed(point, 3))};
}

std::array<std::uint32_t, polygon_points> corners_of(std::uint32_t polygon)
{
    const std::uint32_t first = polygon / tree_polygons * tree_points;
    const std::uint32_t own = polygon % tree_polygons;
    return {first + own, first + own + 1, first + own + 13, first + (own + 7) % tree_points};
}

std::array<float, 2> texture_at(std::uint32_t point) { return {mixed(point, 4), mixed(point, 5)}; }
float weight_at(std::uint32_t point) { return mixed(point, 6); }
float number_at(std::uint32_t point, std::uint32_t trees)
{
    const std::uint32_t tree = point / tree_points;
    return static_cast<float>(tree) / static_cast<float>(trees);
}

bool same_bits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool same_bits(std::span<const float> a, std::span<const float> b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::bit_cast<std::uint32_t>(a[i]) != std::bit_cast<std::uint32_t>(b[i]))
            return false;
    return true;
}

struct MapSample {
    mesh::FourCC type;
    const char* name;
    std::size_t dimension;
};
constexpr std::array<MapSample, 3> map_samples{
    {{mesh::map_txuv, "Bark", 2}, {mesh::map_wght, "Bend", 1}, {mesh::map_wght, "DT_index", 1}}};

/// Puts the value of a point in a map into `value`.
std::span<const float> map_value(std::size_t map, std::uint32_t point, std::uint32_t trees,
                                 std::array<float, 2>& value)
{
    if (map == 0)
        value = texture_at(point);
    else
        value[0] = map == 1 ? weight_at(point) : number_at(point, trees);
    return std::span<const float>(value).first(map_samples[map].dimension);
}

/// The first difference between a layer and the forest from a point and a polygon on.
std::string layer_difference(const mesh::Layer& layer, std::uint32_t first_point,
                             std::uint32_t first_polygon, std::uint32_t trees)
{
    for (std::uint32_t i = 0; i < layer.points.size(); ++i) {
        const mesh::Vec3 wanted = point_at(first_point + i);
        const mesh::Vec3& found = layer.points[i];
        if (!same_bits(found.x, wanted.x) || !same_bits(found.y, wanted.y) ||
            !same_bits(found.z, wanted.z))
            return fmt::format("point {} differs", first_point + i);
    }
    for (std::uint32_t i = 0; i < layer.polygons.size(); ++i) {
        const auto wanted = corners_of(first_polygon + i);
        const auto found = layer.polygons.points(i);
        bool same = found.size() == wanted.size() && layer.polygons.surface(i) == 0 &&
                    layer.polygons.type(i) == mesh::polygon_face;
        for (std::size_t corner = 0; same && corner < wanted.size(); ++corner)
            same = found[corner] + first_point == wanted[corner];
        if (!same)
            return fmt::format("polygon {} differs", first_polygon + i);
    }
    if (layer.maps.size() != map_samples.size())
        return fmt::format("there are {} vertex maps", layer.maps.size());
    for (std::size_t map = 0; map < map_samples.size(); ++map) {
        const mesh::VertexMap& found = layer.maps[map];
        const MapSample& wanted = map_samples[map];
        if (found.type() != wanted.type || found.name() != wanted.name ||
            found.dimension() != wanted.dimension || found.size() != layer.points.size())
            return fmt::format("vertex map {} differs", map);
        std::array<float, 2> value{};
        for (std::uint32_t i = 0; i < layer.points.size(); ++i)
            if (!same_bits(found.find(i), map_value(map, first_point + i, trees, value)))
                return fmt::format("the value of point {} in map {} differs", first_point + i,
                                   found.name());
    }
    return {};
}

} // namespace

mesh::Document make_forest(std::uint32_t trees)
{
    mesh::Document document;
    const mesh::TagIndex bark = document.tags.append("Bark");
    mesh::Layer& layer = document.layers.emplace_back();
    layer.name = "Forest";
    const std::uint32_t points = trees * tree_points;
    const std::uint32_t polygons = trees * tree_polygons;
    layer.points.reserve(points);
    for (std::uint32_t point = 0; point < points; ++point)
        layer.points.push_back(point_at(point));
    layer.polygons.reserve(polygons, std::size_t{polygons} * polygon_points);
    for (std::uint32_t polygon = 0; polygon < polygons; ++polygon) {
        layer.polygons.add(mesh::polygon_face, corners_of(polygon));
        layer.polygons.set_surface(polygon, bark);
    }
    std::array<float, 2> value{};
    for (std::size_t i = 0; i < map_samples.size(); ++i) {
        mesh::VertexMap& map = layer.maps.emplace_back(map_samples[i].type, map_samples[i].name,
                                                       map_samples[i].dimension);
        for (std::uint32_t point = 0; point < points; ++point)
            map.set(point, map_value(i, point, trees, value));
    }
    return document;
}

std::string difference_from_forest(const mesh::Document& document, std::uint32_t trees)
{
    std::uint32_t points = 0;
    std::uint32_t polygons = 0;
    for (const mesh::Layer& layer : document.layers) {
        std::string found = layer_difference(layer, points, polygons, trees);
        if (!found.empty())
            return layer.name + ": " + found;
        points += static_cast<std::uint32_t>(layer.points.size());
        polygons += static_cast<std::uint32_t>(layer.polygons.size());
    }
    if (points != trees * tree_points || polygons != trees * tree_polygons)
        return fmt::format("there are {} points and {} polygons in {} layers", points, polygons,
                           document.layers.size());
    if (document.tags.size() != 1 || document.tags[0] != "Bark")
        return "the tags differ";
    return {};
}

} // namespace big_file
