// SPDX-License-Identifier: MIT
#include "picture/maps/map_values.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace picture {

namespace {

constexpr float none = std::numeric_limits<float>::quiet_NaN();

bool can_be_shown(const mesh::VertexMap& map) { return map.dimension() == 1; }

/// The layer's map of this name, a weight map before any other.
const mesh::VertexMap* find_map(const mesh::Layer& layer, std::string_view name)
{
    const mesh::VertexMap* weights = layer.find_map(mesh::map_wght, name);
    if (weights != nullptr && can_be_shown(*weights))
        return weights;
    const auto found =
        std::find_if(layer.maps.begin(), layer.maps.end(), [&](const mesh::VertexMap& map) {
            return map.name() == name && can_be_shown(map);
        });
    return found == layer.maps.end() ? nullptr : &*found;
}

MapValues::LayerValues take(const mesh::Layer& layer, const mesh::VertexMap& map)
{
    MapValues::LayerValues taken;
    taken.of_point.assign(layer.points.size(), none);
    map.for_each([&](std::uint32_t point, std::span<const float> value) {
        if (point < taken.of_point.size() && std::isfinite(value[0]))
            taken.of_point[point] = value[0];
    });
    for (std::size_t i = 0; i < map.corners().size(); ++i)
        if (std::isfinite(map.corners().values[i]))
            taken.corners.push_back(
                {map.corners().polygons[i], map.corners().points[i], map.corners().values[i]});
    // For a duplicate corner the last value counts: sort it first.
    std::reverse(taken.corners.begin(), taken.corners.end());
    std::stable_sort(taken.corners.begin(), taken.corners.end(),
                     [](const CornerValue& a, const CornerValue& b) {
                         return std::tie(a.polygon, a.point) < std::tie(b.polygon, b.point);
                     });
    return taken;
}

/// Calls `visit(value)` for every value.
template <typename Visit> void for_each_value(const MapValues& map, Visit visit)
{
    for (const MapValues::LayerValues& layer : map.layers) {
        for (const float value : layer.of_point)
            if (!std::isnan(value))
                visit(value);
        for (const CornerValue& corner : layer.corners)
            visit(corner.value);
    }
}

/// Whether the value is constant on every polygon.
bool is_constant_on_polygons(const MapValues& map, std::span<const SceneLayer> layers)
{
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const MapValues::LayerValues& values = map.layers[i];
        if (!values.corners.empty())
            return false;
        if (values.of_point.empty())
            continue;
        const mesh::Polygons& polygons = layers[i].layer->polygons;
        for (std::size_t polygon = 0; polygon < polygons.size(); ++polygon) {
            const auto points = polygons.points(polygon);
            const float first = values.of_point[points[0]];
            for (const std::uint32_t point : points)
                if (values.of_point[point] != first && !std::isnan(first))
                    return false;
        }
    }
    return true;
}

/// All distinct values in ascending order; empty if there are too few or too many for distinct
/// colours.
std::vector<float> steps_of(const MapValues& map)
{
    constexpr std::size_t fewest = 3;
    constexpr std::size_t most = 1'000'000;
    std::vector<float> steps;
    for_each_value(map, [&](float value) {
        if (steps.empty() || steps.back() != value)
            steps.push_back(value);
    });
    std::sort(steps.begin(), steps.end());
    steps.erase(std::unique(steps.begin(), steps.end()), steps.end());
    if (steps.size() < fewest || steps.size() > most)
        steps.clear();
    return steps;
}

} // namespace

std::vector<std::string> map_names(std::span<const SceneLayer> layers)
{
    std::vector<std::string> names;
    for (const SceneLayer& layer : layers)
        for (const mesh::VertexMap& map : layer.layer->maps)
            if (can_be_shown(map) &&
                std::find(names.begin(), names.end(), map.name()) == names.end())
                names.push_back(map.name());
    return names;
}

std::shared_ptr<const MapValues> read_map(std::span<const SceneLayer> layers, std::string_view name)
{
    auto map = std::make_shared<MapValues>();
    map->name = name;
    bool any = false;
    for (const SceneLayer& layer : layers) {
        const mesh::VertexMap* const found = find_map(*layer.layer, name);
        any |= found != nullptr;
        map->layers.push_back(found != nullptr ? take(*layer.layer, *found)
                                               : MapValues::LayerValues());
    }
    if (!any)
        return nullptr;
    bool first = true;
    for_each_value(*map, [&](float value) {
        map->lowest = first ? value : std::min(map->lowest, value);
        map->highest = first ? value : std::max(map->highest, value);
        first = false;
    });
    if (is_constant_on_polygons(*map, layers))
        map->steps = steps_of(*map);
    return map;
}

float value_at(const MapValues& map, std::uint32_t layer, std::uint32_t polygon,
               std::uint32_t point) noexcept
{
    if (layer >= map.layers.size())
        return none;
    const MapValues::LayerValues& values = map.layers[layer];
    if (!values.corners.empty()) {
        const auto found =
            std::lower_bound(values.corners.begin(), values.corners.end(), std::tie(polygon, point),
                             [](const CornerValue& corner, const auto& wanted) {
                                 return std::tie(corner.polygon, corner.point) < wanted;
                             });
        if (found != values.corners.end() && found->polygon == polygon && found->point == point)
            return found->value;
    }
    return point < values.of_point.size() ? values.of_point[point] : none;
}

} // namespace picture
