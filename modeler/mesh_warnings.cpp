// SPDX-License-Identifier: MIT
#include "modeler/mesh_warnings.h"

#include <cstddef>
#include <string_view>

#include <fmt/format.h>

#include "mesh/finite.h"
#include "mesh/printable.h"

namespace modeler {

namespace {

using LayerTitle = std::function<std::string(std::size_t)>;

std::string title_by_position(const mesh::Document& document, std::size_t position)
{
    const mesh::Layer& layer = document.layers[position];
    if (layer.name.empty())
        return fmt::format("layer {}", position + 1);
    return fmt::format("layer {} '{}'", position + 1, mesh::printable(layer.name));
}

/// Appends a sentence on the polygons of all layers in this role that have vertices which are not
/// finite.
void warn_of_non_finite(const mesh::Document& document, const std::vector<LayerRole>& roles,
                        const LayerTitle& layer_title, LayerRole role, std::string_view whole,
                        std::string_view consequence, std::vector<std::string>& warnings)
{
    std::size_t count = 0;
    std::string first;
    for (std::size_t i = 0; i < document.layers.size(); ++i) {
        if (roles[i] != role)
            continue;
        const mesh::Layer& layer = document.layers[i];
        const mesh::NonFiniteCorners found = mesh::find_non_finite_corners(layer);
        if (found.count > 0 && count == 0) {
            const mesh::Vec3& point = layer.points[found.point];
            first =
                fmt::format("vertex {} of polygon {} (point {}, at {} {} {}) in {}", found.corner,
                            found.polygon, found.point, point.x, point.y, point.z, layer_title(i));
        }
        count += found.count;
    }
    if (count == 1)
        warnings.push_back(
            fmt::format("the {} has a vertex that is not a finite number: {}; {}; correct the mesh",
                        whole, first, consequence));
    else if (count > 1)
        warnings.push_back(
            fmt::format("the {} has {} vertices that are not finite numbers, the first is {}; {}; "
                        "correct the mesh",
                        whole, count, first, consequence));
}

} // namespace

std::vector<std::string> mesh_warnings(const mesh::Document& document,
                                       const std::vector<LayerRole>& roles,
                                       const LayerTitle& layer_title)
{
    std::vector<std::string> warnings;
    warn_of_non_finite(document, roles, layer_title, LayerRole::foreground, "ground",
                       "the spacing between clones is lost, and clones on such polygons have no "
                       "place that can be shown",
                       warnings);
    warn_of_non_finite(document, roles, layer_title, LayerRole::background, "model",
                       "every clone has it too", warnings);
    return warnings;
}

std::vector<std::string> mesh_warnings(const mesh::Document& document,
                                       const std::vector<LayerRole>& roles)
{
    return mesh_warnings(document, roles, [&](std::size_t position) {
        return title_by_position(document, position);
    });
}

} // namespace modeler
