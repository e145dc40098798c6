// SPDX-License-Identifier: MIT
#include "tests/whole/scenes.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace whole {

namespace {

using Corners = std::vector<std::uint32_t>;

constexpr mesh::FourCC tag_part = mesh::fourcc("PART");
constexpr mesh::FourCC type_subd = mesh::fourcc("SUBD");

std::uint32_t add_point(mesh::Layer& layer, double x, double y, double z)
{
    layer.points.push_back({x, y, z});
    return static_cast<std::uint32_t>(layer.points.size() - 1);
}

std::uint32_t add_random_point(mesh::Layer& layer, Numbers& numbers, double size)
{
    const double x = numbers.real(-size, size);
    const double y = numbers.real(-size, size);
    return add_point(layer, x, y, numbers.real(-size, size));
}

/// A grid of hills, its cells quads or pairs of triangles.
void add_terrain(mesh::Layer& layer, Numbers& numbers, double left)
{
    constexpr int cells = 4;
    std::vector<std::uint32_t> points;
    for (int row = 0; row <= cells; ++row)
        for (int column = 0; column <= cells; ++column)
            points.push_back(add_point(layer, left + column * numbers.real(0.9, 1.1),
                                       std::sin(column * 0.9) + std::cos(row * 0.7),
                                       row * numbers.real(0.9, 1.1)));
    for (int row = 0; row < cells; ++row) {
        for (int column = 0; column < cells; ++column) {
            const auto at = [&](int r, int c) {
                return points[static_cast<std::size_t>((row + r) * (cells + 1) + column + c)];
            };
            if (numbers.chance(60)) {
                layer.polygons.add(mesh::polygon_face,
                                   Corners{at(0, 0), at(1, 0), at(1, 1), at(0, 1)});
            } else {
                layer.polygons.add(mesh::polygon_face, Corners{at(0, 0), at(1, 0), at(1, 1)});
                layer.polygons.add(mesh::polygon_face, Corners{at(0, 0), at(1, 1), at(0, 1)});
            }
        }
    }
}

/// The six sides of a box and some free triangles: normals along all axes and between them.
void add_walls(mesh::Layer& layer, Numbers& numbers)
{
    std::uint32_t corner[8];
    for (unsigned i = 0; i < 8; ++i)
        corner[i] = add_point(layer, (i & 1u) != 0 ? 2.0 : 0.0, (i & 2u) != 0 ? 3.0 : 0.0,
                              (i & 4u) != 0 ? 1.5 : 0.0);
    const unsigned sides[6][4] = {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1},
                                  {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}};
    for (const auto& side : sides)
        layer.polygons.add(mesh::polygon_face, Corners{corner[side[0]], corner[side[1]],
                                                       corner[side[2]], corner[side[3]]});
    for (int i = 0; i < 6; ++i) {
        const std::uint32_t a = add_random_point(layer, numbers, 4);
        const std::uint32_t b = add_random_point(layer, numbers, 4);
        layer.polygons.add(mesh::polygon_face, Corners{a, b, add_random_point(layer, numbers, 4)});
    }
}

/// Polygons of every number of points, concave ones among them, and types that carry no clones.
void add_shapes(mesh::Layer& layer, Numbers& numbers)
{
    for (int n : {0, 1, 2, 3, 5, 8, 13}) {
        Corners star; // a star: its radius goes in and out
        const double x = numbers.real(-5, 5);
        const double tilt = numbers.real(-0.5, 0.5);
        for (int i = 0; i < n; ++i) {
            const double angle = -6.283185307179586 * i / n;
            const double radius = i % 2 == 0 ? 1.0 : numbers.real(0.2, 0.9);
            star.push_back(add_point(layer, x + radius * std::cos(angle),
                                     tilt * radius * std::cos(angle), radius * std::sin(angle)));
        }
        layer.polygons.add(mesh::polygon_face, star);
        if (n >= 3) {
            layer.polygons.add(numbers.one_of({mesh::polygon_curv, mesh::polygon_ptch, type_subd}),
                               star);
        }
    }
}

