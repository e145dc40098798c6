// SPDX-License-Identifier: MIT
#include "tests/literal/command.h"

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/literal/kernel/face.h"
#include "tests/literal/positions.h"
#include "tests/literal/weights.h"

namespace literal {

namespace {

/// The lines of the message that refuses a scene before the panel; empty for a usable scene.
std::vector<std::string> refusal_of(const Scene& scene)
{
    int polygons = 0;
    int selected = 0;
    for (const ScenePolygon& polygon : scene.polygons) {
        if (polygon.side != Side::foreground) {
            continue;
        }
        ++polygons;
        if (polygon.selected) {
            ++selected;
        }
    }
    if (polygons == 0) {
        return {"Need some polys to clone on them"};
    }
    for (const ScenePolygon& polygon : scene.polygons) {
        if (polygon.side == Side::foreground && polygon.selected && polygon.type != "FACE") {
            --selected;
        }
    }
    if (selected == 0) {
        return {"SubDivs not supported in the foreground Layer"};
    }
    for (const ScenePoint& point : scene.points) {
        if (point.side == Side::background) {
            return {};
        }
    }
    return {"Need some geometry in the background layer(s) to clone"};
}

bool too_flat_or_steep(Vec3 n, const Settings& settings)
{
    const double slope = std::atan2(std::sqrt(n.x * n.x + n.z * n.z), n.y);
    return slope > settings.slope_max || settings.slope_min > slope;
}

std::vector<Face> usable_faces(const Scene& scene, const Settings& settings)
{
    std::vector<Face> faces;
    for (std::size_t i = 0; i < scene.polygons.size(); ++i) {
        const ScenePolygon& polygon = scene.polygons[i];
        if (polygon.side != Side::foreground || polygon.type != "FACE" || !polygon.selected) {
            continue;
        }
        if (settings.slope_limits == 1 && too_flat_or_steep(polygon.normal, settings)) {
            continue;
        }
        Face face;
        face.polygon = i;
        face.normal = polygon.normal;
        for (const std::size_t point : polygon.points) {
            face.points.push_back(scene.points[point].position);
        }
        faces.push_back(face);
    }
    return faces;
}

} // namespace

Result Command::run(const Scene& scene, const std::optional<Settings>& confirmed)
{
    Result result;
    result.next_panel = settings_;
    result.refusal = refusal_of(scene);
    if (!result.refusal.empty() || !confirmed.has_value()) {
        return result;
    }
    const WeightReader weights(scene);
    settings_ = *confirmed;
    result.next_panel = settings_;

    const std::vector<Face> faces = usable_faces(scene, settings_);
    if (faces.empty()) {
        // Only slope limits can leave nothing here; a scene without a selected face went before.
        result.refusal = {"Change slope angle settings", "There are no valid polys to clone on."};
        return result;
    }

    std::vector<double> size_weights;
    if (settings_.size_wg > 0) {
        for (const Face& face : faces) {
            size_weights.push_back(weights.mean(face.polygon, weights.chosen(settings_.size_wg)));
        }
    }

    const Layout layout = draw_positions(faces, settings_, weights, sampler_);
    result.positions.assign(layout.positions.begin(), layout.positions.end());

    CloneCopier copier(scene, settings_, size_weights, layout.mean_area, sampler_, draws_, result);
    std::int32_t index = 0;
    for (const Position& position : result.positions) {
        copier.copy(index, position);
        ++index;
    }
    for (WrittenMap& map : result.maps) {
        map.values.resize(result.points.size());
    }
    return result;
}

} // namespace literal
