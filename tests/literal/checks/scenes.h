// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/literal/scene.h"

namespace literal {

/// Adds a polygon with points of its own, all on one side.
inline void add_polygon(Scene& scene, Side side, const std::vector<Vec3>& corners,
                        Vec3 normal = {0.0, 1.0, 0.0})
{
    ScenePolygon polygon;
    polygon.side = side;
    polygon.normal = normal;
    for (const Vec3& corner : corners) {
        polygon.points.push_back(scene.points.size());
        scene.points.push_back({corner, side});
    }
    scene.polygons.push_back(polygon);
}

/// A unit square on the ground whose corner nearest to the origin is (x, 0, 0). Its points are the
/// next four.
inline void add_ground(Scene& scene, double x = 0.0)
{
    add_polygon(scene, Side::foreground,
                {{x, 0.0, 0.0}, {x + 1.0, 0.0, 0.0}, {x + 1.0, 0.0, 1.0}, {x, 0.0, 1.0}});
}

/// One square of ground (points 0 to 3) under a background triangle (points 4 to 6).
inline Scene square_and_triangle()
{
    Scene scene;
    add_ground(scene);
    add_polygon(scene, Side::background, {{1.0, 0.0, 0.0}, {0.0, 2.0, 0.0}, {0.0, 0.0, 4.0}});
    return scene;
}

/// A map that holds the same value at each of some points.
inline SceneMap map_at(const Scene& scene, const std::string& type, const std::string& name,
                       const std::vector<std::size_t>& points, const std::vector<float>& value)
{
    SceneMap map{type, name, {}};
    map.values.resize(scene.points.size());
    for (const std::size_t point : points) {
        map.values[point] = value;
    }
    return map;
}

/// Settings that copy as things are: no variation, no rotation, no alignment.
inline Settings still()
{
    Settings settings;
    settings.h_min = settings.h_max = 0.0;
    settings.p_min = settings.p_max = 0.0;
    settings.b_min = settings.b_max = 0.0;
    settings.size_var_x = settings.size_var_y = settings.size_var_z = 0.0;
    settings.h_align = settings.p_align = 0;
    return settings;
}

} // namespace literal
