// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "tests/literal/kernel/generator.h"
#include "tests/literal/kernel/integers.h"
#include "tests/literal/kernel/sampler.h"

namespace literal {
namespace {

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

/// The share of each result among many draws between two integers.
std::map<std::int32_t, double> shares(std::int32_t a, std::int32_t b)
{
    constexpr int draws = 60000;
    Sampler sampler(11);
    std::map<std::int32_t, double> found;
    for (int i = 0; i < draws; ++i) {
        found[sampler.between(a, b)] += 1.0 / draws;
    }
    return found;
}

Face ground(std::vector<Vec3> points)
{
    Face face;
    face.points = std::move(points);
    face.normal = {0.0, 1.0, 0.0};
    return face;
}

Face unit_square()
{
    return ground({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 0.0, 1.0}, {0.0, 0.0, 1.0}});
}

TEST(LiteralIntegers, WhatDoesNotFitBecomesTheLowest)
{
    EXPECT_EQ(to_int32(2147483647.9), highest);
    EXPECT_EQ(to_int32(2147483648.0), lowest);
    EXPECT_EQ(to_int32(-2147483648.9), lowest);
    EXPECT_EQ(to_int32(1e300), lowest);
    EXPECT_EQ(to_int32(std::nan("")), lowest);
    EXPECT_EQ(to_int32(-2.9), -2);
    EXPECT_EQ(wrapped_difference(highest, -1), lowest);
    EXPECT_EQ(wrapped_sum(highest, 1), lowest);
    EXPECT_EQ(wrapped_absolute(lowest), lowest);
    EXPECT_EQ(wrapped_absolute(-7), 7);
}

TEST(LiteralGenerator, FirstOutputsAreThePublishedOnes)
{
    Generator words;
    words.seed(4357);
    EXPECT_EQ(words.next_word(), 2867219139U);
    EXPECT_EQ(words.next_word(), 1585203162U);
    EXPECT_EQ(words.next_word(), 3113124129U);
    Generator reals;
    reals.seed(4357);
    EXPECT_NEAR(reals.next(), 0.667576, 5e-7);
    EXPECT_NEAR(reals.next(), 0.369084, 5e-7);
    EXPECT_NEAR(reals.next(), 0.724831, 5e-7);
}

TEST(LiteralGenerator, UnseededAndZeroAreTheDefaultSeed)
{
    Generator unseeded;
    Generator zero;
    Generator plain;
    zero.seed(0);
    plain.seed(4357);
    for (int i = 0; i < 2000; ++i) {
        const std::uint64_t word = plain.next_word();
        ASSERT_EQ(unseeded.next_word(), word) << i;
        ASSERT_EQ(zero.next_word(), word) << i;
        ASSERT_LE(word, 0xffffffffU);
    }
}

TEST(LiteralGenerator, HighBitsOfASeedDoNotCountButAreNotZero)
{
    Generator wide;
    Generator narrow;
    wide.seed(0x500000007U);
    narrow.seed(7);
    EXPECT_EQ(wide.next_word(), narrow.next_word());
    Generator only_high;
    Generator zero;
    only_high.seed(0x100000000U);
    zero.seed(0);
    EXPECT_NE(only_high.next_word(), zero.next_word());
}

TEST(LiteralSampler, SeedsOfEitherSignAreAlike)
{
    Sampler a(1);
    Sampler b(2);
    a.restart(-7);
    b.restart(7);
    EXPECT_EQ(a.fraction(), b.fraction());
    a.restart(0);
    b.restart(4357);
    EXPECT_EQ(a.fraction(), b.fraction());
    Generator unsigned_lowest;
    unsigned_lowest.seed(2147483648U);
    a.restart(lowest);
    EXPECT_EQ(a.fraction(), unsigned_lowest.next());
}

TEST(LiteralSampler, TheClockIsCutToItsLow32Bits)
{
    EXPECT_EQ(Sampler(1000).fraction(), Sampler(1000 + (std::int64_t{3} << 32)).fraction());
    EXPECT_EQ(Sampler(std::int64_t{1} << 32).fraction(), Sampler(4357).fraction());
    EXPECT_NE(Sampler(1000).fraction(), Sampler(1001).fraction());
}

TEST(LiteralSampler, EqualBoundsTakeNoOutput)
{
    Sampler used(5);
    Sampler fresh(5);
    EXPECT_EQ(used.between(5, 5), 5);
    EXPECT_EQ(used.between(0.25, 0.25), 0.25);
    EXPECT_EQ(used.fraction(), fresh.fraction());
}

TEST(LiteralSampler, BoundsMayStandInEitherOrder)
{
    Sampler a(5);
    Sampler b(5);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(a.between(9, 2), b.between(2, 9));
        const double real = a.between(2.0, 1.0);
        ASSERT_EQ(real, b.between(1.0, 2.0));
        ASSERT_GE(real, 1.0);
        ASSERT_LE(real, 2.0);
    }
}

