// SPDX-License-Identifier: MIT
#include "bench/scenes.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <stdexcept>
#include <string>

namespace bench {

namespace {

double hilly(double x, double z)
{
    return 3 * std::sin(x * 0.21) * std::cos(z * 0.17) + 2 * std::sin(x * 0.53 + z * 0.37) +
           0.6 * std::sin(x * 1.3 - z * 1.1);
}

/// A square of `side` x `side` quads, 100 m wide, at the given heights.
template <typename Height> mesh::Layer terrain(std::uint32_t side, Height height)
{
    mesh::Layer layer;
    for (std::uint32_t row = 0; row <= side; ++row) {
        for (std::uint32_t column = 0; column <= side; ++column) {
            const double x = 100.0 * column / side;
            const double z = 100.0 * row / side;
            layer.points.push_back({x, height(x, z), z});
        }
    }
    for (std::uint32_t row = 0; row < side; ++row) {
        for (std::uint32_t column = 0; column < side; ++column) {
            const std::uint32_t corner = row * (side + 1) + column;
            layer.polygons.add(mesh::polygon_face, std::array{corner, corner + side + 1,
                                                              corner + side + 2, corner + 1});
        }
    }
    return layer;
}

mesh::Layer hills(std::uint32_t side)
{
    mesh::Layer layer = terrain(side, hilly);
    mesh::VertexMap density(mesh::map_wght, "Density", 1);
    for (std::uint32_t p = 0; p < layer.points.size(); ++p)
        density.set(p, std::array{static_cast<float>(layer.points[p].y / 6)});
    layer.maps.push_back(std::move(density));
    return layer;
}

mesh::Layer cube()
{
    mesh::Layer layer;
    for (std::uint32_t p = 0; p < 8; ++p)
        layer.points.push_back(
            {(p & 1U) != 0 ? 0.2 : -0.2, (p & 2U) != 0 ? 0.4 : 0.0, (p & 4U) != 0 ? 0.2 : -0.2});
    const std::array<std::array<std::uint32_t, 4>, 6> sides{
        {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 4, 6, 2}, {1, 3, 7, 5}, {0, 1, 5, 4}, {2, 6, 7, 3}}};
    for (const auto& side : sides)
        layer.polygons.add(mesh::polygon_face, side);
    return layer;
}

/// A tube of `rings` rings of `sides` points and, with `top`, `top` single points above it.
mesh::Layer tube(std::uint32_t rings, std::uint32_t sides, std::uint32_t top)
{
    mesh::Layer layer;
    mesh::VertexMap texture(mesh::map_txuv, "Bark", 2);
    mesh::VertexMap weight(mesh::map_wght, "Sway", 1);
    mesh::VertexMap morph(mesh::map_morf, "Wind", 3);
    const auto add = [&](double radius, double turn, double height) {
        const auto point = static_cast<std::uint32_t>(layer.points.size());
        const double angle = 2 * std::numbers::pi * turn;
        layer.points.push_back({radius * std::cos(angle), height, radius * std::sin(angle)});
        texture.set(point, std::array{static_cast<float>(turn), static_cast<float>(height)});
        weight.set(point, std::array{static_cast<float>(height)});
        morph.set(point, std::array{static_cast<float>(0.1 * height), 0.0F, 0.0F});
    };
    for (std::uint32_t ring = 0; ring < rings; ++ring) {
        const double height = static_cast<double>(ring) / rings;
        for (std::uint32_t side = 0; side < sides; ++side)
            add(0.2 * (1 - 0.8 * height), static_cast<double>(side) / sides, height);
    }
    for (std::uint32_t i = 0; i < top; ++i)
        add(0.0, 0.0, 1 + 0.01 * i);
    for (std::uint32_t ring = 0; ring + 1 < rings; ++ring) {
        for (std::uint32_t side = 0; side < sides; ++side) {
            const std::uint32_t next = (side + 1) % sides;
            const std::uint32_t low = ring * sides;
            layer.polygons.add(mesh::polygon_face, std::array{low + side, low + sides + side,
                                                              low + sides + next, low + next});
        }
    }
    if (top > 0) { // so that all points belong to a polygon
        std::array<std::uint32_t, 3> cap{(rings - 1) * sides, rings * sides,
                                         (rings - 1) * sides + 1};
        for (std::uint32_t i = 0; i < top; ++i) {
            cap[1] = rings * sides + i;
            layer.polygons.add(mesh::polygon_face, cap);
        }
    }
    layer.maps.push_back(std::move(texture));
    layer.maps.push_back(std::move(weight));
    layer.maps.push_back(std::move(morph));
    return layer;
}

} // namespace

mesh::Layer ground(std::string_view name)
{
    if (name == "grid")
        return terrain(100, [](double, double) { return 0.0; });
    if (name == "hills")
        return hills(141);
    if (name == "mountain")
        return hills(1414);
    throw std::invalid_argument("no ground is called " + std::string(name));
}

mesh::Layer model(std::string_view name)
{
    if (name == "cube")
        return cube();
    if (name == "tree")
        return tube(25, 8, 5);
    if (name == "large")
        return tube(100, 50, 0);
    throw std::invalid_argument("no model is called " + std::string(name));
}

} // namespace bench
