// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

constexpr double half_pi = 1.5707963267949;
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Rotation, TurnsClockwiseInRightHandedEyes)
{
    expect_near(XYZ6_typ(1, 0, 0).rotate_Z(half_pi), 0, -1, 0);
    expect_near(XYZ6_typ(0, 1, 0).rotate_X(half_pi), 0, 0, -1);
    expect_near(XYZ6_typ(0, 0, 1).rotate_Y(half_pi), -1, 0, 0);
}

TEST(Rotation, ComputesBothComponentsFromTheIncomingOnes)
{
    const XYZ6_typ v(0.3, -0.7, 1.9);
    const double s = std::sin(-0.4);
    const double c = std::cos(-0.4);
    expect_equal(v.rotate_X(0.4), 0.3, -0.7 * c - 1.9 * s, 1.9 * c + -0.7 * s);
    expect_equal(v.rotate_Y(0.4), 0.3 * c + 1.9 * s, -0.7, 1.9 * c - 0.3 * s);
    expect_equal(v.rotate_Z(0.4), 0.3 * c - -0.7 * s, -0.7 * c + 0.3 * s, 1.9);
}

TEST(Rotation, ByZeroAboutXAndZReturnsTheOperandBitForBit)
{
    // The formulas would turn infinity * 0 into a non-number, and -0.0 into 0.0.
    const XYZ6_typ v(infinity, -infinity, -0.0);
    expect_equal(v.rotate_X(0.0), infinity, -infinity, -0.0);
    EXPECT_TRUE(std::signbit(v.rotate_X(0.0).z()));
    expect_equal(v.rotate_Z(0.0), infinity, -infinity, -0.0);
    expect_equal(v.rotate_Z(-0.0), infinity, -infinity, -0.0);
}

TEST(Rotation, ByZeroAboutYComputes)
{
    EXPECT_TRUE(std::isnan(XYZ6_typ(infinity, 0, 1).rotate_Y(0.0).z()));
    expect_equal(XYZ6_typ(1, 2, 3).rotate_Y(0.0), 1, 2, 3);
}

TEST(Rotation, AboutACentreGoesThereAndBackInPlace)
{
    // (0.1 - 0.7) + 0.7 is not 0.1
    const XYZ6_typ centre(0.7, 0.7, 0.7);
    const double there_and_back = (0.1 - 0.7) + 0.7;
    ASSERT_NE(there_and_back, 0.1);
    XYZ6_typ x(0.1, 0.1, 0.1);
    XYZ6_typ y = x;
    XYZ6_typ z = x;
    const XYZ6_typ moved(0.1 - 0.7, 0.1 - 0.7, 0.1 - 0.7);
    const XYZ6_typ about_x = x.rotate_X(centre, 0.4);
    const XYZ6_typ about_y = y.rotate_Y(centre, 0.4);
    const XYZ6_typ about_z = z.rotate_Z(centre, 0.4);
    EXPECT_EQ(text(about_x), text(moved.rotate_X(0.4).move(centre)));
    EXPECT_EQ(text(about_y), text(moved.rotate_Y(0.4).move(centre)));
    EXPECT_EQ(text(about_z), text(moved.rotate_Z(0.4).move(centre)));
    for (const XYZ6_typ& own : {x, y, z})
        expect_equal(own, there_and_back, there_and_back, there_and_back);
}

TEST(Rotation, OnlyAboutZACentreHasAShortcutForZero)
{
    const XYZ6_typ centre(0.7, 0.7, 0.7);
    const double there_and_back = (0.1 - 0.7) + 0.7;
    XYZ6_typ x(0.1, 0.1, 0.1);
    XYZ6_typ y = x;
    XYZ6_typ z = x;
    expect_equal(x.rotate_X(centre, 0.0), there_and_back, there_and_back, there_and_back);
    expect_equal(y.rotate_Y(centre, 0.0), there_and_back, there_and_back, there_and_back);
    expect_equal(z.rotate_Z(centre, 0.0), 0.1, 0.1, 0.1);
    expect_equal(x, there_and_back, there_and_back, there_and_back);
    expect_equal(y, there_and_back, there_and_back, there_and_back);
    expect_equal(z, 0.1, 0.1, 0.1);
}

