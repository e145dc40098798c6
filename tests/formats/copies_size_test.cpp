// SPDX-License-Identifier: MIT
#include "formats/copies_size.h"

#include <gtest/gtest.h>

#include <string>

#include "formats/errors.h"
#include "formats/lwo2_writer.h"
#include "tests/formats/big_file/forest.h"

namespace {

constexpr formats::CopiedMesh tree{.points = 205,
                                   .polygons = 192,
                                   .corners = 4 * 192,
                                   .tags = 192,
                                   .map_values = 3 * 205,
                                   .map_numbers = 4 * 205};

std::string refusal(const formats::CopiedMesh& each, std::uint64_t copies)
{
    try {
        formats::check_copies_fit(each, copies);
    } catch (const formats::LimitError& error) {
        return error.what();
    }
    return {};
}

TEST(SizeOfCopies, IsHardlyLessThanWhatIsWritten)
{
    for (const std::uint32_t trees : {1u, 300u, 5000u}) {
        SCOPED_TRACE(trees);
        const auto written = formats::write_lwo2(big_file::make_forest(trees)).size();
        const std::uint64_t least = formats::least_size_of_copies(tree, trees);
        EXPECT_LT(least, written);
        EXPECT_GT(static_cast<double>(least), 0.95 * static_cast<double>(written));
    }
}

TEST(SizeOfCopies, IsRefusedOnlyWhereItIsCertain)
{
    EXPECT_EQ(refusal(tree, 0), "");
    EXPECT_EQ(refusal(tree, 330000), ""); // 4.2 GB
    EXPECT_NE(refusal(tree, 350000), ""); // 4.5 GB
    EXPECT_EQ(refusal(tree, 1000000),
              "1000000 clones of 205 points and 192 polygons would take at least " +
                  std::to_string(formats::least_size_of_copies(tree, 1000000)) +
                  " bytes, more than the 4294967295 that LWO2 can hold; make fewer clones, or "
                  "spread them over several files");
}

TEST(SizeOfCopies, IsNothingForNothing)
{
    EXPECT_EQ(formats::least_size_of_copies({}, 0xFFFFFFFF), 0u);
    EXPECT_EQ(refusal({}, 0xFFFFFFFF), "");
}

TEST(SizeOfCopies, DoesNotOverflow)
{
    constexpr std::uint64_t many = std::uint64_t{1} << 40u;
    const formats::CopiedMesh large{many, many, 4 * many, many, many, many};
    EXPECT_NE(refusal(large, 0xFFFFFFFF), "");
    EXPECT_EQ(refusal(large, 0), "");
    const formats::CopiedMesh full{.points = 0xFFFFFFFF / 12};
    EXPECT_EQ(refusal(full, 1), "");
    EXPECT_NE(refusal(full, 2), "");
    EXPECT_NE(refusal(full, 0xFFFFFFFF), "");
}

} // namespace
