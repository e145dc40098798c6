// SPDX-License-Identifier: MIT
#include "cli/commands/scatter_forecast.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "cli/errors.h"
#include "formats/copies_size.h"
#include "formats/errors.h"

namespace cli {

namespace {

constexpr const char* clone_number_map = "DT_index"; // every clone point gets a value in it

/// Whether the values of a map go with the clones.
bool is_copied(const mesh::VertexMap& map)
{
    constexpr std::array<std::pair<mesh::FourCC, std::size_t>, 5> copied{{{mesh::map_txuv, 2},
                                                                          {mesh::map_wght, 1},
                                                                          {mesh::map_morf, 3},
                                                                          {mesh::map_mnvw, 1},
                                                                          {mesh::map_spot, 3}}};
    const bool is_clone_number = map.type() == mesh::map_wght && map.name() == clone_number_map;
    return !is_clone_number && std::find(copied.begin(), copied.end(),
                                         std::pair(map.type(), map.dimension())) != copied.end();
}

/// Adds what a clone gets from one layer of the model.
void add(formats::CopiedMesh& clone, const mesh::Layer& layer)
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
    for (const mesh::VertexMap& map : layer.maps) {
        if (!is_copied(map) || layer.find_map(map.type(), map.name()) != &map)
            continue;
        map.for_each([&](std::uint32_t point, std::span<const float> value) {
            if (point < used.size() && used[point]) {
                ++clone.map_values;
                clone.map_numbers += value.size();
            }
        });
    }
}

} // namespace

void judge_result_size(const mesh::Document& document, std::span<const modeler::LayerRole> roles,
                       std::int64_t clones, const std::string& output)
{
    formats::CopiedMesh clone;
    for (std::size_t i = 0; i < document.layers.size(); ++i)
        if (roles[i] == modeler::LayerRole::background)
            add(clone, document.layers[i]);
    try {
        formats::check_copies_fit(clone,
                                  static_cast<std::uint64_t>(std::max<std::int64_t>(0, clones)));
    } catch (const formats::LimitError& error) {
        throw Failure(ExitStatus::output, fmt::format("{}: {}", output, error.what()));
    }
}

} // namespace cli
