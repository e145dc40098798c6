// SPDX-License-Identifier: MIT
#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "plugin/random/rnd.h"
#include "tests/plugin/random/ends.h"

namespace dastrel {
namespace {

constexpr double scale = 2.3283064370807974e-10;

/// The generator once more: 32-bit arithmetic, one word of state made anew at a time.
class ShortTwister {
public:
    explicit ShortTwister(std::uint32_t seed)
    {
        for (std::uint32_t& word : state_) {
            word = seed & 0xffff0000U;
            seed = seed * 69069U + 1U;
            word |= seed >> 16;
            seed = seed * 69069U + 1U;
        }
    }

    std::uint32_t next()
    {
        const std::uint32_t joint =
            (state_[at_] & 0x80000000U) | (state_[(at_ + 1) % 624] & 0x7fffffffU);
        std::uint32_t y = state_[(at_ + 397) % 624] ^ (joint >> 1);
        if ((joint & 1U) != 0)
            y ^= 0x9908b0dfU;
        state_[at_] = y;
        at_ = (at_ + 1) % 624;
        y ^= y >> 11;
        y ^= (y << 7) & 0x9d2c5680U;
        y ^= (y << 15) & 0xefc60000U;
        return y ^ (y >> 18);
    }

private:
    std::array<std::uint32_t, 624> state_{};
    std::size_t at_ = 0;
};

std::vector<double> outputs(std::uint64_t seed, int count)
{
    CRandom generator;
    generator.randomize(seed);
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(generator.get());
    return values;
}

TEST(Generator, GivesThePublishedFirstOutputsOf4357)
{
    const std::vector<double> values = outputs(4357, 3);
    EXPECT_EQ(values[0], 2867219139.0 * scale);
    EXPECT_EQ(values[1], 1585203162.0 * scale);
    EXPECT_EQ(values[2], 3113124129.0 * scale);
    EXPECT_NEAR(values[0], 0.667576, 5e-7);
    EXPECT_NEAR(values[1], 0.369084, 5e-7);
    EXPECT_NEAR(values[2], 0.724831, 5e-7);
}

TEST(Generator, AgreesWithAShortOneFor1000OutputsOf4357)
{
    ShortTwister expected(4357);
    const std::vector<double> values = outputs(4357, 1000);
    for (std::size_t i = 0; i < values.size(); ++i)
        ASSERT_EQ(values[i], expected.next() * scale) << "output " << i;
}

TEST(Generator, AgreesWithAShortOneForOtherSeeds)
{
    for (const std::uint32_t seed : {1U, 25U, 0x80000000U, 0xffffffffU, 123456789U}) {
        ShortTwister expected(seed);
        const std::vector<double> values = outputs(seed, 2000);
        for (std::size_t i = 0; i < values.size(); ++i)
            ASSERT_EQ(values[i], expected.next() * scale) << "seed " << seed << ", output " << i;
    }
}

TEST(Generator, SeedZeroStandsFor4357) { EXPECT_EQ(outputs(0, 700), outputs(4357, 700)); }

TEST(Generator, UnseededGivesTheSequenceOf4357)
{
    CRandom generator;
    EXPECT_EQ(generator.mti, 625);
    const std::vector<double> expected = outputs(4357, 700);
    for (const double value : expected)
        ASSERT_EQ(generator.get(), value);
}

TEST(Generator, OnlyTheLow32BitsOfASeedCount)
{
    EXPECT_EQ(outputs(0x1'0000'0019, 700), outputs(0x19, 700));
    EXPECT_EQ(outputs(0xffffffff'80000000, 700), outputs(0x80000000, 700));
    // Not zero, although its low bits are: it is not taken for 4357.
    EXPECT_NE(outputs(0x1'0000'0000, 5), outputs(4357, 5));
}

TEST(Generator, KeepsWordsOf32BitsAndCountsThem)
{
    CRandom generator;
    generator.randomize(0xffffffff'ffffffff);
    EXPECT_EQ(generator.mti, 624);
    (void)generator.get();
    EXPECT_EQ(generator.mti, 1);
    for (int i = 0; i < 624; ++i)
        ASSERT_EQ(generator.mt[i] >> 32, 0U);
    for (int i = 1; i < 624; ++i)
        (void)generator.get();
    EXPECT_EQ(generator.mti, 624);
}

TEST(Generator, RestartsWhenSeededAgain)
{
    CRandom generator;
    generator.randomize(25);
    for (int i = 0; i < 1000; ++i)
        (void)generator.get();
    generator.randomize(25);
    EXPECT_EQ(generator.get(), outputs(25, 1)[0]);
}

TEST(Generator, ReachesBothEnds)
{
    random sampler;
    let_next_be(sampler, {0.0, 1.0});
    EXPECT_EQ(sampler.get(), 0.0);
    EXPECT_EQ(sampler.get(), 1.0);
}

TEST(Generator, StaysWithinItsEnds)
{
    for (const double value : outputs(99, 100000))
        ASSERT_TRUE(value >= 0.0 && value <= 1.0) << value;
}

static_assert(!std::is_copy_constructible_v<CRandom>);
static_assert(!std::is_copy_assignable_v<CRandom>);

} // namespace
} // namespace dastrel
