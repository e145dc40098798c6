// SPDX-License-Identifier: MIT
#include "mesh/bounds.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

using mesh::layer_bounds;
using mesh::Vec3;

mesh::Layer layer_of(std::initializer_list<Vec3> points)
{
    mesh::Layer layer;
    for (const Vec3& point : points)
        layer.points.push_back(point);
    return layer;
}

TEST(Bounds, OfNoPointsAreNone) { EXPECT_FALSE(layer_bounds(mesh::Layer{}).has_value()); }

TEST(Bounds, OfOnePointAreThatPoint)
{
    const auto bounds = layer_bounds(layer_of({{1, -2, 3}}));
    ASSERT_TRUE(bounds.has_value());
    EXPECT_EQ(bounds->min, (Vec3{1, -2, 3}));
    EXPECT_EQ(bounds->max, (Vec3{1, -2, 3}));
}

TEST(Bounds, ReachFromTheLeastToTheGreatestOfEachAxis)
{
    const auto bounds = layer_bounds(layer_of({{1, 5, -3}, {-1, 7, 0}, {0, 6, -9}}));
    ASSERT_TRUE(bounds.has_value());
    EXPECT_EQ(bounds->min, (Vec3{-1, 5, -9}));
    EXPECT_EQ(bounds->max, (Vec3{1, 7, 0}));
}

TEST(Bounds, PassOverWhatIsNoNumber)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto bounds = layer_bounds(layer_of({{nan, 1, nan}, {2, nan, nan}, {3, 4, nan}}));
    ASSERT_TRUE(bounds.has_value());
    EXPECT_EQ(bounds->min.x, 2.0);
    EXPECT_EQ(bounds->max.x, 3.0);
    EXPECT_EQ(bounds->min.y, 1.0);
    EXPECT_EQ(bounds->max.y, 4.0);
    EXPECT_TRUE(std::isnan(bounds->min.z));
}

} // namespace
