// SPDX-License-Identifier: MIT
#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "picture/scene/polygon_splitter.h"
#include "picture/view/vectors.h"

namespace {

using picture::Piece;
using picture::PolygonSplitter;
using picture::Vec3;
using picture::operator+;
using picture::operator-;
using picture::operator*;
using picture::cross;
using picture::length;

Vec3 place(const PolygonSplitter& splitter, const std::vector<Vec3>& corners, std::uint32_t corner)
{
    if (corner < corners.size())
        return corners[corner];
    return splitter.added_points()[corner - corners.size()].place;
}

struct Split {
    double area = 0.0; ///< sum over the triangles, each counted positive
    int triangles = 0;
    int edges = 0; ///< sides that are edges of the polygon
};

Split split(const std::vector<Vec3>& corners)
{
    PolygonSplitter splitter;
    splitter.split(corners);
    Split result;
    for (const Piece& piece : splitter.pieces()) {
        const Vec3 a = place(splitter, corners, piece.corners[0]);
        const Vec3 b = place(splitter, corners, piece.corners[1]);
        const Vec3 c = place(splitter, corners, piece.corners[2]);
        result.area += length(cross(b - a, c - a)) / 2.0;
        ++result.triangles;
        result.edges += std::popcount(piece.edges);
    }
    return result;
}

std::vector<Vec3> turned(const std::vector<Vec3>& points)
{
    std::vector<Vec3> result;
    for (const Vec3& p : points) // a turn about all axes, and a move away
        result.push_back({0.6 * p.x - 0.64 * p.y + 0.48 * p.z + 3.0,
                          0.8 * p.x + 0.48 * p.y - 0.36 * p.z, 0.6 * p.y + 0.8 * p.z - 7.0});
    return result;
}

struct Shape {
    const char* name;
    std::vector<Vec3> corners;
    double area;
    int edges; ///< that bound it; double ones are not
};

class ShapeTest : public testing::TestWithParam<Shape> {};

TEST_P(ShapeTest, IsCoveredOnceWhereverItStandsAndWhicheverWayRound)
{
    for (const bool reversed : {false, true}) {
        std::vector<Vec3> corners = GetParam().corners;
        if (reversed)
            corners = {corners.rbegin(), corners.rend()};
        for (std::size_t first = 0; first < corners.size(); ++first) {
            SCOPED_TRACE(testing::Message() << "from corner " << first << " on");
            std::rotate(corners.begin(), corners.begin() + 1, corners.end());
            const Split flat = split(corners);
            EXPECT_NEAR(flat.area, GetParam().area, 1e-9);
            EXPECT_EQ(flat.edges, GetParam().edges);
            EXPECT_NEAR(split(turned(corners)).area, GetParam().area, 1e-9);
        }
    }
}

std::vector<Vec3> ring(int count, int step)
{
    std::vector<Vec3> points;
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * i * step / count;
        points.push_back({std::cos(angle), std::sin(angle), 0.0});
    }
    return points;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Polygons, ShapeTest, testing::Values(
    Shape{"triangle", {{0, 0, 0}, {2, 0, 0}, {0, 1, 0}}, 1.0, 3},
    Shape{"square", {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, 4.0, 4},
    Shape{"arrow", {{0, 0, 0}, {4, 2, 0}, {0, 4, 0}, {1, 2, 0}}, 6.0, 4},
    Shape{"letter_l", {{0, 0, 0}, {3, 0, 0}, {3, 1, 0}, {1, 1, 0}, {1, 3, 0}, {0, 3, 0}}, 5.0, 6},
    Shape{"letter_u", {{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {2, 3, 0}, {2, 1, 0}, {1, 1, 0}, {1, 3, 0},
                       {0, 3, 0}}, 7.0, 8},
    Shape{"hexagon", ring(6, 1), 1.5 * std::sqrt(3.0), 6},
    // A square with a square hole, which the edge from (0, 0) to (1, 1) leads to and back from.
    Shape{"keyhole", {{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {0, 3, 0}, {0, 0, 0}, {1, 1, 0}, {1, 2, 0},
                      {2, 2, 0}, {2, 1, 0}, {1, 1, 0}}, 8.0, 8}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

TEST(PolygonSplitter, AddsThePointWhereEdgesCross)
{
    // Two triangles that touch in (1, 1), each of area 1: a bow tie.
    const Split tie = split({{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 2, 0}});
    EXPECT_NEAR(tie.area, 2.0, 1e-6);
    EXPECT_EQ(tie.triangles, 2);

    PolygonSplitter splitter;
    splitter.split(std::vector<Vec3>{{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 2, 0}});
    ASSERT_EQ(splitter.added_points().size(), 1U);
    for (const float share : splitter.added_points()[0].shares)
        EXPECT_NEAR(share, 0.25F, 1e-6F);
}

TEST(PolygonSplitter, CoversAStarThatCrossesItself)
{
    const std::vector<Vec3> star = ring(5, 2);
    // The outline of a pentagram in a circle of radius 1.
    const double inner =
        std::sin(std::numbers::pi / 10.0) / std::sin(7.0 * std::numbers::pi / 10.0);
    const double area = 5.0 * inner * std::sin(std::numbers::pi / 5.0);
    EXPECT_NEAR(split(star).area, area, 1e-6);
}

/// How often the edges of a star cross: each spans `step` corners of the ring.
std::size_t crossings_of_star(std::size_t count, std::size_t step) { return count * (step - 1); }

bool crosses_more_than(std::size_t limit, const std::vector<Vec3>& corners)
{
    picture::Crossings crossings;
    return crossings.more_than(limit, corners, picture::area_vector(corners));
}

TEST(Crossings, AreCountedUpToTheLimit)
{
    for (const int step : {2, 3, 4, 5}) {
        const std::vector<Vec3> star = turned(ring(11, step));
        const std::size_t there = crossings_of_star(11, static_cast<std::size_t>(step));
        EXPECT_TRUE(crosses_more_than(there - 1, star)) << step;
        EXPECT_FALSE(crosses_more_than(there, star)) << step;
    }
    EXPECT_FALSE(crosses_more_than(0, {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {2, 1, 0}, {0, 4, 0}}));
    EXPECT_FALSE(crosses_more_than(0, {{0, 0, 0}, {4, 0, 0}, {2, 0, 0}, {2, 4, 0}}))
        << "edges that touch";
}

TEST(PolygonSplitter, SplitsAScribbleAsIfItsFirstCornerSawItWhole)
{
    PolygonSplitter splitter;
    splitter.split(ring(13, 5)); // 52 crossings, four for each corner
    EXPECT_FALSE(splitter.added_points().empty());
    splitter.split(ring(13, 6)); // 65 crossings
    EXPECT_TRUE(splitter.added_points().empty());
    EXPECT_EQ(splitter.pieces().size(), 11U);
}

TEST(PolygonSplitter, TakesTheShorterDiagonalOfABentSquare)
{
    PolygonSplitter splitter;
    const std::vector<Vec3> corners{{0, 0, 0}, {3, 0, 0}, {4, 1, 0}, {0, 1, 0}};
    splitter.split(corners);
    ASSERT_EQ(splitter.pieces().size(), 2U);
    for (const Piece& piece : splitter.pieces()) {
        const std::set<std::uint32_t> used(piece.corners.begin(), piece.corners.end());
        EXPECT_TRUE(used.count(1) == 1 && used.count(3) == 1);
    }
}

TEST(PolygonSplitter, GivesNothingOrNothingWithAnAreaForPointsOnALine)
{
    EXPECT_EQ(split({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}).area, 0.0);
    EXPECT_EQ(split({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {1.5, 0, 0}}).area, 0.0);
    EXPECT_EQ(split({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}}).area, 0.0);
}

} // namespace
