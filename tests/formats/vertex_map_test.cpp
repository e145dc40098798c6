// SPDX-License-Identifier: MIT
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
using test::layer_chunk;
using test::points_chunk;
using test::value_at;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Bytes weight_rows(std::initializer_list<std::pair<std::uint32_t, float>> rows)
{
    Bytes body;
    body.raw("WGHT").u2(1).text("w");
    for (const auto& [point, value] : rows)
        body.index(point).f4(value);
    return chunk("VMAP", body);
}

TEST(ReadMaps, ReadsEveryTypeWithItsValues)
{
    const auto document = test::read_clean(test::rich());
    const mesh::Layer& layer = document.layers[0];
    const auto at = [&](const char(&type)[5], const char* name, std::uint32_t point) {
        const mesh::VertexMap* const map = layer.find_map(mesh::fourcc(type), name);
        return map == nullptr ? std::vector<float>{-999} : value_at(*map, point);
    };
    EXPECT_THAT(at("TXUV", "uv", 0), ElementsAre(0, 1));
    EXPECT_THAT(at("TXUV", "uv", 1), IsEmpty()) << "a point that is not listed has no value";
    EXPECT_THAT(at("WGHT", "Density", 2), ElementsAre(0.25f));
    EXPECT_THAT(at("MNVW", "Subpatch Weight", 1), ElementsAre(2));
    EXPECT_THAT(at("MORF", "wind", 3), ElementsAre(0, 1, 0));
    EXPECT_THAT(at("SPOT", "bent", 4), ElementsAre(1, 0, 0));
    EXPECT_THAT(at("RGB ", "c", 0), ElementsAre(1, 0, 0));
    EXPECT_THAT(at("RGBA", "c", 0), ElementsAre(1, 0, 0, 0.5f));
    EXPECT_THAT(at("NORM", "vert_normals", 0), ElementsAre(0, 1, 0));
    EXPECT_THAT(at("????", "", 0), ElementsAre(1, 2, 3, 4, 5));
    const mesh::VertexMap* const chosen = layer.find_map(mesh::fourcc("PICK"), "chosen");
    ASSERT_NE(chosen, nullptr);
    EXPECT_EQ(chosen->size(), 2u);
    EXPECT_TRUE(chosen->has(4));
    EXPECT_FALSE(chosen->has(0));
}

TEST(ReadMaps, KeepsMapsInTheirOrder)
{
    const auto document = test::read_clean(test::rich());
    const auto& maps = document.layers[0].maps;
    ASSERT_EQ(maps.size(), 11u);
    EXPECT_EQ(maps[0].name(), "uv");
    EXPECT_EQ(maps[1].name(), "Density");
    EXPECT_EQ(maps[10].name(), "Edge Weight");
}

TEST(ReadMaps, ReadsCornerValuesByTheLatestPolygons)
{
    const auto document = test::read_clean(test::rich());
    const mesh::Layer& layer = document.layers[0];
    const mesh::VertexMap& uv = layer.maps[0];
    ASSERT_EQ(uv.corners().size(), 1u);
    EXPECT_EQ(uv.corners().points[0], 0u);
    EXPECT_EQ(uv.corners().polygons[0], 1u);
    EXPECT_EQ(uv.corners().values[1], 0.5f);
    const mesh::VertexMap& crease = layer.maps[10];
    EXPECT_EQ(crease.size(), 0u) << "it has values for corners alone";
    ASSERT_EQ(crease.corners().size(), 1u);
    EXPECT_EQ(crease.corners().polygons[0], 5u) << "the first of the second block";
}

TEST(ReadMaps, TakesMapsOfOneNameAndOtherTypeOrDimensionForOthers)
{
    const File file =
        form({layer_chunk(0), points_chunk(2),
              chunk("VMAP", Bytes().raw("AAAA").u2(1).text("m").index(0).f4(1)),
              chunk("VMAP", Bytes().raw("BBBB").u2(1).text("m").index(0).f4(2)),
              chunk("VMAP", Bytes().raw("AAAA").u2(2).text("m").index(0).f4(3).f4(4))});
    const auto document = test::read_clean(file);
    EXPECT_EQ(document.layers[0].maps.size(), 3u);
    EXPECT_EQ(formats::write_lwo2(document), file);
}

TEST(ReadMaps, LetsTheLastOfSeveralValuesCount)
{
    const File file = form(
        {layer_chunk(0), points_chunk(4), weight_rows({{2, 1}, {0, 2}, {2, 3}, {2, 4}, {3, 5}})});
    const auto document = formats::read_lwo2(file, {});
    const mesh::VertexMap& map = document.layers[0].maps[0];
    EXPECT_EQ(map.size(), 3u);
    EXPECT_THAT(value_at(map, 0), ElementsAre(2));
    EXPECT_THAT(value_at(map, 2), ElementsAre(4));
    EXPECT_THAT(value_at(map, 3), ElementsAre(5));
    EXPECT_THAT(test::warnings_of(file), ElementsAre(HasSubstr("2 points a value more than once")));
}

TEST(ReadMaps, JoinsChunksOfOneMap)
{
    const File file = form({layer_chunk(0), points_chunk(4), weight_rows({{1, 1}, {3, 3}}),
                            chunk("VMPA", Bytes().u4(0).u4(6)), weight_rows({{0, 0}, {3, 9}})});
    const auto document = formats::read_lwo2(file, {});
    ASSERT_EQ(document.layers[0].maps.size(), 1u);
    EXPECT_EQ(formats::write_lwo2(document),
              form({layer_chunk(0), points_chunk(4), weight_rows({{0, 0}, {1, 1}, {3, 9}})}));
}

TEST(ReadMaps, ReadsRowsInAnyOrderInReasonableTime)
{
    constexpr unsigned count = 60000;
    Bytes chunks;
    for (unsigned i = count; i-- > 0;)
        chunks.add(weight_rows({{i, static_cast<float>(i)}}));
    const auto document =
        formats::read_lwo2(form({layer_chunk(0), points_chunk(count), chunks}), {});
    const mesh::VertexMap& map = document.layers[0].maps[0];
    EXPECT_EQ(map.size(), count);
    EXPECT_THAT(value_at(map, 12345), ElementsAre(12345));
}

} // namespace
