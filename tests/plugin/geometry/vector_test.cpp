// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>
#include <memory>

#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Vector, IsBuiltFromNothingOneNumberOrAnArray)
{
    expect_equal(XYZ6_typ(), 0, 0, 0);
    expect_equal(XYZ6_typ(2.5), 2.5, 2.5, 2.5);
    const double three[] = {1, 2, 3};
    expect_equal(XYZ6_typ(three), 1, 2, 3);
}

TEST(Vector, AssignsOneNumberToAllComponentsAndGivesACopy)
{
    XYZ6_typ v(1, 2, 3);
    XYZ6_typ copy = (v = 7.0);
    expect_equal(v, 7, 7, 7);
    expect_equal(copy, 7, 7, 7);
    copy.x() = 0;
    expect_equal(v, 7, 7, 7);
}

TEST(Vector, AssignsAnArrayAndGivesACopy)
{
    const double three[] = {1, 2, 3};
    XYZ6_typ v(9.0);
    const XYZ6_typ copy = (v = three);
    expect_equal(v, 1, 2, 3);
    expect_equal(copy, 1, 2, 3);
}

TEST(Vector, AddsInPlaceAndGivesACopy)
{
    XYZ6_typ v(1, 2, 3);
    const XYZ6_typ sum = (v += XYZ6_typ(10, 20, 30));
    expect_equal(v, 11, 22, 33);
    expect_equal(sum, 11, 22, 33);
}

TEST(Vector, SubtractingMovingAndScalingLeaveTheOperand)
{
    const XYZ6_typ v(1, 2, 3);
    expect_equal(v - XYZ6_typ(3, 2, 1), -2, 0, 2);
    expect_equal(v.move(XYZ6_typ(3, 2, 1)), 4, 4, 4);
    expect_equal(v * -2.0, -2, -4, -6);
    expect_equal(!v, -1, -2, -3);
    expect_equal(v, 1, 2, 3);
}

TEST(Vector, CrossProductStandsSquareAndVanishesForParallels)
{
    expect_equal(XYZ6_typ(1, 0, 0) * XYZ6_typ(0, 1, 0), 0, 0, 1);
    expect_equal(XYZ6_typ(0, 1, 0) * XYZ6_typ(0, 0, 1), 1, 0, 0);
    expect_equal(XYZ6_typ(0, 0, 1) * XYZ6_typ(1, 0, 0), 0, 1, 0);
    expect_equal(XYZ6_typ(1, 2, 3) * XYZ6_typ(2, 4, 6), 0, 0, 0);
    expect_equal(XYZ6_typ(1, 2, 3) * XYZ6_typ(4, 5, 6), -3, 6, -3);
}

TEST(Vector, UnitVectorOfNothingIsNothing) { expect_equal(~XYZ6_typ(), 0, 0, 0); }

TEST(Vector, UnitVectorDividesByTheLength)
{
    const XYZ6_typ v(1, 2, 3);
    const double length = std::sqrt((1.0 * 1.0 + 2.0 * 2.0) + 3.0 * 3.0);
    expect_equal(~v, 1 / length, 2 / length, 3 / length);
    expect_equal(~XYZ6_typ(0, -4, 0), 0, -1, 0);
}

TEST(Vector, UnitVectorKeepsADirectionWhoseSquaresUnderflow)
{
    expect_equal(~XYZ6_typ(0, 0, 1e-300), 0, 0, 1);
    expect_equal(~XYZ6_typ(0, -5e-324, 0), 0, -1, 0);
    expect_near(~XYZ6_typ(3e-200, 0, 4e-200), 0.6, 0, 0.8);
}

TEST(Vector, UnitVectorDividesByATinyLengthThatIsNotZero)
{
    // The squares do not vanish but have lost bits: the rule divides by what is left.
    const XYZ6_typ v(0, 0, 3e-162);
    const double length = std::sqrt(3e-162 * 3e-162);
    ASSERT_NE(length, 0.0);
    ASSERT_NE(3e-162 / length, 1.0);
    EXPECT_EQ((~v).z(), 3e-162 / length);
}

TEST(Vector, UnitVectorOfANonNumberIsNone) { EXPECT_TRUE(std::isnan((~XYZ6_typ(nan, 0, 0)).y())); }

TEST(Vector, DiffersFromANumberWhenAnyComponentDoes)
{
    EXPECT_EQ(XYZ6_typ() != 0.0, 0);
    EXPECT_EQ(XYZ6_typ(-0.0, 0.0, -0.0) != 0.0, 0);
    EXPECT_EQ(XYZ6_typ(1, 0, 0) != 0.0, 1);
    EXPECT_EQ(XYZ6_typ(0, 1, 0) != 0.0, 1);
    EXPECT_EQ(XYZ6_typ(0, 0, 1) != 0.0, 1);
    EXPECT_EQ(XYZ6_typ(5e-324, 0, 0) != 0.0, 1); // no tolerance
    EXPECT_EQ(XYZ6_typ(3.0) != 3.0, 0);
    EXPECT_EQ(XYZ6_typ(nan, nan, nan) != nan, 1);
}

TEST(Vector, ConvertsToAWritableArrayOfThree)
{
    XYZ6_typ v(1, 2, 3);
    double* const array = v;
    EXPECT_EQ(array[0], 1);
    EXPECT_EQ(array[2], 3);
    array[1] = 20;
    expect_equal(v, 1, 20, 3);
    static_assert(sizeof(XYZ6_typ) == 3 * sizeof(double));
}

TEST(Vector, ConvertsToFloatsRoundedToNearest)
{
    const std::unique_ptr<float[]> floats(XYZ6_typ(0.1, -1.0 / 3, 16777217.0).conv2float());
    EXPECT_EQ(floats[0], 0.1F);
    EXPECT_EQ(floats[1], -1.0F / 3);
    EXPECT_EQ(floats[2], 16777216.0F);
}

TEST(Vector, LengthAndDistanceSumTheirSquaresInOrder)
{
    // 1e16 + 1 + 1 depends on which two are added first.
    const XYZ6_typ v(1e8, 1, 1);
    EXPECT_EQ(v.len(), std::sqrt((1e16 + 1.0) + 1.0));
    EXPECT_NE((1e16 + 1.0) + 1.0, 1e16 + (1.0 + 1.0));
    EXPECT_EQ(XYZ6_typ(1, 1, 1e8).len(), std::sqrt((1.0 + 1.0) + 1e16));
    EXPECT_EQ(v.calc_distance(XYZ6_typ()), std::sqrt((1e16 + 1.0) + 1.0));
    EXPECT_EQ(XYZ6_typ(1, 2, 3).calc_distance(XYZ6_typ(4, 6, 3)), 5);
}

} // namespace
} // namespace dastrel
