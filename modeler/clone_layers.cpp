// SPDX-License-Identifier: MIT
#include "modeler/clone_layers.h"

#include <cstdint>
#include <string_view>
#include <unordered_set>

#include <fmt/format.h>

#include "mesh/clone_numbers.h"

namespace modeler {

namespace {

bool any_selected(const mesh::Document& document, const std::vector<LayerRole>& roles)
{
    for (std::size_t i = 0; i < roles.size(); ++i) {
        if (roles[i] != LayerRole::foreground)
            continue;
        const mesh::Polygons& polygons = document.layers[i].polygons;
        for (std::size_t polygon = 0; polygon < polygons.size(); ++polygon)
            if (polygons.selected(polygon))
                return true;
    }
    return false;
}

/// Whether any polygon of the layer belongs to a clone.
/// @param selected_alone  consider only selected polygons
bool has_clone_polygon(const mesh::Layer& layer, bool selected_alone)
{
    if (!mesh::holds_clones(layer))
        return false;
    const mesh::VertexMap& numbers = *layer.find_map(mesh::map_wght, mesh::clone_number_map);
    for (std::size_t i = 0; i < layer.polygons.size(); ++i) {
        const std::span<const std::uint32_t> corners = layer.polygons.points(i);
        if ((!selected_alone || layer.polygons.selected(i)) && !corners.empty() &&
            numbers.has(corners[0]))
            return true;
    }
    return false;
}

} // namespace

std::string clone_layer_name(std::span<const std::string> models)
{
    if (models.empty())
        return "clones";
    if (models.size() == 1)
        return "clones of " + models[0];
    if (models.size() == 2)
        return fmt::format("clones of {} and {}", models[0], models[1]);
    return fmt::format("clones of {} and {} more", models[0], models.size() - 1);
}

std::string free_layer_name(const std::string& name, const mesh::Document& document,
                            std::size_t layers)
{
    std::unordered_set<std::string_view> taken;
    for (std::size_t i = 0; i < layers; ++i)
        taken.insert(document.layers[i].name);
    std::string candidate = name;
    for (std::size_t number = 2; taken.count(candidate) != 0; ++number)
        candidate = fmt::format("{} {}", name, number);
    return candidate;
}

std::string earlier_clones(const mesh::Document& document, const std::vector<LayerRole>& roles,
                           const std::function<std::string(std::size_t)>& layer_title)
{
    constexpr std::size_t most_named = 3;
    const bool selection = any_selected(document, roles);
    std::string layers;
    std::size_t count = 0;
    for (std::size_t i = 0; i < roles.size(); ++i) {
        if (roles[i] != LayerRole::foreground || !has_clone_polygon(document.layers[i], selection))
            continue;
        if (count++ < most_named)
            layers += (layers.empty() ? "" : ", ") + layer_title(i);
    }
    if (count == 0)
        return {};
    if (count > most_named)
        layers += fmt::format(" and {} more", count - most_named);
    return fmt::format("the ground contains clones of an earlier run ({}): new clones will stand "
                       "on those, too",
                       layers);
}

} // namespace modeler
