// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <bit>

#include "formats/lwo2/single.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "tests/formats/support/compare.h"
#include "tests/formats/support/samples.h"

namespace {

using test::File;

/// Chunk by chunk, so that a difference is told by its chunk.
void expect_same_chunks(const File& before, const File& after)
{
    const auto a = test::split_chunks(before);
    const auto b = test::split_chunks(after);
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i)
        EXPECT_EQ(a[i], b[i]) << "chunk " << i << " " << test::chunk_name(a[i]);
    EXPECT_EQ(before, after);
}

class UntouchedSample : public testing::TestWithParam<std::pair<std::string, File>> {};

TEST_P(UntouchedSample, ComesBackToTheByte)
{
    const File& file = GetParam().second;
    expect_same_chunks(file, formats::write_lwo2(formats::read_lwo2(file, {})));
}

INSTANTIATE_TEST_SUITE_P(RoundTrip, UntouchedSample, testing::ValuesIn(test::good_samples()),
                         [](const auto& tested) { return tested.param.first; });

TEST(RoundTrip, KeepsEveryKindOfNumberBitForBit)
{
    const auto document = formats::read_lwo2(test::rich(), {});
    ASSERT_GE(document.layers.size(), 2u);
    const auto& points = document.layers[1].points;
    ASSERT_EQ(points.size(), 6u);
    EXPECT_TRUE(std::signbit(points[1].x));
    EXPECT_TRUE(std::isinf(points[2].y));
    EXPECT_EQ(formats::lwo2::narrow(points[4].x), 0x7FC12345u);
    EXPECT_EQ(formats::lwo2::narrow(points[4].z), 0x7F800001u);
    EXPECT_EQ(formats::lwo2::narrow(points[5].x), 0xFFBFFFFFu);
    EXPECT_EQ(formats::lwo2::narrow(points[5].y), 0x00000001u);
}

TEST(RoundTrip, GivesEverySinglePrecisionNumberBack)
{
    for (std::uint64_t bits = 0; bits <= 0xFFFFFFFFu; bits += 0x3FFFFu / 7u)
        ASSERT_EQ(formats::lwo2::narrow(formats::lwo2::widen(static_cast<std::uint32_t>(bits))),
                  static_cast<std::uint32_t>(bits));
}

TEST(RoundTrip, MakesAQuietNumberOutOfOneThatSinglePrecisionCannotHold)
{
    const double low_payload = std::bit_cast<double>(std::uint64_t{0xFFF0000000000001});
    EXPECT_EQ(formats::lwo2::narrow(low_payload), 0xFFC00000u);
}

TEST(RoundTrip, AddsTheFillerThatTheLastChunkLacks)
{
    File file = test::form({test::layer_chunk(0), test::chunk("UNKN", test::Bytes().raw("odd"))});
    const File whole = file;
    file.pop_back();
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2(file, {})), whole);
    file[7] = static_cast<std::byte>(std::to_integer<unsigned>(file[7]) - 1); // and so the size
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2(file, {})), whole);
}

TEST(RoundTrip, KeepsAFillerThatIsNotZero)
{
    File file = test::form({test::chunk("UNKN", test::Bytes().raw("odd")), test::layer_chunk(0)});
    file[12 + 8 + 3] = std::byte{0x55};
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2(file, {})), file);
}

TEST(RoundTrip, KeepsABoxThatDiffersOnlyInSignsOfZero)
{
    const File file =
        test::form({test::layer_chunk(0), test::chunk("PNTS", test::Bytes().vec(0, 0, 0)),
                    test::chunk("BBOX", test::Bytes().vec(-0.0f, 0, 0).vec(0, -0.0f, 0))});
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2(file, {})), file);
}

TEST(RoundTrip, ComputesAWrongBoxAnew)
{
    const auto with_box = [](const test::Bytes& box) {
        return test::form({test::layer_chunk(0), test::points_chunk(2), box});
    };
    const File wrong = with_box(test::chunk("BBOX", test::Bytes().vec(9, 9, 9).vec(9, 9, 9)));
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2(wrong, {})), with_box(test::box_chunk(2)));
}

TEST(RoundTrip, SortsTheRowsOfAMap)
{
    const auto with_rows = [](const test::Bytes& rows) {
        return test::form(
            {test::layer_chunk(0), test::points_chunk(4),
             test::chunk("VMAP", test::Bytes().raw("WGHT").u2(1).text("w").add(rows))});
    };
    const File mixed = with_rows(test::Bytes().index(3).f4(3).index(0).f4(0).index(2).f4(2));
    const File sorted = with_rows(test::Bytes().index(0).f4(0).index(2).f4(2).index(3).f4(3));
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2(mixed, {})), sorted);
}

TEST(RoundTrip, ShortensALongIndexOfASmallNumber)
{
    const auto with_index = [](const test::Bytes& index) {
        return test::form({test::layer_chunk(0), test::points_chunk(2),
                           test::chunk("POLS", test::Bytes().raw("FACE").u2(1).add(index))});
    };
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2(with_index(test::Bytes().u4(0xFF000001)), {})),
              with_index(test::Bytes().index(1)));
}

} // namespace
