// SPDX-License-Identifier: MIT
#include "modeler/ground_slopes.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

namespace {

using modeler::LayerRole;

/// Adds a triangle that slopes so many degrees.
void add_slope(mesh::Layer& layer, double degrees, mesh::FourCC type = mesh::polygon_face)
{
    const double angle = degrees * std::numbers::pi / 180.0;
    const auto first = static_cast<std::uint32_t>(layer.points.size());
    layer.points.push_back({0.0, 0.0, 0.0});
    layer.points.push_back({0.0, 0.0, 1.0});
    layer.points.push_back({std::cos(angle), std::sin(angle), 0.0});
    layer.polygons.add(type, std::vector<std::uint32_t>{first, first + 1, first + 2});
}

mesh::Document slopes(std::initializer_list<double> degrees)
{
    mesh::Document document;
    mesh::Layer& layer = document.layers.emplace_back();
    for (const double one : degrees)
        add_slope(layer, one);
    return document;
}

TEST(GroundSlopes, AreTheLeastAndTheGreatest)
{
    const mesh::Document document = slopes({20.0, 0.0, 47.56, 30.0});
    const auto found = modeler::ground_slopes(document, {LayerRole::foreground});
    ASSERT_TRUE(found);
    EXPECT_NEAR(found->least_deg, 0.0, 1e-9);
    EXPECT_NEAR(found->greatest_deg, 47.56, 1e-9);
    EXPECT_EQ(modeler::to_sentence(*found), "the ground's polygons slope 0 to 47.6 degrees");
    EXPECT_FALSE(modeler::ground_slopes(document, {LayerRole::background}));
}

TEST(GroundSlopes, GoUpToFacingDown)
{
    const auto found = modeler::ground_slopes(slopes({180.0}), {LayerRole::foreground});
    ASSERT_TRUE(found);
    EXPECT_EQ(modeler::to_sentence(*found), "the ground's polygons all slope 180 degrees");
}

TEST(GroundSlopes, AreThoseOfSelectedFacesWithAnArea)
{
    mesh::Document document = slopes({10.0, 60.0});
    mesh::Layer& layer = document.layers[0];
    add_slope(layer, 80.0, mesh::polygon_ptch);
    layer.polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{0, 0, 0});
    EXPECT_NEAR(modeler::ground_slopes(document, {LayerRole::foreground})->greatest_deg, 60.0,
                1e-9);
    layer.polygons.select(0, true);
    layer.polygons.select(2, true);
    EXPECT_NEAR(modeler::ground_slopes(document, {LayerRole::foreground})->greatest_deg, 10.0,
                1e-9);
    layer.polygons.select(0, false);
    EXPECT_FALSE(modeler::ground_slopes(document, {LayerRole::foreground}));
}

} // namespace
