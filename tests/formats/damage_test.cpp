// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "formats/lwo2_reader.h"
#include "tests/formats/support/reading.h"
#include "tests/formats/support/samples.h"

namespace {

using test::Bytes;
using test::chunk;
using test::fault_of;
using test::File;
using test::form;
using test::layer_chunk;
using test::points_chunk;
using testing::AnyOf;
using testing::HasSubstr;
using testing::StartsWith;

class DamagedSample : public testing::TestWithParam<std::pair<std::string, File>> {};

TEST_P(DamagedSample, IsRefusedAtEveryTruncation)
{
    constexpr std::size_t file_header = 12;
    const File& whole = GetParam().second;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        const std::string fault =
            fault_of(File(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
        if (length < file_header) {
            EXPECT_THAT(fault, AnyOf(StartsWith("is empty; "), HasSubstr("; it is cut short")));
            continue;
        }
        EXPECT_THAT(fault, StartsWith("chunk "));
        EXPECT_THAT(fault, HasSubstr(" at byte "));
    }
}

/// Each four bytes in turn become numbers that a lying file might hold: the reader may take the
/// result for what it says, but must not break.
TEST_P(DamagedSample, SurvivesALieInAnyPlace)
{
    const File& whole = GetParam().second;
    int refused = 0;
    for (std::size_t at = 0; at + 4 <= whole.size(); ++at) {
        for (const unsigned lie : {0xFFu, 0x7Fu, 0x00u}) {
            File file = whole;
            for (std::size_t i = 0; i < 4; ++i)
                file[at + i] = static_cast<std::byte>(lie);
            refused += fault_of(file).empty() ? 0 : 1;
        }
    }
    EXPECT_GT(refused, 0);
}

INSTANTIATE_TEST_SUITE_P(Damage, DamagedSample, testing::ValuesIn(test::good_samples()),
                         [](const auto& tested) { return tested.param.first; });

struct FormCase {
    const char* name;
    const char* form;
    const char* text;
};

class FormTest : public testing::TestWithParam<FormCase> {};

TEST_P(FormTest, IsRefusedByNameWithWhatToDo)
{
    const std::string fault = fault_of(form({layer_chunk(0)}, GetParam().form));
    EXPECT_THAT(fault, StartsWith("is a"));
    EXPECT_THAT(fault, HasSubstr(GetParam().text));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Damage, FormTest, testing::Values(
    FormCase{"older",   "LWOB", "older form LWOB, which is not read; save it as LWO2"},
    FormCase{"layered", "LWLO", "older form LWLO, which is not read; save it as LWO2"},
    FormCase{"newer",   "LWO3", "newer form LWO3, which is not read; save it as LWO2"},
    FormCase{"other",   "LXOB", "LXOB (.lxo), which is not read; export it as LWO2"},
    FormCase{"picture", "ILBM", "is an IFF picture (ILBM)"},
    FormCase{"binary",  "\x01zzz", "is an IFF file of the form \"\\x01zzz\""}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

TEST(Damage, OfTheFirstFourCharactersIsToldWithThem)
{
    File file = test::triangle();
    file[0] = std::byte{'R'};
    EXPECT_EQ(fault_of(file),
              "is of a kind that is not known (it begins with \"RORM\", and an object with "
              "\"FORM\"); only LWO2 object files (.lwo) are read");
}

TEST(Damage, OfAnEmptyFileIsTold) { EXPECT_THAT(fault_of({}), StartsWith("is empty; ")); }

struct FaultCase {
    const char* name;
    File file;
    const char* text;
};

void PrintTo(const FaultCase& tested, std::ostream* out) { *out << tested.name; }

class FaultTest : public testing::TestWithParam<FaultCase> {};

TEST_P(FaultTest, IsToldWithChunkAndByte) { EXPECT_EQ(fault_of(GetParam().file), GetParam().text); }

Bytes lying_size(std::string_view id, std::uint32_t size) { return Bytes().raw(id).u4(size); }

// The first chunk stands at byte 12, the body of a layer without name (26 bytes) ends at 38.
// clang-format off
INSTANTIATE_TEST_SUITE_P(Damage, FaultTest, testing::Values(
    FaultCase{"chunk_too_large", form({lying_size("PNTS", 0xFFFFFFFF)}),
        "chunk PNTS at byte 12: its size of 4294967295 bytes runs past the end of the object, 0 "
        "bytes on; the file is damaged or cut short"},
    FaultCase{"rest_too_small", form({layer_chunk(0), Bytes().raw("PNT")}),
        "chunk FORM at byte 38: 3 bytes are left, too few for a chunk; the file is damaged or cut "
        "short"},
    FaultCase{"part_of_a_point", form({layer_chunk(0), chunk("PNTS", Bytes().u4(0).u4(0))}),
        "chunk PNTS at byte 46: a size of 8 bytes holds no whole number of points; the file is "
        "damaged"},
    FaultCase{"no_such_point",
        form({layer_chunk(0), points_chunk(2), test::polygons_chunk("FACE", {{0, 1, 2}})}),
        "chunk POLS at byte 88: index 2 names no point (2 points); the file is damaged or cut "
        "short"},
    FaultCase{"polygons_without_points",
        form({layer_chunk(0), test::polygons_chunk("FACE", {{0}})}),
        "chunk POLS at byte 52: index 0 names no point (0 points); the file is damaged or cut "
        "short"},
    FaultCase{"points_of_the_layer_before",
        form({layer_chunk(0), points_chunk(1), layer_chunk(1),
              test::polygons_chunk("FACE", {{0}})}),
        "chunk POLS at byte 98: index 0 names no point (0 points); the file is damaged or cut "
        "short"},
    FaultCase{"polygon_of_no_points",
        form({layer_chunk(0), points_chunk(1), test::polygons_chunk("FACE", {{0}, {}})}),
        "chunk POLS at byte 74: polygon 1 has no points; the file is damaged"},
    FaultCase{"polygon_cut_off",
        form({layer_chunk(0), points_chunk(1),
              chunk("POLS", Bytes().raw("FACE").u2(1023).index(0))}),
        "chunk POLS at byte 74: the chunk ends within a value; the file is damaged or cut short"},
    FaultCase{"long_index_cut_off",
        form({layer_chunk(0), points_chunk(1),
              chunk("POLS", Bytes().raw("FACE").u2(1).u2(0xFF00))}),
        "chunk POLS at byte 72: the chunk ends within a value; the file is damaged or cut short"},
    FaultCase{"no_such_polygon",
        form({chunk("TAGS", Bytes().text("a")), layer_chunk(0), points_chunk(1),
              test::polygons_chunk("FACE", {{0}}), test::tags_chunk("SURF", {{1, 0}})}),
        "chunk PTAG at byte 96: index 1 names no polygon (1 polygon); the file is damaged or cut "
        "short"},
    FaultCase{"no_such_tag",
        form({layer_chunk(0), points_chunk(1), test::polygons_chunk("FACE", {{0}}),
              test::tags_chunk("SURF", {{0, 3}}), chunk("TAGS", Bytes().text("a"))}),
        "chunk PTAG at byte 88: index 3 names no tag (1 tag); the file is damaged"},
    FaultCase{"text_without_end", form({chunk("TAGS", Bytes().raw("abcd"))}),
        "chunk TAGS at byte 20: a text has no end; the file is damaged or cut short"},
    FaultCase{"layer_without_name", form({chunk("LAYR", Bytes().u4(0).vec(0, 0, 0))}),
        "chunk LAYR at byte 36: a text has no end; the file is damaged or cut short"},
    FaultCase{"map_row_cut_off",
        form({layer_chunk(0), points_chunk(1),
              chunk("VMAP", Bytes().raw("TXUV").u2(2).text("").index(0).f4(0))}),
        "chunk VMAP at byte 80: the chunk ends within a value; the file is damaged or cut short"},
    FaultCase{"map_of_no_such_point",
        form({layer_chunk(0), points_chunk(1),
              chunk("VMAP", Bytes().raw("WGHT").u2(1).text("").index(1).f4(0))}),
        "chunk VMAP at byte 74: index 1 names no point (1 point); the file is damaged or cut "
        "short"},
    FaultCase{"corner_of_no_such_polygon",
        form({layer_chunk(0), points_chunk(1), test::polygons_chunk("FACE", {{0}}),
              chunk("VMAD", Bytes().raw("WGHT").u2(1).text("").index(0).index(1).f4(0))}),
        "chunk VMAD at byte 92: index 1 names no polygon (1 polygon); the file is damaged or cut "
        "short"}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

TEST(Damage, OfTheSizeOfTheObjectIsTold)
{
    File file = test::triangle();
    file[7] = static_cast<std::byte>(std::to_integer<unsigned>(file[7]) + 2);
    EXPECT_THAT(fault_of(file), StartsWith("chunk FORM at byte 4: the file should have"));
    file[4] = file[5] = file[6] = file[7] = std::byte{0};
    EXPECT_THAT(fault_of(file), HasSubstr("too small for any content"));
}

/// So many blocks of one polygon each, all of different types, and then as many lists of tags.
File types_and_kinds(unsigned types, unsigned kinds)
{
    Bytes blocks;
    for (unsigned i = 0; i < types; ++i)
        blocks.add(chunk("POLS", Bytes().u4(i).u2(1).index(0)));
    for (unsigned i = 0; i < kinds; ++i)
        blocks.add(chunk("PTAG", Bytes().u4(i).index(0).u2(0)));
    return form({chunk("TAGS", Bytes().text("t")), layer_chunk(0), points_chunk(1), blocks});
}

TEST(Damage, ByKindsOfPolygonsWithoutEndIsRefused)
{
    EXPECT_EQ(fault_of(types_and_kinds(256, 256)), "");
    EXPECT_THAT(fault_of(types_and_kinds(257, 0)), HasSubstr("more than 256 types of polygons"));
    EXPECT_THAT(fault_of(types_and_kinds(1, 257)),
                HasSubstr("more than 256 kinds of polygon tags"));
}

TEST(Damage, IsNotWhatBlocksAreThatHoldNothing)
{
    Bytes blocks;
    for (unsigned i = 0; i < 1000; ++i)
        blocks.add(chunk("POLS", Bytes().u4(i)));
    for (unsigned i = 0; i < 1000; ++i)
        blocks.add(chunk("PTAG", Bytes().u4(i)));
    EXPECT_EQ(fault_of(form({layer_chunk(0), blocks})), "");
}

// 20,000 maps of one value each, at the last of 65,000 points, in a file of 1.4 million bytes.
TEST(Damage, IsNotWhatMapsOfFewPointsAre)
{
    constexpr unsigned points = 65000;
    Bytes maps;
    for (unsigned i = 0; i < 20000; ++i)
        maps.add(chunk("VMAP", Bytes().u4(i).u2(0).text("").index(points - 1)));
    EXPECT_EQ(fault_of(form({layer_chunk(0), points_chunk(points), maps})), "");
}

TEST(Damage, IsNotWhatTagsAreThatNoPolygonCanName)
{
    Bytes tags;
    for (unsigned i = 0; i < 65540; ++i)
        tags.text("t" + std::to_string(i));
    std::vector<std::string> warnings;
    const mesh::Document document =
        formats::read_lwo2(form({chunk("TAGS", tags), layer_chunk(0)}),
                           [&](const std::string& text) { warnings.push_back(text); });
    EXPECT_EQ(document.tags.size(), 65536u);
    EXPECT_THAT(warnings,
                testing::ElementsAre("chunk TAGS at byte 12: 4 tags behind the 65536 that "
                                     "polygons can name are left out"));
}

} // namespace
