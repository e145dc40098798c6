// SPDX-License-Identifier: MIT
#include "formats/lwo2/divide/cuts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using formats::lwo2::Cuts;

TEST(Cuts, AreFreeWhereNothingIsJoined)
{
    Cuts cuts(10);
    cuts.join(4, 4);
    cuts.finish();
    EXPECT_EQ(cuts.last_in({1, 10}), 9u);
    EXPECT_EQ(cuts.last_in({1, 2}), 1u);
    EXPECT_EQ(cuts.last_in({5, 5}), std::nullopt);
}

TEST(Cuts, AreClosedBetweenJoinedPoints)
{
    Cuts cuts(10);
    cuts.join(6, 2); // in any order
    cuts.finish();
    EXPECT_EQ(cuts.last_in({1, 7}), 2u);
    EXPECT_EQ(cuts.last_in({3, 8}), 7u);
    EXPECT_EQ(cuts.last_in({3, 7}), std::nullopt);
}

TEST(Cuts, AreThoseOfAPlainListOfPlaces)
{
    std::mt19937 random(11);
    constexpr std::uint32_t points = 50000;
    for (int run = 0; run < 50; ++run) {
        SCOPED_TRACE(run);
        Cuts cuts(points);
        std::vector<bool> closed(points + 1, false);
        const int joins = 1 + static_cast<int>(random() % 12);
        for (int i = 0; i < joins; ++i) {
            const auto first = static_cast<std::uint32_t>(random() % points);
            const auto reach = static_cast<std::uint32_t>(random() % 20000);
            const std::uint32_t last = std::min(first + reach, points - 1);
            cuts.join(first, last);
            std::fill(closed.begin() + first + 1, closed.begin() + last + 1, true);
        }
        cuts.finish();
        for (std::uint32_t place = 0; place < points; ++place)
            ASSERT_EQ(cuts.last_in({place, place + 1}).has_value(), !closed[place]) << place;
    }
}

} // namespace
