// SPDX-License-Identifier: MIT
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "plugin/random/clock.h"
#include "tests/plugin/module_test.h"
#include "tests/plugin/random/ends.h"

namespace dastrel {
namespace {

constexpr int most_negative = std::numeric_limits<int>::min();
constexpr int largest = std::numeric_limits<int>::max();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Sets DASTREL_CLOCK as long as it lives; null takes it away.
class ClockVariable {
public:
    explicit ClockVariable(const char* value)
    {
        const char* const before = std::getenv("DASTREL_CLOCK");
        was_set_ = before != nullptr;
        if (was_set_)
            before_ = before;
        if (value != nullptr)
            setenv("DASTREL_CLOCK", value, 1);
        else
            unsetenv("DASTREL_CLOCK");
    }
    ClockVariable(const ClockVariable&) = delete;
    ClockVariable& operator=(const ClockVariable&) = delete;
    ~ClockVariable()
    {
        if (was_set_)
            setenv("DASTREL_CLOCK", before_.c_str(), 1);
        else
            unsetenv("DASTREL_CLOCK");
    }

private:
    bool was_set_ = false;
    std::string before_;
};

/// How often each whole number comes in 60000 draws.
std::map<int, int> counts(int a, int b)
{
    random sampler;
    sampler.fixed(11);
    std::map<int, int> seen;
    for (int i = 0; i < 60000; ++i)
        ++seen[sampler.z_zakresu(a, b)];
    return seen;
}

std::vector<double> outputs(random& sampler, int count = 20)
{
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(sampler.get());
    return values;
}

std::vector<double> outputs_of(int seed)
{
    random sampler;
    sampler.fixed(seed);
    return outputs(sampler);
}

std::vector<double> raw_outputs_of(std::uint64_t seed)
{
    random sampler;
    sampler.randomize(seed);
    return outputs(sampler);
}

TEST(Sampler, EqualBoundsAreReturnedWithoutADraw)
{
    random sampler;
    sampler.fixed(25);
    EXPECT_EQ(sampler.z_zakresu(5, 5), 5);
    EXPECT_EQ(sampler.z_zakresu(2.5, 2.5), 2.5);
    EXPECT_EQ(draws_since(25, sampler), 0);
}

TEST(Sampler, EveryOtherDrawTakesOneOutput)
{
    random sampler;
    sampler.fixed(25);
    (void)sampler.z_zakresu(2, 9);
    EXPECT_EQ(draws_since(25, sampler), 1);
    (void)sampler.z_zakresu(2.0, 9.0);
    EXPECT_EQ(draws_since(25, sampler), 2);
    (void)sampler.TorF();
    EXPECT_EQ(draws_since(25, sampler), 3);
    (void)sampler.percent();
    EXPECT_EQ(draws_since(25, sampler), 4);
}

TEST(Sampler, WholeNumbersFollowTheirFormula)
{
    random sampler;
    sampler.fixed(7);
    const std::vector<double> u = outputs_of(7);
    for (const double output : u)
        ASSERT_EQ(sampler.z_zakresu(3, 1000003), static_cast<int>(3 + 1000000 * output + 0.5));
}

TEST(Sampler, RealsFollowTheirFormula)
{
    random sampler;
    sampler.fixed(7);
    const std::vector<double> u = outputs_of(7);
    for (const double output : u)
        ASSERT_EQ(sampler.z_zakresu(0.1, 0.7), (0.7 - 0.1) * output + 0.1);
}

TEST(Sampler, TheOrderOfTheBoundsDoesNotMatter)
{
    random a;
    random b;
    a.fixed(3);
    b.fixed(3);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(a.z_zakresu(9, 2), b.z_zakresu(2, 9));
        ASSERT_EQ(a.z_zakresu(0.7, 0.1), b.z_zakresu(0.1, 0.7));
    }
}

TEST(Sampler, EndsOfARangeComeHalfAsOftenAsInnerNumbers)
{
    std::map<int, int> two = counts(0, 1);
    EXPECT_EQ(two.size(), 2U);
    EXPECT_NEAR(two[0], 30000, 800);
    std::map<int, int> three = counts(0, 2);
    EXPECT_EQ(three.size(), 3U);
    EXPECT_NEAR(three[0], 15000, 800);
    EXPECT_NEAR(three[1], 30000, 800);
    EXPECT_NEAR(three[2], 15000, 800);
}

TEST(Sampler, NegativeNumbersAreCutTowardsZero)
{
    std::map<int, int> seen = counts(-3, 0);
    EXPECT_EQ(seen.count(-3), 0U);
    EXPECT_EQ(seen.size(), 3U);
    EXPECT_NEAR(seen[-2], 10000, 800);
    EXPECT_NEAR(seen[-1], 20000, 800);
    EXPECT_NEAR(seen[0], 30000, 800);
}

TEST(Sampler, RealsReachBothBounds)
{
    random sampler;
    sampler.fixed(3);
    for (int i = 0; i < 10000; ++i) {
        const double value = sampler.z_zakresu(2.0, 1.0);
        ASSERT_TRUE(value >= 1.0 && value <= 2.0) << value;
    }
    let_next_be(sampler, {1.0});
    EXPECT_EQ(sampler.z_zakresu(2.0, 1.0), 2.0);
    let_next_be(sampler, {0.0});
    EXPECT_EQ(sampler.z_zakresu(2.0, 1.0), 1.0);
}

TEST(Sampler, WholeNumbersReachBothBounds)
{
    random sampler;
    sampler.fixed(3);
    let_next_be(sampler, {1.0});
    EXPECT_EQ(sampler.z_zakresu(2, 9), 9);
    let_next_be(sampler, {0.0});
    EXPECT_EQ(sampler.z_zakresu(2, 9), 2);
}

TEST(Sampler, ADifferenceThatDoesNotFitWrapsAround)
{
    random sampler;
    sampler.fixed(3);
    let_next_be(sampler, {1.0});
    // largest - most_negative is -1 in 32 bits: the sum lies below the smallest int
    EXPECT_EQ(sampler.z_zakresu(most_negative, largest), most_negative);
    let_next_be(sampler, {0.0});
    EXPECT_EQ(sampler.z_zakresu(most_negative, largest), -2147483647);
    let_next_be(sampler, {1.0});
    // 2 - most_negative wraps to -2147483646: -2147483648 - 2147483646 does not fit an int
    EXPECT_EQ(sampler.z_zakresu(2, most_negative), most_negative);
}

TEST(Sampler, ASeedAndItsOppositeStartTheSameSequence)
{
    EXPECT_EQ(outputs_of(-7), outputs_of(7));
    EXPECT_NE(outputs_of(8), outputs_of(7));
}

TEST(Sampler, SeedZeroStandsFor4357) { EXPECT_EQ(outputs_of(0), outputs_of(4357)); }

TEST(Sampler, TheMostNegativeSeedActsAsItsLow32Bits)
{
    EXPECT_EQ(outputs_of(most_negative), raw_outputs_of(2147483648U));
}

TEST(Sampler, TossesTrueAboveAHalf)
{
    random sampler;
    random beside;
    sampler.fixed(5);
    beside.fixed(5);
    int heads = 0;
    for (int i = 0; i < 10000; ++i) {
        const bool head = sampler.TorF();
        ASSERT_EQ(head, beside.get() > 0.5);
        heads += head ? 1 : 0;
    }
    EXPECT_NEAR(heads, 5000, 200);
    let_next_be(sampler, {1.0});
    EXPECT_TRUE(sampler.TorF());
}

TEST(Sampler, PercentIsTheOutputItself)
{
    random sampler;
    sampler.fixed(7);
    for (const double output : outputs_of(7))
        ASSERT_EQ(sampler.percent(), output);
}

TEST(Sampler, ANonNumberBoundGivesANonNumber)
{
    random sampler;
    sampler.fixed(7);
    const double value = sampler.z_zakresu(nan, 1.0);
    EXPECT_NE(value, value);
    EXPECT_EQ(draws_since(7, sampler), 1);
}

TEST(Clock, SamplersOfOneSecondAreAlike)
{
    const ClockVariable none(nullptr);
    // Two constructions may fall on both sides of a full second; three cannot all do so.
    random a;
    random b;
    random c;
    const std::vector<double> of_b = outputs(b);
    EXPECT_TRUE(outputs(a) == of_b || outputs(c) == of_b);
}

TEST(Clock, IsTheCalendarInSeconds)
{
    const ClockVariable none(nullptr);
    const auto before = static_cast<std::uint32_t>(std::time(nullptr));
    const std::uint32_t now = clock_seconds();
    const auto after = static_cast<std::uint32_t>(std::time(nullptr));
    EXPECT_GE(now, before);
    EXPECT_LE(now, after);
}

TEST(Clock, CanBeFixedByTheEnvironment)
{
    const ClockVariable fixed("1234567890");
    EXPECT_EQ(clock_seconds(), 1234567890U);
    random sampler;
    EXPECT_EQ(outputs(sampler), raw_outputs_of(1234567890U));
}

TEST(Clock, IsCutTo32BitsAndTakenAsUnsigned)
{
    const ClockVariable late("4294967301"); // 2^32 + 5
    EXPECT_EQ(clock_seconds(), 5U);
    const ClockVariable early("-1");
    EXPECT_EQ(clock_seconds(), 0xffffffffU);
}

TEST(Clock, ThatIsNoNumberIsNotHeeded)
{
    const auto before = static_cast<std::uint32_t>(std::time(nullptr));
    for (const char* text : {"", "soon", "12x", "99999999999999999999999"}) {
        const ClockVariable wrong(text);
        EXPECT_GE(clock_seconds(), before) << text;
        EXPECT_LE(clock_seconds(), before + 60) << text;
    }
}

} // namespace
} // namespace dastrel
