// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "tests/literal/kernel/face.h"
#include "tests/literal/kernel/frame.h"
#include "tests/literal/kernel/vector.h"

namespace literal {
namespace {

void expect_near(Vec3 got, Vec3 wanted, double tolerance)
{
    EXPECT_NEAR(got.x, wanted.x, tolerance);
    EXPECT_NEAR(got.y, wanted.y, tolerance);
    EXPECT_NEAR(got.z, wanted.z, tolerance);
}

Face face_of(std::vector<Vec3> points)
{
    Face face;
    face.points = std::move(points);
    return face;
}

TEST(LiteralVector, UnitOfZeroIsZeroAndOfATinyVectorIsItsDirection)
{
    EXPECT_EQ(unit({0.0, 0.0, 0.0}), Vec3{});
    EXPECT_EQ(unit({0.0, 0.0, 1e-300}), (Vec3{0.0, 0.0, 1.0}));
    EXPECT_EQ(unit({0.0, 3.0, -4.0}), (Vec3{0.0, 3.0 / 5.0, -4.0 / 5.0}));
}

TEST(LiteralVector, ZeroIsTestedExactly)
{
    EXPECT_TRUE(is_zero({-0.0, 0.0, -0.0}));
    EXPECT_FALSE(is_zero({0.0, 0.0, std::numeric_limits<double>::denorm_min()}));
    EXPECT_FALSE(is_zero({0.0, std::nan(""), 0.0}));
}

TEST(LiteralVector, CrossProductFollowsTheRightHand)
{
    EXPECT_EQ(cross({1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}), (Vec3{0.0, 0.0, 1.0}));
    EXPECT_EQ(cross({2.0, 4.0, 6.0}, {1.0, 2.0, 3.0}), Vec3{});
}

TEST(LiteralRotation, QuarterTurnsGoAgainstTheRightHand)
{
    expect_near(rotate_z({1.0, 0.0, 0.0}, half_pi_rounded), {0.0, -1.0, 0.0}, 1e-12);
    expect_near(rotate_x({0.0, 1.0, 0.0}, half_pi_rounded), {0.0, 0.0, -1.0}, 1e-12);
    expect_near(rotate_y({0.0, 0.0, 1.0}, half_pi_rounded), {-1.0, 0.0, 0.0}, 1e-12);
}

TEST(LiteralRotation, OnlyYRunsItsFormulaForAnAngleOfZero)
{
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(rotate_x({1.0, infinite, 2.0}, 0.0), (Vec3{1.0, infinite, 2.0}));
    EXPECT_EQ(rotate_z({infinite, 1.0, 2.0}, 0.0), (Vec3{infinite, 1.0, 2.0}));
    EXPECT_TRUE(std::isnan(rotate_y({infinite, 1.0, 2.0}, 0.0).z)); // infinity times zero
}

TEST(LiteralRotation, ACentredTurnSendsItsOwnVectorThereAndBack)
{
    const Vec3 centre{1e16, 0.0, 0.0};
    Vec3 v{0.25, 1.0, 2.0};
    expect_near(rotate_x_about(v, centre, half_pi_rounded), {0.0, 2.0, -1.0}, 1e-11);
    EXPECT_EQ(v.x, 0.0); // a quarter is lost beside 1e16
    Vec3 untouched{0.25, 1.0, 2.0};
    EXPECT_EQ(rotate_z_about(untouched, centre, 0.0), untouched);
    EXPECT_EQ(untouched.x, 0.25);
    Vec3 turned{2.0, 0.0, 1.0};
    expect_near(rotate_y_about(turned, {1.0, 0.0, 1.0}, half_pi_rounded), {1.0, 0.0, 2.0}, 1e-12);
}

TEST(LiteralRotation, CombinedTurnsGoXThenZThenY)
{
    const Vec3 quarter{half_pi_rounded, half_pi_rounded, half_pi_rounded};
    // +Y goes to -Z about X, stays about Z, and goes to +X about Y.
    expect_near(rotate_about({1.0, 2.0, 1.0}, {1.0, 1.0, 1.0}, quarter), {2.0, 1.0, 1.0}, 1e-11);
}

TEST(LiteralRotation, GlobalUndoesLocal)
{
    const Vec3 p{1.5, -2.0, 0.75};
    const Vec3 origin{0.5, 0.25, -3.0};
    const Vec3 angles{0.3, -1.1, 2.0};
    expect_near(to_global(to_local(p, origin, angles), origin, angles), p, 1e-12);
}

TEST(LiteralRotation, AFreeTurnKeepsItsOwnFrame)
{
    expect_near(rotate_free({2.0, 0.0, 0.0}, {}, {1.0, 0.0, 0.0}, 0.7), {1.529684, -1.288435, 0.0},
                1e-6);
    expect_near(rotate_free({0.0, 2.0, 0.0}, {}, {0.0, 1.0, 0.0}, 0.7), {0.0, 2.0, 0.0}, 1e-12);
    EXPECT_EQ(rotate_free({0.1, 0.2, 0.3}, {1.0, 1.0, 1.0}, {2.0, 3.0, 4.0}, 0.0),
              (Vec3{0.1, 0.2, 0.3}));
}

TEST(LiteralAngles, BetweenTwoVectors)
{
    EXPECT_EQ(angle_between({}, {1.0, 2.0, 3.0}), 0.0);
    EXPECT_EQ(angle_between({1.0, 0.0, 0.0}, {5.0, 0.0, 0.0}), 0.0);
    EXPECT_NEAR(angle_between({0.3, 0.7, 0.1}, {0.3, 0.7, 0.1}), 0.0, 1e-7);
    EXPECT_NEAR(angle_between({2.0, 0.0, 0.0}, {0.0, 3.0, 3.0}), half_pi_rounded, 1e-12);
    const Vec3 planes = plane_angles({1.0, 1.0, 0.0}, {1.0, 0.0, 0.0});
    EXPECT_EQ(planes.x, 0.0); // the second vector has no projection on Y-Z
    EXPECT_EQ(planes.y, 0.0);
    EXPECT_NEAR(planes.z, half_pi_rounded / 2.0, 1e-12);
}

TEST(LiteralAngles, HeadingsRunFromZTowardsX)
{
    EXPECT_EQ(heading({1.0, 0.0, 0.0}), half_pi_rounded);
    EXPECT_EQ(heading({0.0, 0.0, -1.0}), pi_rounded);
    EXPECT_EQ(heading({-1.0, 0.0, 0.0}), three_half_pi_rounded);
    EXPECT_EQ(heading({0.0, 5.0, 0.0}), 0.0);
    EXPECT_EQ(heading({std::nan(""), 0.0, 1.0}), 0.0);
    EXPECT_NEAR(heading({1.0, 0.0, 1.0}), half_pi_rounded * 0.5, 1e-12);
    EXPECT_NEAR(heading({1.0, 0.0, -1.0}), half_pi_rounded * 1.5, 1e-12);
    EXPECT_NEAR(heading({-1.0, 0.0, -1.0}), half_pi_rounded * 2.5, 1e-12);
    EXPECT_NEAR(heading({-1.0, 0.0, 1.0}), half_pi_rounded * 3.5, 1e-12);
}

TEST(LiteralAngles, SignedHeadingsAreSpecialOnTheAxes)
{
    EXPECT_EQ(signed_heading({0.0, 0.0, -1.0}), 0.0);
    EXPECT_EQ(signed_heading({-1.0, 0.0, 0.0}), -1.5707963267949);
    EXPECT_EQ(signed_heading({1.0, 0.0, 0.0}), 1.5707963267949);
    EXPECT_EQ(signed_heading({2.0, 0.0, 1.0}), std::atan2(1.0, 2.0));
}

TEST(LiteralFrame, PlainAxesGiveNoAnglesAndOnlyMove)
{
    const Frame frame({1.0, 0.0, 0.0}, {0.0, 1.0, 0.0});
    EXPECT_TRUE(is_zero(frame.angles()));
    std::vector<Vec3> points{{4.0, 5.0, 6.0}};
    frame.to_local(points, {1.0, 2.0, 3.0});
    EXPECT_EQ(points[0], (Vec3{3.0, 3.0, 3.0}));
    frame.to_global(points, {1.0, 2.0, 3.0});
    EXPECT_EQ(points[0], (Vec3{4.0, 5.0, 6.0}));
}

TEST(LiteralFrame, AxesGoToXAndYAndBack)
{
    const Vec3 a = unit({1.0, 2.0, -0.5});
    const Vec3 b = unit(cross(a, {0.3, -1.0, 2.0}));
    const Frame frame(a, b);
    std::vector<Vec3> points{a, b};
    frame.to_local(points, {});
    expect_near(points[0], {1.0, 0.0, 0.0}, 1e-12);
    expect_near(points[1], {0.0, 1.0, 0.0}, 1e-12);
    frame.to_global(points, {});
    expect_near(points[0], a, 1e-12);
    expect_near(points[1], b, 1e-12);
}

TEST(LiteralFrame, AFirstAxisAlongYTiltsAQuarter)
{
    EXPECT_NEAR(Frame({0.0, 1.0, 0.0}, {1.0, 0.0, 0.0}).angles().z, -half_pi_rounded, 1e-12);
    EXPECT_NEAR(Frame({0.0, -1.0, 0.0}, {1.0, 0.0, 0.0}).angles().z, half_pi_rounded, 1e-12);
}

TEST(LiteralArea, FansOfTriangles)
{
    const Face square =
        face_of({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 1.0, 0.0}, {0.0, 1.0, 0.0}});
    const Face right = face_of({{0.0, 0.0, 0.0}, {3.0, 0.0, 0.0}, {3.0, 0.0, 4.0}});
    EXPECT_NEAR(face_area(square), 1.0, 1e-15);
    EXPECT_EQ(face_area(right), 6.0);
    EXPECT_EQ(face_area(face_of({})), 0.0);
    EXPECT_EQ(face_area(face_of({{0.0, 0.0, 0.0}, {9.0, 9.0, 9.0}})), 0.0);
    EXPECT_EQ(total_area({}), 0.0);
    EXPECT_NEAR(total_area({square, right}), 7.0, 1e-14);
}

TEST(LiteralArea, AConcaveFaceCountsItsFanUnsigned)
{
    // From the inner side the fan is the face; from a tip one of its triangles lies outside.
    const Face dart =
        face_of({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.25, 0.0, 0.25}, {0.0, 0.0, 1.0}});
    EXPECT_NEAR(face_area(dart), 0.25, 1e-12);
    const Face folded =
        face_of({{1.0, 0.0, 0.0}, {0.25, 0.0, 0.25}, {0.0, 0.0, 1.0}, {0.0, 0.0, 0.0}});
    EXPECT_NEAR(face_area(folded), 0.75, 1e-12);
}

TEST(LiteralArea, AFlatTriangleIsZeroOrNotANumber)
{
    const double area = triangle_area({0.0, 0.0, 0.0}, {0.1, 0.1, 0.1}, {0.7, 0.7, 0.7});
    EXPECT_TRUE(std::isnan(area) || std::abs(area) < 1e-7) << area;
}

} // namespace
} // namespace literal
