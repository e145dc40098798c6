// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "plugin/geometry/LW6-face.h"
#include "tests/plugin/module_test.h"
#include "tests/plugin/random/ends.h"

namespace dastrel {
namespace {

void fill(face6_typ& face, std::initializer_list<XYZ6_typ> points, XYZ6_typ normal)
{
    face.num_points = static_cast<int>(points.size());
    face.points = new XYZ6_typ[points.size()];
    std::copy(points.begin(), points.end(), face.points);
    face.normal = normal;
}

TEST(PolygonPoint, OfFewerThanThreePointsIsTheOriginWithoutADraw)
{
    random sampler;
    sampler.fixed(25);
    face6_typ none;
    expect_equal(sampler.z_polygonu(&none), 0, 0, 0);
    face6_typ two;
    fill(two, {{1, 2, 3}, {4, 5, 6}}, {0, 1, 0});
    expect_equal(sampler.z_polygonu(&two), 0, 0, 0);
    face6_typ without_array;
    without_array.num_points = 4;
    expect_equal(sampler.z_polygonu(&without_array), 0, 0, 0);
    EXPECT_EQ(draws_since(25, sampler), 0);
}

TEST(PolygonPoint, IsEvenInASquare)
{
    random sampler;
    sampler.fixed(25);
    face6_typ square;
    fill(square, {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}, {0, 1, 0});
    int x_fifths[5] = {};
    int z_fifths[5] = {};
    for (int i = 0; i < 20000; ++i) {
        const XYZ6_typ p = sampler.z_polygonu(&square);
        ASSERT_NEAR(p.y(), 0, 1e-15);
        ASSERT_TRUE(p.x() >= 0 && p.x() <= 1 && p.z() >= 0 && p.z() <= 1) << text(p);
        ++x_fifths[std::min(4, static_cast<int>(p.x() * 5))];
        ++z_fifths[std::min(4, static_cast<int>(p.z() * 5))];
    }
    for (int i = 0; i < 5; ++i) {
        EXPECT_NEAR(x_fifths[i], 4000, 250);
        EXPECT_NEAR(z_fifths[i], 4000, 250);
    }
    EXPECT_EQ(draws_since(25, sampler), 40000);
}

TEST(PolygonPoint, DrawsTheColumnFirstThenTheHeight)
{
    random sampler;
    random beside;
    sampler.fixed(25);
    beside.fixed(25);
    face6_typ square;
    fill(square, {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}, {0, 1, 0});
    for (int i = 0; i < 100; ++i) {
        const double u = beside.get();
        const double v = beside.get();
        expect_near(sampler.z_polygonu(&square), u, 0, v, 1e-15);
    }
}

TEST(PolygonPoint, IsAsLikelyForEachUnitOfWidthNearAnApex)
{
    random sampler;
    sampler.fixed(25);
    face6_typ triangle; // narrow towards X = 1
    fill(triangle, {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}}, {0, 1, 0});
    int near_apex = 0;
    int near_base = 0;
    for (int i = 0; i < 20000; ++i) {
        const XYZ6_typ p = sampler.z_polygonu(&triangle);
        ASSERT_LE(p.x() + p.z(), 1 + 1e-12);
        near_apex += p.x() > 0.8 ? 1 : 0;
        near_base += p.x() < 0.2 ? 1 : 0;
    }
    EXPECT_NEAR(near_apex, 4000, 250);
    EXPECT_NEAR(near_base, 4000, 250);
}

TEST(PolygonPoint, ThroughAVertexTakesItsHeightWithOneDraw)
{
    random sampler;
    let_next_be(sampler, {1.0});
    face6_typ triangle; // the largest X is the vertex (4, 0, 1)
    fill(triangle, {{0, 0, 0}, {2, 0, 0}, {4, 0, 1}, {0, 0, 1}}, {0, 1, 0});
    const int before = sampler.mti;
    expect_near(sampler.z_polygonu(&triangle), 4, 0, 1, 1e-12);
    EXPECT_EQ(sampler.mti, before + 1);
}

TEST(PolygonPoint, OnlyTheFirstTwoCrossingsOfAConcavePolygonCount)
{
    // A comb: at X = 0.5 the line crosses the base, then the far side, whatever lies between.
    random sampler;
    face6_typ comb;
    fill(comb,
         {{0, 0, 0}, {3, 0, 0}, {3, 0, 3}, {0, 0, 3}, {0, 0, 2}, {2, 0, 2}, {2, 0, 1}, {0, 0, 1}},
         {0, 1, 0});
    sampler.fixed(9);
    bool in_the_gap = false;
    for (int i = 0; i < 2000; ++i) {
        const XYZ6_typ p = sampler.z_polygonu(&comb);
        in_the_gap = in_the_gap || (p.x() < 1.9 && p.z() > 1.1 && p.z() < 1.9);
    }
    EXPECT_TRUE(in_the_gap) << "a column runs from the first crossing to the second";
}

TEST(PolygonPoint, TheClosingEdgeStandsInForAMissingCrossing)
{
    // The line meets the first edge and the closing one only.
    random sampler;
    random beside;
    sampler.fixed(25);
    beside.fixed(25);
    face6_typ triangle; // third point straight above the second: the second edge is vertical
    fill(triangle, {{0, 0, 0}, {1, 0, 0}, {1, 0, 2}}, {0, 1, 0});
    for (int i = 0; i < 100; ++i) {
        const double u = beside.get();
        const double v = beside.z_zakresu(0.0, 2 * u);
        expect_near(sampler.z_polygonu(&triangle), u, 0, v, 1e-12);
    }
}

TEST(PolygonPoint, OfAVerticalEdgeHitExactlyIsFinite)
{
    face6_typ square; // both vertical edges lie at an end of the range
    fill(square, {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}, {0, 1, 0});
    for (const double u : {0.0, 1.0}) {
        random sampler;
        let_next_be(sampler, {u, 1.0});
        const XYZ6_typ p = sampler.z_polygonu(&square);
        EXPECT_NEAR(p.x(), u, 1e-15);
        EXPECT_TRUE(p.z() >= 0 && p.z() <= 1) << text(p);
    }
}

TEST(PolygonPoint, OfAVerticalEdgeTakesTheHeightOfItsFirstPoint)
{
    // At the largest X the line meets the vertical edge from (2,0,3) to (2,0,5) right after the
    // edge that ends at its first point: both crossings have the height 3.
    random sampler;
    let_next_be(sampler, {1.0, 1.0});
    face6_typ shape;
    fill(shape, {{0, 0, 0}, {1, 0, 0}, {2, 0, 3}, {2, 0, 5}, {0, 0, 5}}, {0, 1, 0});
    expect_near(sampler.z_polygonu(&shape), 2, 0, 3, 1e-12);
}

TEST(PolygonPoint, WithoutACrossingInTheLoopTakesZeroForTheSecondHeight)
{
    // Rounding carries the largest column past the polygon: only the closing edge, which is not
    // asked whether it is crossed, gives a height.
    const double left = -0.1;
    const double right = 0.2;
    const double u = (right - left) * 1.0 + left;
    ASSERT_GT(u, right);
    face6_typ triangle;
    fill(triangle, {{0, 0, 0}, {right, 0, 0}, {left, 0, 1}}, {0, 1, 0});
    const double closing = (1.0 - 0.0) * ((u - left) / (left - 0.0)) + 1.0;
    ASSERT_LT(closing, -0.1);
    random sampler;
    let_next_be(sampler, {1.0, 0.0});
    expect_near(sampler.z_polygonu(&triangle), u, 0, closing, 1e-15);
    let_next_be(sampler, {1.0, 1.0});
    expect_near(sampler.z_polygonu(&triangle), u, 0, 0, 1e-15);
}

TEST(PolygonPoint, OfAnUndefinedFrameStillEnds)
{
    random sampler;
    sampler.fixed(25);
    face6_typ no_edge;
    fill(no_edge, {{1, 1, 1}, {1, 1, 1}, {2, 1, 1}}, {0, 1, 0});
    expect_near(sampler.z_polygonu(&no_edge), 1.5, 1, 1, 0.5 + 1e-12);
    face6_typ no_normal;
    fill(no_normal, {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}}, {0, 0, 0});
    const XYZ6_typ p = sampler.z_polygonu(&no_normal);
    EXPECT_TRUE(p.x() >= 0 && p.x() <= 1) << text(p);
}

TEST(PolygonPoint, LiesInTheTiltedPlaneOfItsPolygon)
{
    random sampler;
    sampler.fixed(25);
    face6_typ tilted;
    const XYZ6_typ a(1, 2, 3);
    const XYZ6_typ b(3, 2.5, 3.25);
    const XYZ6_typ c(1.5, 4, 2);
    const XYZ6_typ normal = ~((b - a) * (c - a));
    fill(tilted, {a, b, c}, normal * 3.0); // the length of the normal does not matter
    for (int i = 0; i < 1000; ++i) {
        const XYZ6_typ d = sampler.z_polygonu(&tilted) - a;
        ASSERT_NEAR(d.x() * normal.x() + d.y() * normal.y() + d.z() * normal.z(), 0, 1e-12);
    }
}

} // namespace
} // namespace dastrel