TEST(Rotation, AboutXACentreComputesWhenTheAngleIsZero)
{
    XYZ6_typ v(1, infinity, 1);
    EXPECT_TRUE(std::isnan(v.rotate_X(XYZ6_typ(), 0.0).z()));
}

TEST(Rotation, CombinedTurnsAboutXThenZThenYAndLeavesTheVector)
{
    const XYZ6_typ v(0.3, -0.7, 1.9);
    const XYZ6_typ centre(1, 2, 3);
    const XYZ6_typ angles(0.2, 0.5, -0.8);
    const XYZ6_typ expected = (v - centre).rotate_X(0.2).rotate_Z(-0.8).rotate_Y(0.5).move(centre);
    EXPECT_EQ(text(v.rotate(centre, angles)), text(expected));
    expect_equal(v, 0.3, -0.7, 1.9);
}

TEST(Rotation, CombinedHasNoShortcuts)
{
    EXPECT_TRUE(std::isnan(XYZ6_typ(0, infinity, 0).rotate(XYZ6_typ(), XYZ6_typ()).z()));
}

TEST(Rotation, ToLocalTurnsAboutYThenBackAboutZAndX)
{
    const XYZ6_typ v(0.3, -0.7, 1.9);
    const XYZ6_typ origin(1, 2, 3);
    const XYZ6_typ angles(0.2, 0.5, -0.8);
    const XYZ6_typ local = (v - origin).rotate_Y(0.5).rotate_Z(0.8).rotate_X(-0.2);
    EXPECT_EQ(text(v.to_local(origin, angles)), text(local));
    const XYZ6_typ global = v.rotate_X(0.2).rotate_Z(-0.8).rotate_Y(-0.5).move(origin);
    EXPECT_EQ(text(v.to_global(origin, angles)), text(global));
}

TEST(Rotation, ToGlobalOfToLocalIsThePoint)
{
    const XYZ6_typ v(0.3, -0.7, 1.9);
    const XYZ6_typ origin(1, 2, 3);
    const XYZ6_typ angles(0.2, 0.5, -0.8);
    expect_near(v.to_local(origin, angles).to_global(origin, angles), 0.3, -0.7, 1.9);
}

TEST(Rotation, FreeTurnHasItsAxisOnTheLineOnlyAlongY)
{
    const XYZ6_typ origin;
    expect_near(XYZ6_typ(2, 0, 0).rotate_free(origin, XYZ6_typ(1, 0, 0), 0.7), 1.529684, -1.288435,
                0, 1e-6);
    expect_near(XYZ6_typ(0, 2, 0).rotate_free(origin, XYZ6_typ(0, 1, 0), 0.7), 0, 2, 0);
}

TEST(Rotation, FreeTurnByZeroReturnsTheVector)
{
    const XYZ6_typ v(infinity, 1, -0.0);
    expect_equal(v.rotate_free(XYZ6_typ(1, 2, 3), XYZ6_typ(3, 2, 1), 0.0), infinity, 1, -0.0);
}

TEST(Rotation, FreeTurnFollowsItsFrameStepByStep)
{
    const XYZ6_typ v(0.3, -0.7, 1.9);
    const XYZ6_typ p1(1, 2, 3);
    const XYZ6_typ p2(1.5, 2.25, 2.5);
    const double heading = std::atan2(1.5 - 1, 3 - 2.5); // z the other way round than x
    const double dz = 2.5 - 3;
    const double pitch = std::atan2(0.25, std::sqrt(std::pow(dz, 2.0) + std::pow(0.5, 2.0)));
    const XYZ6_typ turned = (v - p1).rotate_Y(-heading).rotate_Z(pitch).rotate_X(0.7);
    EXPECT_EQ(text(v.rotate_free(p1, p2, 0.7)),
              text(turned.rotate_Z(-pitch).rotate_Y(heading).move(p1)));
}

} // namespace
} // namespace dastrel
