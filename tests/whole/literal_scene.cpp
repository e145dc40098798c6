// SPDX-License-Identifier: MIT
#include "tests/whole/literal_scene.h"

#include <cstdint>
#include <string>

#include "mesh/normal.h"

namespace whole {

namespace {

bool any_selected(const mesh::Document& document, const std::vector<modeler::LayerRole>& roles,
                  modeler::LayerRole role)
{
    for (std::size_t i = 0; i < roles.size(); ++i)
        for (std::size_t p = 0; roles[i] == role && p < document.layers[i].polygons.size(); ++p)
            if (document.layers[i].polygons.selected(p))
                return true;
    return false;
}

literal::SceneMap& map_of(literal::Scene& scene, const std::string& type, const std::string& name)
{
    for (literal::SceneMap& map : scene.maps)
        if (map.type == type && map.name == name)
            return map;
    scene.maps.push_back({type, name, {}});
    return scene.maps.back();
}

} // namespace

LiteralScene literal_scene(const mesh::Document& document,
                           const std::vector<modeler::LayerRole>& roles)
{
    LiteralScene result;
    literal::Scene& scene = result.scene;
    for (const modeler::LayerRole role :
         {modeler::LayerRole::foreground, modeler::LayerRole::background}) {
        const literal::Side side = role == modeler::LayerRole::foreground
                                       ? literal::Side::foreground
                                       : literal::Side::background;
        const bool all = !any_selected(document, roles, role);
        for (std::size_t i = 0; i < roles.size(); ++i) {
            if (roles[i] != role)
                continue;
            const mesh::Layer& layer = document.layers[i];
            const std::size_t first = scene.points.size();
            for (std::size_t p = 0; p < layer.points.size(); ++p) {
                const mesh::Vec3& at = layer.points[p];
                scene.points.push_back({{at.x, at.y, at.z}, side});
            }
            for (std::size_t p = 0; p < layer.polygons.size(); ++p) {
                const mesh::Vec3 normal = mesh::polygon_normal(layer, p);
                literal::ScenePolygon polygon;
                polygon.type = mesh::to_text(layer.polygons.type(p));
                for (const std::uint32_t point : layer.polygons.points(p))
                    polygon.points.push_back(first + point);
                polygon.side = side;
                polygon.selected = all || layer.polygons.selected(p);
                polygon.normal = {normal.x, normal.y, normal.z};
                scene.polygons.push_back(polygon);
                result.places.push_back({i, p});
            }
            for (const mesh::VertexMap& map : layer.maps) {
                literal::SceneMap& target = map_of(scene, mesh::to_text(map.type()), map.name());
                target.values.resize(scene.points.size());
                map.for_each([&](std::uint32_t point, std::span<const float> value) {
                    target.values[first + point].emplace(value.begin(), value.end());
                });
            }
        }
    }
    return result;
}

} // namespace whole
