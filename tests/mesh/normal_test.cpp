// SPDX-License-Identifier: MIT
#include "mesh/normal.h"

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using mesh::Vec3;

Vec3 normal_of(const std::vector<Vec3>& points)
{
    mesh::Layer layer;
    std::vector<std::uint32_t> corners;
    for (const Vec3& point : points) {
        corners.push_back(static_cast<std::uint32_t>(layer.points.size()));
        layer.points.push_back(point);
    }
    layer.polygons.add(mesh::polygon_face, corners);
    return mesh::polygon_normal(layer, 0);
}

TEST(Normal, PointsToTheSideWhereThePointsRunClockwise)
{
    EXPECT_EQ(normal_of({{0, 0, 0}, {0, 0, 1}, {1, 0, 1}, {1, 0, 0}}), (Vec3{0, 1, 0}));
    EXPECT_EQ(normal_of({{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}), (Vec3{0, -1, 0}));
    EXPECT_EQ(normal_of({{0, 0, 0}, {0, 1, 0}, {1, 0, 0}}), (Vec3{0, 0, -1}));
}

TEST(Normal, OfAPolygonWithoutAreaIsZero)
{
    EXPECT_EQ(normal_of({}), Vec3{});
    EXPECT_EQ(normal_of({{1, 2, 3}}), Vec3{});
    EXPECT_EQ(normal_of({{1, 2, 3}, {4, 5, 6}}), Vec3{});
    EXPECT_EQ(normal_of({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}), Vec3{});
    EXPECT_EQ(normal_of({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}), Vec3{});
}

TEST(Normal, IsThatOfTheAreaAndNotOfTheFirstCorner)
{
    // The first corner turns the other way: a dart.
    const Vec3 n = normal_of({{1, 0, 1}, {0, 0, 4}, {4, 0, 0}, {0, 0, 0}, {0.5, 0, 0.5}});
    EXPECT_NEAR(std::abs(n.y), 1.0, 1e-12);
}

TEST(Normal, OfNumbersThatAreNoneIsNone)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(normal_of({{0, 0, 0}, {0, 0, 1}, {nan, 0, 1}}).y));
}

RC_GTEST_PROP(NormalLaw, OfATriangleIsTheCrossProductOfItsEdges, ())
{
    const auto coordinate = rc::gen::map(rc::gen::inRange(-1000, 1001),
                                         [](int n) { return static_cast<double>(n) / 16; });
    std::vector<Vec3> p;
    for (int i = 0; i < 3; ++i)
        p.push_back({*coordinate, *coordinate, *coordinate});
    const Vec3 a{p[1].x - p[0].x, p[1].y - p[0].y, p[1].z - p[0].z};
    const Vec3 b{p[2].x - p[0].x, p[2].y - p[0].y, p[2].z - p[0].z};
    const Vec3 cross{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    const double length = std::hypot(cross.x, cross.y, cross.z);
    const Vec3 n = normal_of(p);
    if (length == 0.0) { // these coordinates are summed without rounding
        RC_ASSERT(n == Vec3{});
        return;
    }
    RC_ASSERT(std::abs(n.x - cross.x / length) < 1e-12);
    RC_ASSERT(std::abs(n.y - cross.y / length) < 1e-12);
    RC_ASSERT(std::abs(n.z - cross.z / length) < 1e-12);
    const Vec3 back = normal_of({p[2], p[1], p[0]});
    RC_ASSERT(std::abs(n.x + back.x) < 1e-12 && std::abs(n.y + back.y) < 1e-12 &&
              std::abs(n.z + back.z) < 1e-12);
}

} // namespace
