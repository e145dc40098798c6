// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

constexpr double pi_a = 3.1415926535898;
constexpr double half_pi_a = 1.5707963267949;
constexpr double three_half_pi_a = 4.7123889803847;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Angle, OfAVectorWithoutLengthIsZero)
{
    EXPECT_EQ(XYZ6_typ().calc_angle(XYZ6_typ(1, 2, 3)), 0.0);
    EXPECT_EQ(XYZ6_typ(1, 2, 3).calc_angle(XYZ6_typ()), 0.0);
}

TEST(Angle, OfEqualVectorsIsZeroOrTinyAndNeverANonNumber)
{
    for (int i = 1; i < 200; ++i) {
        const XYZ6_typ v(0.1 * i, 0.7 / i, -0.013 * i);
        const double angle = v.calc_angle(v);
        EXPECT_GE(angle, 0.0) << text(v);
        EXPECT_LT(angle, 1e-7) << text(v);
    }
}

TEST(Angle, DividesByTheProductOfTheLengths)
{
    const XYZ6_typ a(1, 2, 3);
    const XYZ6_typ b(-2, 0.5, 1);
    const double dot = (1 * -2.0 + 2 * 0.5) + 3 * 1.0;
    EXPECT_EQ(a.calc_angle(b), std::acos(dot / (a.len() * b.len())));
    EXPECT_EQ(XYZ6_typ(1, 0, 0).calc_angle(XYZ6_typ(0, 5, 0)), std::acos(0.0));
}

TEST(Angle, OfOppositeVectorsIsPi)
{
    EXPECT_NEAR(XYZ6_typ(1, 0, 0).calc_angle(XYZ6_typ(-3, 0, 0)), pi_a, 1e-12);
}

TEST(PlaneAngles, AreTakenBetweenTheProjections)
{
    const XYZ6_typ a(1, 2, 3);
    const XYZ6_typ b(-2, 0.5, 1);
    const auto length = [](double p, double q) {
        return std::sqrt(std::pow(p, 2.0) + std::pow(q, 2.0));
    };
    const XYZ6_typ angles = XYZ6_typ(9, 9, 9).calc_angle(a, b);
    EXPECT_EQ(angles.x(), std::acos((3 * 1.0 + 2 * 0.5) / (length(3, 2) * length(1, 0.5))));
    EXPECT_EQ(angles.y(), std::acos((3 * 1.0 + 1 * -2.0) / (length(3, 1) * length(1, -2))));
    EXPECT_EQ(angles.z(), std::acos((2 * 0.5 + 1 * -2.0) / (length(1, 2) * length(-2, 0.5))));
}

TEST(PlaneAngles, IgnoreTheVectorItself)
{
    const XYZ6_typ a(1, 2, 3);
    const XYZ6_typ b(-2, 0.5, 1);
    EXPECT_EQ(text(XYZ6_typ().calc_angle(a, b)), text(XYZ6_typ(nan, 5, 6).calc_angle(a, b)));
}

TEST(PlaneAngles, StayZeroWhereAProjectionHasNoLength)
{
    // a is along X: it has no projection onto Y-Z
    const XYZ6_typ angles = XYZ6_typ().calc_angle(XYZ6_typ(1, 0, 0), XYZ6_typ(0, 1, 1));
    EXPECT_EQ(angles.x(), 0.0);
    EXPECT_EQ(angles.y(), std::acos(0.0));
    EXPECT_EQ(angles.z(), std::acos(0.0));
}

TEST(HeadingY, HasExactValuesOnTheAxes)
{
    EXPECT_EQ(XYZ6_typ(0, 5, 0).calc_angle_Y(), 0.0);
    EXPECT_EQ(XYZ6_typ(0, 1, 2).calc_angle_Y(), 0.0);
    EXPECT_EQ(XYZ6_typ(1, 0, 0).calc_angle_Y(), half_pi_a);
    EXPECT_EQ(XYZ6_typ(0, 0, -1).calc_angle_Y(), pi_a);
    EXPECT_EQ(XYZ6_typ(-1, 0, 0).calc_angle_Y(), three_half_pi_a);
}

TEST(HeadingY, RunsFromZTowardsXInEachQuadrant)
{
    const double length = std::sqrt(4.0 * 4.0 + 3.0 * 3.0);
    EXPECT_EQ(XYZ6_typ(3, 1, 4).calc_angle_Y(), std::asin(3 / length));
    EXPECT_EQ(XYZ6_typ(3, 1, -4).calc_angle_Y(), half_pi_a + std::acos(3 / length));
    EXPECT_EQ(XYZ6_typ(-3, 1, -4).calc_angle_Y(), three_half_pi_a - std::acos(3 / length));
    EXPECT_EQ(XYZ6_typ(-3, 1, 4).calc_angle_Y(), three_half_pi_a + std::asin(4 / length));
}

TEST(HeadingY, OfANonNumberIsZero)
{
    EXPECT_EQ(XYZ6_typ(nan, 0, 1).calc_angle_Y(), 0.0);
    EXPECT_EQ(XYZ6_typ(1, 0, nan).calc_angle_Y(), 0.0);
}

TEST(SignedHeadingY, HasSpecialValuesThatDoNotContinueTheirNeighbours)
{
    EXPECT_EQ(XYZ6_typ(0, 3, 0).calc_angle_Y2(), 0.0);
    EXPECT_EQ(XYZ6_typ(0, 0, -1).calc_angle_Y2(), 0.0);
    EXPECT_EQ(XYZ6_typ(0, 0, 1).calc_angle_Y2(), 0.0);
    EXPECT_EQ(XYZ6_typ(2, 0, 0).calc_angle_Y2(), half_pi_a);
    EXPECT_EQ(XYZ6_typ(-1, 0, 0).calc_angle_Y2(), -1.5707963267949);
    EXPECT_EQ(XYZ6_typ(2, 0, 1).calc_angle_Y2(), std::atan2(1.0, 2.0));
    EXPECT_EQ(XYZ6_typ(-2, 0, -1).calc_angle_Y2(), std::atan2(-1.0, -2.0));
}

} // namespace
} // namespace dastrel
