// SPDX-License-Identifier: MIT
#include "formats/clone_size.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "mesh/clone_numbers.h"

namespace formats {

namespace {

/// Whether the values of a map are copied to the clones.
bool is_copied(const mesh::VertexMap& map)
{
    constexpr std::array<std::pair<mesh::FourCC, std::size_t>, 5> copied{{{mesh::map_txuv, 2},
                                                                          {mesh::map_wght, 1},
                                                                          {mesh::map_morf, 3},
                                                                          {mesh::map_mnvw, 1},
                                                                          {mesh::map_spot, 3}}};
    const bool is_clone_number =
        map.type() == mesh::map_wght && map.name() == mesh::clone_number_map;
    return !is_clone_number && std::find(copied.begin(), copied.end(),
                                         std::pair(map.type(), map.dimension())) != copied.end();
}

} // namespace

void add_clone_of(const mesh::Layer& layer, CopiedMesh& clone)
{
    std::vector<bool> used(layer.points.size(), false);
    std::uint64_t points = 0;
    for (std::size_t p = 0; p < layer.polygons.size(); ++p) {
        for (const std::uint32_t point : layer.polygons.points(p)) {
            points += used[point] ? 0u : 1u;
            used[point] = true;
        }
        clone.corners += layer.polygons.points(p).size();
        clone.tags += layer.polygons.surface(p) != mesh::no_tag ? 1u : 0u;
    }
    clone.points += points;
    clone.polygons += layer.polygons.size();
    clone.map_values += points; // the clone's number
    clone.map_numbers += points;
    std::set<std::pair<mesh::FourCC, std::string_view>> seen;
    for (const mesh::VertexMap& map : layer.maps) {
        // The first of several maps of the same type and name counts.
        if (!seen.emplace(map.type(), map.name()).second || !is_copied(map))
            continue;
        map.for_each([&](std::uint32_t point, std::span<const float> value) {
            if (point < used.size() && used[point]) {
                ++clone.map_values;
                clone.map_numbers += value.size();
            }
        });
    }
}

} // namespace formats