TEST(LiteralSampler, RealsComeFromOneOutput)
{
    Sampler sampler(4357);
    const double output = 2867219139.0 * 2.3283064370807974e-10;
    EXPECT_EQ(sampler.between(-3.0, 5.0), 8.0 * output - 3.0);
}

TEST(LiteralSampler, IntegersRoundToNearestAboveZero)
{
    const auto two = shares(0, 1);
    EXPECT_NEAR(two.at(0), 0.5, 0.01);
    EXPECT_NEAR(two.at(1), 0.5, 0.01);
    const auto three = shares(0, 2);
    ASSERT_EQ(three.size(), 3U);
    EXPECT_NEAR(three.at(0), 0.25, 0.01);
    EXPECT_NEAR(three.at(1), 0.5, 0.01);
    EXPECT_NEAR(three.at(2), 0.25, 0.01);
}

TEST(LiteralSampler, IntegersBelowZeroAreCutTowardsZero)
{
    const auto found = shares(-3, 0);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_NEAR(found.at(-2), 1.0 / 6.0, 0.01);
    EXPECT_NEAR(found.at(-1), 1.0 / 3.0, 0.01);
    EXPECT_NEAR(found.at(0), 0.5, 0.01);
}

TEST(LiteralSampler, AWrappedSpanStaysDefined)
{
    Sampler sampler(4357);
    // The span wraps to -1: the lowest number less two thirds, plus one half, fits by cutting.
    EXPECT_EQ(sampler.between(lowest, highest), lowest);
    // From -2147483648 to 1 the span wraps to -2147483647 and the sum no longer fits.
    EXPECT_EQ(sampler.between(lowest, 1), lowest);
}

TEST(LiteralSampler, CoinsAreHeadsAboveAHalf)
{
    Sampler sampler(4357);
    EXPECT_TRUE(sampler.coin());  // 0.667576
    EXPECT_FALSE(sampler.coin()); // 0.369084
    EXPECT_TRUE(sampler.coin());  // 0.724831
}

TEST(LiteralPointOn, FewerThanThreePointsGiveZeroAndTakeNoOutput)
{
    Sampler used(5);
    Sampler fresh(5);
    EXPECT_EQ(used.point_on(ground({})), Vec3{});
    EXPECT_EQ(used.point_on(ground({{1.0, 1.0, 1.0}, {2.0, 2.0, 2.0}})), Vec3{});
    EXPECT_EQ(used.fraction(), fresh.fraction());
}

TEST(LiteralPointOn, ASquareTakesXThenZ)
{
    Sampler sampler(4357);
    const Vec3 p = sampler.point_on(unit_square());
    EXPECT_EQ(p.x, 2867219139.0 * 2.3283064370807974e-10);
    EXPECT_EQ(p.y, 0.0);
    EXPECT_EQ(p.z, 1585203162.0 * 2.3283064370807974e-10);
}