void add_degenerate(mesh::Layer& layer, Numbers& numbers)
{
    const std::uint32_t a = add_point(layer, 0, 0, 0);
    const std::uint32_t twin = add_point(layer, 0, 0, 0);
    const std::uint32_t b = add_point(layer, 1, 0, 0);
    const std::uint32_t c = add_point(layer, 3, 0, 0);
    const std::uint32_t d = add_point(layer, 0.5, 0.25, 1);
    const std::uint32_t far_away = add_point(layer, 1e9, -1e9, 1e9);
    layer.polygons.add(mesh::polygon_face, Corners{a, b, c});       // on a line
    layer.polygons.add(mesh::polygon_face, Corners{a, a, a});       // in a point
    layer.polygons.add(mesh::polygon_face, Corners{a, twin, b, d}); // no first edge
    layer.polygons.add(mesh::polygon_face, Corners{a, b, d});
    layer.polygons.add(mesh::polygon_face, Corners{a, b, d, a, b, d});
    if (numbers.chance(50))
        layer.polygons.add(mesh::polygon_face, Corners{a, d, far_away});
    for (int i = 0; i < 4; ++i) { // on a line as far as rounding goes: an area that is no number
        const double t = numbers.real(0.1, 0.9);
        const std::uint32_t p = add_random_point(layer, numbers, 3);
        const std::uint32_t q = add_random_point(layer, numbers, 3);
        const mesh::Vec3 from = layer.points[p];
        const mesh::Vec3 to = layer.points[q];
        layer.polygons.add(
            mesh::polygon_face,
            Corners{p, q,
                    add_point(layer, from.x + t * (to.x - from.x), from.y + t * (to.y - from.y),
                              from.z + t * (to.z - from.z))});
    }
}

/// Gives some of the points a value in a map of the layer.
void add_map(mesh::Layer& layer, Numbers& numbers, mesh::FourCC type, const std::string& name,
             std::size_t dimension, int percent, double low, double high)
{
    mesh::VertexMap& map = layer.maps.emplace_back(type, name, dimension);
    std::vector<float> value(dimension);
    for (std::uint32_t point = 0; point < layer.points.size(); ++point) {
        if (!numbers.chance(percent))
            continue;
        for (float& component : value)
            component = static_cast<float>(numbers.real(low, high));
        map.set(point, value);
    }
}

void add_weights(mesh::Layer& layer, Numbers& numbers)
{
    add_map(layer, numbers, mesh::map_wght, "Grass", 1, 100, 0.0, 1.0);
    add_map(layer, numbers, mesh::map_wght, "Stone", 1, 70, -1.0, 1.0);
    add_map(layer, numbers, mesh::map_wght, "Nowhere", 1, 0, 0.0, 1.0);
    add_map(layer, numbers, mesh::map_wght, "Strong", 1, 90, -3.0, 30.0);
}

void name_surfaces(mesh::Document& document, mesh::Layer& layer, Numbers& numbers)
{
    for (std::size_t i = 0; i < layer.polygons.size(); ++i) {
        if (numbers.chance(80))
            layer.polygons.set_surface(
                i, document.tags.intern(numbers.one_of({"Bark", "Leaf", "Soil"})));
        if (numbers.chance(30))
            layer.polygons.set_tag(tag_part, i,
                                   document.tags.intern(numbers.one_of({"Crown", "Trunk"})));
    }
}

void add_ground(Session& session, Ground ground, Numbers& numbers)
{
    mesh::Layer& layer = session.document.layers.emplace_back();
    session.roles.push_back(modeler::LayerRole::foreground);
    switch (ground) {
    case Ground::terrain:
        add_terrain(layer, numbers, 0.0);
        break;
    case Ground::walls:
        add_walls(layer, numbers);
        break;
    case Ground::shapes:
        add_shapes(layer, numbers);
        break;
    case Ground::degenerate:
        add_degenerate(layer, numbers);
        break;
    case Ground::layers:
        add_terrain(layer, numbers, 0.0);
        break;
    }
    add_weights(layer, numbers);
    name_surfaces(session.document, layer, numbers);
    if (ground != Ground::layers)
        return;
    mesh::Layer& hidden = session.document.layers.emplace_back();
    session.roles.push_back(modeler::LayerRole::hidden);
    add_terrain(hidden, numbers, 0.0);
    add_map(hidden, numbers, mesh::map_wght, "Unseen", 1, 100, 0.0, 1.0);
    mesh::Layer& second = session.document.layers.emplace_back();
    session.roles.push_back(modeler::LayerRole::foreground);
    add_terrain(second, numbers, 10.0);
    add_map(second, numbers, mesh::map_wght, "Stone", 1, 50, -1.0, 1.0); // one map in two layers
    add_map(second, numbers, mesh::map_wght, "Second", 1, 50, -1.0, 1.0);
}

