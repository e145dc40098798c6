// SPDX-License-Identifier: MIT
#include "mesh/plural.h"

#include <gtest/gtest.h>

TEST(Plural, IsUsedForAllNumbersButOne)
{
    EXPECT_EQ(mesh::counted(0, "point"), "0 points");
    EXPECT_EQ(mesh::counted(1, "point"), "1 point");
    EXPECT_EQ(mesh::counted(21, "point"), "21 points");
    EXPECT_EQ(mesh::plural(1, "layer"), "layer");
}