TEST(LiteralPointOn, ASquareIsFilledEvenly)
{
    constexpr int draws = 40000;
    Sampler sampler(3);
    std::vector<int> in_x(4);
    std::vector<int> in_z(4);
    for (int i = 0; i < draws; ++i) {
        const Vec3 p = sampler.point_on(unit_square());
        ASSERT_TRUE(p.x >= 0.0 && p.x <= 1.0 && p.z >= 0.0 && p.z <= 1.0 && p.y == 0.0);
        ++in_x[p.x < 0.5 ? (p.x < 0.25 ? 0 : 1) : (p.x < 0.75 ? 2 : 3)];
        ++in_z[p.z < 0.5 ? (p.z < 0.25 ? 0 : 1) : (p.z < 0.75 ? 2 : 3)];
    }
    for (std::size_t quarter = 0; quarter < 4; ++quarter) {
        EXPECT_NEAR(in_x[quarter], draws / 4.0, draws / 50.0);
        EXPECT_NEAR(in_z[quarter], draws / 4.0, draws / 50.0);
    }
}

TEST(LiteralPointOn, ATriangleIsEvenInXNotInArea)
{
    constexpr int draws = 20000;
    const Face triangle = ground({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 0.0, 1.0}});
    Sampler sampler(8);
    int narrow_half = 0;
    for (int i = 0; i < draws; ++i) {
        const Vec3 p = sampler.point_on(triangle);
        ASSERT_LE(p.z, p.x + 1e-12);
        ASSERT_GE(p.z, -1e-12);
        narrow_half += p.x < 0.5 ? 1 : 0;
    }
    EXPECT_NEAR(narrow_half, draws / 2.0, draws / 50.0); // a quarter of the area
}

TEST(LiteralPointOn, ATiltedFaceHoldsItsPoints)
{
    Face face;
    face.points = {{1.0, 1.0, 1.0}, {3.0, 2.0, 1.0}, {3.0, 2.0, 4.0}, {1.0, 1.0, 4.0}};
    face.normal = unit({-1.0, 2.0, 0.0});
    Sampler sampler(8);
    for (int i = 0; i < 1000; ++i) {
        const Vec3 p = sampler.point_on(face);
        ASSERT_NEAR(p.y, 1.0 + (p.x - 1.0) / 2.0, 1e-12);
        ASSERT_TRUE(p.x > 1.0 - 1e-12 && p.x < 3.0 + 1e-12);
        ASSERT_TRUE(p.z > 1.0 - 1e-12 && p.z < 4.0 + 1e-12);
    }
}

TEST(LiteralPointOn, AFaceStandingOnOneXTakesTheHeightsOfItsFirstPoints)
{
    // Both points of the first edge coincide, so the frame keeps the axes; every X is 0. The first
    // two edges are hit at 0 and 0, and neither draw has a range.
    Sampler used(5);
    Sampler fresh(5);
    const Face upright = ground({{0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 2.0}});
    EXPECT_EQ(used.point_on(upright), Vec3{});
    EXPECT_EQ(used.fraction(), fresh.fraction());
}

TEST(LiteralPointOn, AConcaveFaceCountsOnlyItsFirstTwoCrossings)
{
    // The notch of a U opens towards +Z; a column at X 1.5 meets the base and the notch's floor.
    const Face u_shape = ground({{0.0, 0.0, 0.0},
                                 {3.0, 0.0, 0.0},
                                 {3.0, 0.0, 2.0},
                                 {2.0, 0.0, 2.0},
                                 {2.0, 0.0, 1.0},
                                 {1.0, 0.0, 1.0},
                                 {1.0, 0.0, 2.0},
                                 {0.0, 0.0, 2.0}});
    Sampler sampler(8);
    bool high_left = false;
    for (int i = 0; i < 2000; ++i) {
        const Vec3 p = sampler.point_on(u_shape);
        ASSERT_TRUE(p.z >= 0.0 && p.z <= 2.0);
        if (p.x > 1.0 && p.x < 2.0) {
            ASSERT_LE(p.z, 1.0);
        }
        high_left = high_left || (p.x < 1.0 && p.z > 1.0);
    }
    EXPECT_TRUE(high_left);
}

} // namespace
} // namespace literal