void add_tree(mesh::Layer& layer, Numbers& numbers)
{
    std::vector<std::uint32_t> points;
    for (int i = 0; i < 9; ++i)
        points.push_back(add_random_point(layer, numbers, 1));
    for (int i = 0; i < 8; ++i) {
        Corners corners;
        for (int corner = 0; corner < 3 + i % 3; ++corner)
            corners.push_back(points[static_cast<std::size_t>((i * 2 + corner) % 8)]);
        layer.polygons.add(mesh::polygon_face, corners); // the ninth point belongs to none
    }
    add_map(layer, numbers, mesh::map_txuv, "Leaf UV", 2, 100, 0.0, 1.0);
    add_map(layer, numbers, mesh::map_txuv, "Bark UV", 2, 40, -2.0, 2.0);
    add_map(layer, numbers, mesh::map_wght, "Sway", 1, 60, -1.0, 1.0);
    add_map(layer, numbers, mesh::map_wght, "Grass", 1, 60, -1.0, 1.0); // as on the ground
    add_map(layer, numbers, mesh::map_morf, "Bend", 3, 100, -1.0, 1.0);
    add_map(layer, numbers, mesh::map_morf, "Lean", 3, 50, -1.0, 1.0);
    add_map(layer, numbers, mesh::map_mnvw, "Subpatch", 1, 50, 0.0, 1.0);
    add_map(layer, numbers, mesh::map_spot, "Fallen", 3, 70, -5.0, 5.0);
    add_map(layer, numbers, mesh::fourcc("RGBA"), "Colour", 4, 100, 0.0, 1.0);
    if (numbers.chance(50))
        add_map(layer, numbers, mesh::map_wght, "DT_index", 1, 80, 0.0, 1.0);
}

void add_mixed(mesh::Layer& layer, Numbers& numbers)
{
    std::vector<std::uint32_t> p;
    for (int i = 0; i < 5; ++i)
        p.push_back(add_random_point(layer, numbers, 2));
    layer.polygons.add(mesh::polygon_curv, Corners{p[0], p[1], p[2], p[3]});
    layer.polygons.add(mesh::polygon_ptch, Corners{p[1], p[2], p[3], p[4]});
    layer.polygons.add(type_subd, Corners{p[4], p[0], p[4], p[0]});
    layer.polygons.add(mesh::polygon_face, Corners{p[2]});
    layer.polygons.add(mesh::polygon_face, Corners{});
    layer.polygons.set_flags(0, 3);
    add_map(layer, numbers, mesh::map_morf, "Bend", 3, 70, -1.0, 1.0);
    add_map(layer, numbers, mesh::map_spot, "Bend", 3, 70, -1.0, 1.0);
}

void add_model(Session& session, Model model, Numbers& numbers)
{
    const auto add_layer = [&session]() -> mesh::Layer& {
        session.roles.push_back(modeler::LayerRole::background);
        return session.document.layers.emplace_back();
    };
    mesh::Layer& layer = add_layer();
    switch (model) {
    case Model::triangle: {
        const std::uint32_t a = add_point(layer, 0.1, 0, 0);
        const std::uint32_t b = add_point(layer, 0, 0.4, 0);
        layer.polygons.add(mesh::polygon_face, Corners{a, b, add_point(layer, 0, 0, 0.3)});
        break;
    }
    case Model::tree:
        add_tree(layer, numbers);
        break;
    case Model::mixed:
        add_mixed(layer, numbers);
        add_mixed(add_layer(), numbers);
        break;
    case Model::points:
        for (int i = 0; i < 3; ++i)
            (void)add_random_point(layer, numbers, 1);
        break;
    }
    for (std::size_t i = 0; i < session.document.layers.size(); ++i)
        if (session.roles[i] == modeler::LayerRole::background)
            name_surfaces(session.document, session.document.layers[i], numbers);
}

} // namespace

Session make_session(Ground ground, Model model, Numbers& numbers)
{
    Session session;
    add_ground(session, ground, numbers);
    add_model(session, model, numbers);
    return session;
}

} // namespace whole
