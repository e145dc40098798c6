// SPDX-License-Identifier: MIT
#include "picture/scene/picking.h"

#include <algorithm>

#include "picture/scene/traced_scene.h"

namespace picture {

std::optional<Pick> pick(const Scene& scene, const View& view, double x, double y)
{
    const TracedScene& traced = scene.traced();
    const auto hit = traced.trace(view.ray(x, y));
    if (!hit)
        return std::nullopt;
    const std::uint32_t polygon = traced.polygon_of(*hit);
    if (polygon == no_polygon)
        return std::nullopt;
    return Pick{{hit->part, polygon}, traced.world_place(hit->place)};
}

std::vector<PolygonId> visible_polygons(const Scene& scene, const View& view,
                                        PixelRectangle rectangle)
{
    std::vector<PolygonId> seen;
    const int right = std::min(rectangle.right, view.width());
    const int bottom = std::min(rectangle.bottom, view.height());
    for (int y = std::max(rectangle.top, 0); y < bottom; ++y) {
        for (int x = std::max(rectangle.left, 0); x < right; ++x) {
            const auto picked = pick(scene, view, x + 0.5, y + 0.5);
            if (picked && (seen.empty() || seen.back() != picked->polygon))
                seen.push_back(picked->polygon);
        }
    }
    std::sort(seen.begin(), seen.end());
    seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    return seen;
}

} // namespace picture
