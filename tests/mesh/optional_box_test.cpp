// SPDX-License-Identifier: MIT
#include "mesh/optional_box.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using Numbers = mesh::OptionalBox<std::vector<int>>;

TEST(OptionalBox, ReadsAsAnEmptyPartUntilItIsMade)
{
    Numbers numbers;
    EXPECT_FALSE(numbers.has_value());
    EXPECT_TRUE(numbers->empty());
    EXPECT_EQ(numbers.get(), nullptr);
    numbers.get_or_create().push_back(7);
    EXPECT_TRUE(numbers.has_value());
    EXPECT_EQ(*numbers, std::vector{7});
    numbers.reset();
    EXPECT_TRUE(numbers->empty());
}

TEST(OptionalBox, IsCopiedWithWhatItHolds)
{
    Numbers numbers;
    numbers.get_or_create().push_back(7);
    Numbers copy = numbers;
    copy.get_or_create().push_back(8);
    EXPECT_EQ(numbers->size(), 1u);
    EXPECT_EQ(copy->size(), 2u);
    copy = Numbers();
    EXPECT_FALSE(copy.has_value());
}

} // namespace
