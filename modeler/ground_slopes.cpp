// SPDX-License-Identifier: MIT
#include "modeler/ground_slopes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>

#include <fmt/format.h>

#include "hostapi/mesh_edit.h"
#include "mesh/normal.h"
#include "modeler/edit/scope.h"

namespace modeler {

std::optional<GroundSlopes> ground_slopes(const mesh::Document& document,
                                          const std::vector<LayerRole>& roles)
{
    std::optional<GroundSlopes> slopes;
    const Scope scope(document, roles);
    for (const std::uint32_t i : scope.layers(OPLYR_FG)) {
        const mesh::Layer& layer = document.layers[i];
        for (std::size_t polygon = 0; polygon < layer.polygons.size(); ++polygon) {
            if (layer.polygons.type(polygon) != mesh::polygon_face ||
                (!scope.all_selected(i) && !layer.polygons.selected(polygon)))
                continue;
            const mesh::Vec3 normal = mesh::polygon_normal(layer, polygon);
            const double slope =
                std::atan2(std::sqrt(normal.x * normal.x + normal.z * normal.z), normal.y) * 180.0 /
                std::numbers::pi;
            if (std::isnan(slope) || (normal.x == 0.0 && normal.y == 0.0 && normal.z == 0.0))
                continue;
            if (!slopes)
                slopes = GroundSlopes{slope, slope};
            slopes->least_deg = std::min(slopes->least_deg, slope);
            slopes->greatest_deg = std::max(slopes->greatest_deg, slope);
        }
    }
    return slopes;
}

std::string to_sentence(const GroundSlopes& slopes)
{
    // Rounded outwards, so that limits copied from the sentence include all polygons.
    const double least = std::floor(slopes.least_deg * 10.0) / 10.0;
    const double greatest = std::ceil(slopes.greatest_deg * 10.0) / 10.0;
    if (slopes.least_deg == slopes.greatest_deg)
        return fmt::format("the ground's polygons all slope {:.4g} degrees", slopes.least_deg);
    return fmt::format("the ground's polygons slope {:g} to {:g} degrees", least, greatest);
}

} // namespace modeler
