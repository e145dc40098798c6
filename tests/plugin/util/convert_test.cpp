// SPDX-License-Identifier: MIT
#include <limits>

#include <gtest/gtest.h>

#include "plugin/util/convert.h"

namespace dastrel {
namespace {

constexpr int most_negative = std::numeric_limits<int>::min();
constexpr int largest = std::numeric_limits<int>::max();

TEST(Convert, CutsTowardsZero)
{
    EXPECT_EQ(to_int(2.999), 2);
    EXPECT_EQ(to_int(-2.999), -2);
    EXPECT_EQ(to_int(-0.5), 0);
    EXPECT_EQ(to_int(2147483647.9), largest);
    EXPECT_EQ(to_int(-2147483648.9), most_negative);
}

TEST(Convert, WhatDoesNotFitBecomesTheMostNegative)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(to_int(2147483648.0), most_negative);
    EXPECT_EQ(to_int(-2147483649.0), most_negative);
    EXPECT_EQ(to_int(1e300), most_negative);
    EXPECT_EQ(to_int(infinity), most_negative);
    EXPECT_EQ(to_int(-infinity), most_negative);
    EXPECT_EQ(to_int(std::numeric_limits<double>::quiet_NaN()), most_negative);
}

// In a constant a conversion that is not defined does not compile.
static_assert(to_int(2147483648.0) == most_negative);
static_assert(to_int(-2147483649.0) == most_negative);
static_assert(to_int(1e300) == most_negative);
static_assert(wrapping_sum(largest, 1) == most_negative);
static_assert(wrapping_difference(largest, most_negative) == -1);
static_assert(wrapping_abs(most_negative) == most_negative);

TEST(Convert, SumsAndDifferencesWrapAround)
{
    EXPECT_EQ(wrapping_difference(5, 7), -2);
    EXPECT_EQ(wrapping_difference(largest, most_negative), -1);
    EXPECT_EQ(wrapping_difference(most_negative, 1), largest);
    EXPECT_EQ(wrapping_sum(5, -7), -2);
    EXPECT_EQ(wrapping_sum(largest, 1), most_negative);
}

TEST(Convert, TheAbsoluteValueOfTheMostNegativeStaysNegative)
{
    EXPECT_EQ(wrapping_abs(-7), 7);
    EXPECT_EQ(wrapping_abs(7), 7);
    EXPECT_EQ(wrapping_abs(0), 0);
    EXPECT_EQ(wrapping_abs(most_negative), most_negative);
    EXPECT_EQ(wrapping_abs(-largest), largest);
}

} // namespace
} // namespace dastrel
