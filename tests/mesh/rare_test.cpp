// SPDX-License-Identifier: MIT
#include "mesh/rare.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using Numbers = mesh::Rare<std::vector<int>>;

TEST(Rare, ReadsAsAnEmptyPartUntilItIsMade)
{
    Numbers numbers;
    EXPECT_FALSE(numbers.is_there());
    EXPECT_TRUE(numbers->empty());
    EXPECT_EQ(numbers.there(), nullptr);
    numbers.make().push_back(7);
    EXPECT_TRUE(numbers.is_there());
    EXPECT_EQ(*numbers, std::vector{7});
    numbers.reset();
    EXPECT_TRUE(numbers->empty());
}

TEST(Rare, IsCopiedWithWhatItHolds)
{
    Numbers numbers;
    numbers.make().push_back(7);
    Numbers copy = numbers;
    copy.make().push_back(8);
    EXPECT_EQ(numbers->size(), 1u);
    EXPECT_EQ(copy->size(), 2u);
    copy = Numbers();
    EXPECT_FALSE(copy.is_there());
}

} // namespace
