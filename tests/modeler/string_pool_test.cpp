// SPDX-License-Identifier: MIT
// Which texts of a module are known by their addresses.
#include "modeler/edit/string_pool.h"

#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "modeler/host/read_only_data.h"

namespace {

using modeler::read_only_data;
using modeler::StringPool;

const char constant[] = "constant";
char changeable[] = "changeable";

bool lies_in(const std::vector<std::span<const char>>& parts, const char* address)
{
    return std::any_of(parts.begin(), parts.end(), [address](std::span<const char> part) {
        return address >= part.data() && address < part.data() + part.size();
    });
}

TEST(StringPool, LendsOneAddressForEachText)
{
    StringPool strings;
    const char* const oak = strings.intern("oak");
    const char* const ash = strings.intern("ash");
    EXPECT_STREQ(oak, "oak");
    EXPECT_NE(oak, ash);
    for (int i = 0; i < 1000; ++i)
        (void)strings.intern(std::to_string(i));
    EXPECT_EQ(strings.intern(std::string("o") + "ak"), oak);
    EXPECT_STREQ(oak, "oak");
    EXPECT_TRUE(strings.contains(oak));
    EXPECT_TRUE(strings.contains(ash));
    EXPECT_FALSE(strings.contains(oak + 1)) << "another text";
    const std::string copy = oak;
    EXPECT_FALSE(strings.contains(copy.c_str()));
}

TEST(StringPool, HoldsWhatStandsInReadOnlyMemory)
{
    StringPool strings;
    EXPECT_FALSE(strings.contains(constant));
    strings.add_read_only({constant, 4});
    EXPECT_TRUE(strings.contains(constant));
    EXPECT_TRUE(strings.contains(constant + 3));
    EXPECT_FALSE(strings.contains(constant + 4));
    EXPECT_FALSE(strings.contains(changeable));
}

TEST(ReadOnlyData, IsThatOfTheFileTheAddressLiesIn)
{
    changeable[0] = 'C'; // it is not for nothing that it can be changed
    const auto parts = read_only_data(constant);
    EXPECT_TRUE(lies_in(parts, constant));
    EXPECT_FALSE(lies_in(parts, changeable));
    const char local[] = "local";
    EXPECT_FALSE(lies_in(parts, local));
    const std::string allocated(100, 'x');
    EXPECT_FALSE(lies_in(parts, allocated.c_str()));
    EXPECT_TRUE(lies_in(read_only_data(changeable), constant)) << "any address of the file will do";
}

TEST(ReadOnlyData, IsNoneForAnAddressOfNoFile)
{
    const std::string allocated(100, 'x');
    EXPECT_TRUE(read_only_data(allocated.c_str()).empty());
    EXPECT_TRUE(read_only_data(nullptr).empty());
}

} // namespace
