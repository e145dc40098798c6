// SPDX-License-Identifier: MIT
#include <cmath>

#include "plugin/geometry/axes.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

constexpr double half_pi = 1.5707963267948966;

axes_typ frame(XYZ6_typ a, XYZ6_typ b)
{
    axes_typ axes;
    axes.axis[0] = a;
    axes.axis[1] = b;
    axes.calc_transf_angles();
    return axes;
}

TEST(Axes, AreZeroAfterConstruction)
{
    const axes_typ axes;
    for (int i = 0; i < 3; ++i) {
        expect_equal(axes.axis[i], 0, 0, 0);
        EXPECT_EQ(axes.angle[i], 0.0);
    }
}

TEST(Axes, AlongTheWorldsOnlyTranslate)
{
    const axes_typ axes = frame({1, 0, 0}, {0, 1, 0});
    for (const double angle : axes.angle)
        EXPECT_EQ(angle, 0.0);
    XYZ6_typ points[] = {{1, 2, 3}, {4, 5, 6}};
    axes.to_local(points, 2, {10, 20, 30});
    expect_equal(points[0], -9, -18, -27);
    expect_equal(points[1], -6, -15, -24);
    axes.to_global(points, 2, {10, 20, 30});
    expect_equal(points[0], 1, 2, 3);
    expect_equal(points[1], 4, 5, 6);
}

TEST(Axes, ToLocalTakesTheFirstOntoXAndTheSecondOntoY)
{
    const XYZ6_typ a = ~XYZ6_typ(1, 2, -3);
    const XYZ6_typ b = ~(a * XYZ6_typ(0.3, -1, 0.2));
    const axes_typ axes = frame(a, b);
    XYZ6_typ points[] = {a, b, {0.4, 5, -6}};
    axes.to_local(points, 3, XYZ6_typ());
    expect_near(points[0], 1, 0, 0);
    expect_near(points[1], 0, 1, 0);
    axes.to_global(points, 3, XYZ6_typ());
    expect_near(points[0], a.x(), a.y(), a.z());
    expect_near(points[2], 0.4, 5, -6);
}

TEST(Axes, AnglesFollowTheirFormulasLeftToRight)
{
    for (int i = 1; i < 100; ++i) { // enough for one that shows another order of the products
        const XYZ6_typ a(std::sin(i), std::cos(3.0 * i), std::sin(5.0 * i));
        const XYZ6_typ b(std::cos(2.0 * i), 0.01 * std::sin(7.0 * i), std::cos(4.0 * i));
        const axes_typ axes = frame(a, b);
        ASSERT_EQ(axes.angle[0], std::atan2(a.z(), a.x()));
        ASSERT_EQ(axes.angle[1], -std::atan2(a.y(), std::sqrt(a.z() * a.z() + a.x() * a.x())));
        const double c0 = std::cos(axes.angle[0]);
        const double s0 = std::sin(axes.angle[0]);
        const double c1 = std::cos(axes.angle[1]);
        const double s1 = std::sin(axes.angle[1]);
        ASSERT_EQ(axes.angle[2], -std::atan2(b.z() * c0 - b.x() * s0,
                                             (b.y() * c1 + (b.x() * c0) * s1) + (b.z() * s0) * s1));
    }
}

TEST(Axes, ToLocalDoesNotMoveFromAZeroOriginAndToGlobalAlwaysMoves)
{
    const axes_typ axes = frame({1, 0, 0}, {0, 1, 0});
    XYZ6_typ point(1, -0.0, 1);
    axes.to_local(&point, 1, XYZ6_typ());
    EXPECT_TRUE(std::signbit(point.y()));
    axes.to_global(&point, 1, XYZ6_typ());
    EXPECT_FALSE(std::signbit(point.y())) << "-0.0 + 0.0 is 0.0";
}

TEST(Axes, AFirstAxisAlongYGivesAQuarterTurn)
{
    const axes_typ up = frame({0, 2, 0}, {1, 0, 0});
    EXPECT_EQ(up.angle[0], 0.0);
    EXPECT_EQ(up.angle[1], -half_pi);
    const axes_typ down = frame({0, -2, 0}, {1, 0, 0});
    EXPECT_EQ(down.angle[0], 0.0);
    EXPECT_EQ(down.angle[1], half_pi);
}

TEST(Axes, TransformsAreRotationsInTheirOrder)
{
    const axes_typ axes = frame({0.3, -0.7, 1.9}, {1.1, 0.2, -0.4});
    const XYZ6_typ p(2, 3, 5);
    const XYZ6_typ origin(0.1, 0.2, 0.3);
    XYZ6_typ local = p;
    axes.to_local(&local, 1, origin);
    const XYZ6_typ moved = p.move(XYZ6_typ() - origin);
    EXPECT_EQ(
        text(local),
        text(moved.rotate_Y(-axes.angle[0]).rotate_Z(-axes.angle[1]).rotate_X(-axes.angle[2])));
    XYZ6_typ global = p;
    axes.to_global(&global, 1, origin);
    EXPECT_EQ(text(global), text(p.rotate_X(axes.angle[2])
                                     .rotate_Z(axes.angle[1])
                                     .rotate_Y(axes.angle[0])
                                     .move(origin)));
}

TEST(Axes, NoPointsAreLeftAlone)
{
    const axes_typ axes = frame({0.3, -0.7, 1.9}, {1.1, 0.2, -0.4});
    XYZ6_typ point(1, 2, 3);
    axes.to_local(&point, 0, {4, 5, 6});
    axes.to_global(&point, 0, {4, 5, 6});
    expect_equal(point, 1, 2, 3);
}

} // namespace
} // namespace dastrel
