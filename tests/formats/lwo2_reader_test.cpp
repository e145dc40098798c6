// SPDX-License-Identifier: MIT
#include "formats/lwo2_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "formats/lwo2_writer.h"
#include "tests/formats/support/reading.h"
#include "tests/formats/support/samples.h"

namespace {

using test::Bytes;
using test::chunk;
using test::File;
using test::form;
using testing::ElementsAre;
using testing::HasSubstr;

struct IndexCase {
    const char* name;
    std::uint32_t index;
    unsigned size;
};

class IndexTest : public testing::TestWithParam<IndexCase> {};

TEST_P(IndexTest, ReadsAndWritesItInItsShortestForm)
{
    const std::uint32_t index = GetParam().index;
    const File file = form({test::layer_chunk(0), test::points_chunk(index + 1),
                            test::polygons_chunk("FACE", {{index}})});
    const auto document = test::read_clean(file);
    EXPECT_THAT(document.layers[0].polygons.points(0), ElementsAre(index));
    const auto written = formats::write_lwo2(document);
    EXPECT_EQ(written, file);
    // the chunk at the end: its type, the count, the index
    EXPECT_EQ(test::split_chunks(written)[2].size(), 8u + 4u + 2u + GetParam().size);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(ReadLwo2, IndexTest, testing::Values(
    IndexCase{"zero",        0x000000, 2},
    IndexCase{"one_byte",    0x0000FF, 2},
    IndexCase{"last_short",  0x00FEFF, 2},
    IndexCase{"first_long",  0x00FF00, 4},
    IndexCase{"past_16_bit", 0x010000, 4}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

TEST(ReadLwo2, ReadsTheHeadingOfALayer)
{
    const auto document = test::read_clean(test::rich());
    ASSERT_EQ(document.layers.size(), 3u);
    const mesh::Layer& tree = document.layers[0];
    EXPECT_EQ(tree.name, "Tree");
    EXPECT_EQ(tree.number, 3);
    EXPECT_EQ(tree.flags, 0x8001);
    EXPECT_EQ(tree.pivot, (mesh::Vec3{1, 2, 3}));
    EXPECT_EQ(tree.parent, 7);
    EXPECT_EQ(document.layers[1].parent, std::nullopt);
    EXPECT_EQ(document.layers[2].parent, std::nullopt);
}

TEST(ReadLwo2, DoesNotAddThePivotToThePoints)
{
    const auto document = test::read_clean(test::rich());
    EXPECT_EQ(document.layers[0].points[2], (mesh::Vec3{2, 4, -2}));
}

TEST(ReadLwo2, ReadsPolygonsWithTypesAndFlags)
{
    const auto document = test::read_clean(test::rich());
    const mesh::Polygons& polygons = document.layers[0].polygons;
    ASSERT_EQ(polygons.size(), 11u);
    EXPECT_EQ(polygons.type(4), mesh::polygon_face);
    EXPECT_THAT(polygons.points(4), ElementsAre(0, 1, 2, 0, 3, 4));
    EXPECT_EQ(polygons.type(5), mesh::polygon_curv);
    EXPECT_EQ(polygons.flags(5), 1);
    EXPECT_EQ(polygons.flags(6), 2);
    EXPECT_EQ(polygons.type(10), mesh::fourcc("BONE"));
}

TEST(ReadLwo2, KeepsAllSixFlagsOfAFace)
{
    const File file = form({test::layer_chunk(0), test::points_chunk(1),
                            chunk("POLS", Bytes().raw("FACE").u2(1u | 0x3Fu << 10u).index(0))});
    const auto document = test::read_clean(file);
    EXPECT_EQ(document.layers[0].polygons.flags(0), 0x3F);
    EXPECT_THAT(document.layers[0].polygons.points(0), ElementsAre(0));
    EXPECT_EQ(formats::write_lwo2(document), file);
}

TEST(ReadLwo2, ReadsTheFourMoreBitsOfACurvesCount)
{
    constexpr unsigned count = 1500;
    Bytes body;
    body.raw("CURV").u2((count & 0x3FFu) | 3u << 10u | count >> 10u << 12u);
    for (unsigned i = 0; i < count; ++i)
        body.index(i % 5);
    const File file = form({test::layer_chunk(0), test::points_chunk(5), chunk("POLS", body)});
    const auto document = test::read_clean(file);
    ASSERT_EQ(document.layers[0].polygons.size(), 1u);
    EXPECT_EQ(document.layers[0].polygons.points(0).size(), count);
    EXPECT_EQ(document.layers[0].polygons.flags(0), 3);
    EXPECT_EQ(formats::write_lwo2(document), file);
}

TEST(ReadLwo2, ReadsEveryKindOfPolygonTag)
{
    const auto document = test::read_clean(test::rich());
    const mesh::Polygons& polygons = document.layers[0].polygons;
    const auto tag = [&](const char(&kind)[5], std::size_t polygon) {
        const mesh::TagIndex index = polygons.tag(mesh::fourcc(kind), polygon);
        return index == mesh::no_tag ? std::string("none") : document.tags[index];
    };
    EXPECT_EQ(tag("SURF", 0), "Bark");
    EXPECT_EQ(tag("SURF", 1), "Leaf");
    EXPECT_EQ(tag("SURF", 2), "none");
    EXPECT_EQ(tag("SURF", 5), "Bark") << "of the second block";
    EXPECT_EQ(tag("SURF", 7), "none") << "of the third block";
    EXPECT_EQ(tag("PART", 1), "Trunk");
    EXPECT_EQ(tag("PART", 2), "") << "the empty tag counts";
    EXPECT_EQ(tag("COLR", 0), "DkBlu");
    EXPECT_EQ(tag("SMGP", 4), "Trunk");
    EXPECT_EQ(tag("BONE", 10), "Trunk");
    EXPECT_EQ(tag("BNUP", 10), "DkBlu");
}

TEST(ReadLwo2, PutsDataBeforeAnyLayerIntoOneWithoutName)
{
    const auto document = formats::read_lwo2(test::default_layer(), {});
    ASSERT_EQ(document.layers.size(), 2u);
    EXPECT_EQ(document.layers[0].name, "");
    EXPECT_EQ(document.layers[0].points.size(), 3u);
    EXPECT_EQ(document.layers[0].maps.size(), 1u);
    EXPECT_EQ(document.layers[1].name, "second");
    EXPECT_EQ(document.layers[1].points.size(), 4u);
    EXPECT_THAT(test::warnings_of(test::default_layer()),
                ElementsAre(HasSubstr("before any layer")));
}

TEST(ReadLwo2, TakesTheLastOfSeveralListsOfTags)
{
    const File file =
        form({chunk("TAGS", Bytes().text("old").text("old too")), test::layer_chunk(0),
              test::points_chunk(1), test::polygons_chunk("FACE", {{0}}),
              test::tags_chunk("SURF", {{0, 0}}), chunk("TAGS", Bytes().text("new"))});
    const auto document = formats::read_lwo2(file, {});
    ASSERT_EQ(document.tags.size(), 1u);
    EXPECT_EQ(document.tags[document.layers[0].polygons.surface(0)], "new");
    EXPECT_THAT(test::warnings_of(file), ElementsAre(HasSubstr("chunk TAGS at byte")));
}

TEST(ReadLwo2, TellsOfPolygonsThatChangeTheirTag)
{
    const File file =
        form({chunk("TAGS", Bytes().text("a").text("b")), test::layer_chunk(0),
              test::points_chunk(1), test::polygons_chunk("FACE", {{0}, {0}}),
              test::tags_chunk("SURF", {{0, 0}, {1, 0}}), test::tags_chunk("SURF", {{1, 1}})});
    const auto document = formats::read_lwo2(file, {});
    EXPECT_EQ(document.layers[0].polygons.surface(0), 0u);
    EXPECT_EQ(document.layers[0].polygons.surface(1), 1u);
    EXPECT_THAT(test::warnings_of(file), ElementsAre(HasSubstr("1 polygon is given a SURF tag")));
}

TEST(ReadLwo2, StopsAtTheEndOfTheObject)
{
    File file = test::triangle();
    const auto clean = test::read_clean(file);
    for (int i = 0; i < 5; ++i)
        file.push_back(std::byte{0xAB});
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2(file, {})), test::triangle());
    EXPECT_THAT(test::warnings_of(file),
                ElementsAre(HasSubstr("the file goes on after the end of the object")));
}

TEST(ReadLwo2, TellsOfABoxOfAWrongSize)
{
    const File file =
        form({test::layer_chunk(0), test::points_chunk(2), chunk("BBOX", Bytes().u4(1))});
    EXPECT_THAT(test::warnings_of(file), ElementsAre(HasSubstr("24 bytes, not 4")));
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2(file, {})),
              form({test::layer_chunk(0), test::points_chunk(2), test::box_chunk(2)}));
}

TEST(ReadLwo2, LeavesWarningsPastTheHundredthOut)
{
    Bytes boxes;
    for (int i = 0; i < 300; ++i)
        boxes.add(chunk("BBOX", Bytes().u4(1)));
    const auto warnings = test::warnings_of(form({test::layer_chunk(0), boxes}));
    ASSERT_EQ(warnings.size(), 101u);
    EXPECT_THAT(warnings.back(), HasSubstr("left out"));
}

} // namespace
