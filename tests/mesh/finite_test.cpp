// SPDX-License-Identifier: MIT
#include <array>
#include <limits>

#include <gtest/gtest.h>

#include "mesh/finite.h"
#include "mesh/polygons.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

mesh::Layer two_triangles()
{
    mesh::Layer layer;
    for (int i = 0; i < 5; ++i)
        layer.points.push_back({i * 1.0, 0.0, i * i * 1.0});
    layer.polygons.add(mesh::polygon_face, std::array<std::uint32_t, 3>{0, 1, 2});
    layer.polygons.add(mesh::polygon_face, std::array<std::uint32_t, 3>{1, 2, 3});
    return layer;
}

TEST(Finite, APointNeedsThreeFiniteCoordinates)
{
    EXPECT_TRUE(mesh::is_finite({1e308, -0.0, 5e-324}));
    EXPECT_FALSE(mesh::is_finite({not_a_number, 0, 0}));
    EXPECT_FALSE(mesh::is_finite({0, infinity, 0}));
    EXPECT_FALSE(mesh::is_finite({0, 0, -infinity}));
}

TEST(Finite, CornersAreCountedAndTheFirstIsNamed)
{
    mesh::Layer layer = two_triangles();
    EXPECT_EQ(mesh::find_non_finite_corners(layer).count, 0U);
    layer.points[2].y = not_a_number; // a corner of both
    layer.points[3].x = infinity;
    const mesh::NonFiniteCorners found = mesh::find_non_finite_corners(layer);
    EXPECT_EQ(found.count, 3U);
    EXPECT_EQ(found.polygon, 0U);
    EXPECT_EQ(found.corner, 2U);
    EXPECT_EQ(found.point, 2U);
}

TEST(Finite, APointThatNoPolygonHasDoesNotCount)
{
    mesh::Layer layer = two_triangles();
    layer.points[4].x = not_a_number;
    EXPECT_EQ(mesh::find_non_finite_corners(layer).count, 0U);
}

} // namespace
