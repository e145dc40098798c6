// SPDX-License-Identifier: MIT
#include <cstdint>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "modeler/position_memory.h"

namespace {

using modeler::position_memory_problem;

TEST(PositionMemory, IsJudgedByTheByte)
{
    EXPECT_EQ(position_memory_problem(1000, 160000), "");
    EXPECT_EQ(position_memory_problem(1000, 159999),
              "1000 clones need at least 160000 bytes of memory for their places alone, more than "
              "the 159999 that there are; make fewer clones");
}

TEST(PositionMemory, NoClonesNeedNone)
{
    EXPECT_EQ(position_memory_problem(0, 0), "");
    EXPECT_EQ(position_memory_problem(-5, 0), "");
}

TEST(PositionMemory, TheMostClonesThereCanBeDoNotOverflow)
{
    const std::int64_t most = std::numeric_limits<std::int32_t>::max();
    EXPECT_THAT(position_memory_problem(most, std::uint64_t{64} << 30),
                testing::HasSubstr("343597383520 bytes"));
}

TEST(PositionMemory, ThisMachineCanHoldAUsualRun) { EXPECT_EQ(position_memory_problem(10000), ""); }

} // namespace
