// SPDX-License-Identifier: MIT
#include "formats/lwo2_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <utility>

#include "tests/formats/support/compare.h"
#include "tests/formats/support/reading.h"
#include "tests/formats/support/samples.h"

namespace {

using test::Bytes;
using test::chunk;
using test::File;
using test::form;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

void add_polygon(mesh::Layer& layer, mesh::FourCC type, std::vector<std::uint32_t> points,
                 mesh::TagIndex surface = mesh::no_tag)
{
    layer.polygons.add(type, points);
    layer.polygons.set_surface(layer.polygons.size() - 1, surface);
}

void set_value(mesh::VertexMap& map, std::uint32_t point, std::vector<float> value)
{
    map.set(point, value);
}

std::vector<std::string> names_of_chunks(const File& file)
{
    std::vector<std::string> names;
    for (const File& part : test::split_chunks(file))
        names.push_back(test::chunk_name(part));
    return names;
}

/// A mesh that came from no file.
mesh::Document built_in_memory()
{
    mesh::Document document;
    const auto bark = document.tags.intern("Bark");
    const auto part = document.tags.intern("Trunk");
    document.layers.emplace_back();
    mesh::Layer& layer = document.layers[0];
    layer.name = "Tree";
    for (int i = 0; i < 4; ++i)
        layer.points.push_back({i * 0.5, 1.0, -i * 0.25});
    add_polygon(layer, mesh::polygon_face, {0, 1, 2}, bark);
    add_polygon(layer, mesh::polygon_ptch, {0, 1, 2, 3}, bark);
    add_polygon(layer, mesh::polygon_face, {1, 2, 3}, bark);
    layer.polygons.set_tag(mesh::fourcc("PART"), 2, part);
    layer.maps.emplace_back(mesh::map_txuv, "uv", 2);
    set_value(layer.maps[0], 1, {0.5f, 0.25f});
    layer.maps.emplace_back(mesh::map_wght, "crease", 1);
    mesh::CornerValues& corners = layer.maps[1].edit_corners();
    for (const std::uint32_t polygon : {1u, 2u}) {
        corners.polygons.push_back(polygon);
        corners.points.push_back(2);
        corners.values.push_back(static_cast<float>(polygon));
    }
    return document;
}

TEST(WriteLwo2, LaysAMeshOutThatCameFromNoFile)
{
    const File file = formats::write_lwo2(built_in_memory());
    const Bytes uv = Bytes().raw("TXUV").u2(2).text("uv").index(1).f4(0.5f).f4(0.25f);
    const auto crease = [](unsigned polygon, float value) {
        return chunk("VMAD",
                     Bytes().raw("WGHT").u2(1).text("crease").index(2).index(polygon).f4(value));
    };
    EXPECT_EQ(
        file,
        form(
            {chunk("TAGS", Bytes().text("Bark").text("Trunk")), test::layer_chunk(0, "Tree"),
             chunk("PNTS",
                   Bytes().vec(0, 1, 0).vec(0.5f, 1, -0.25f).vec(1, 1, -0.5f).vec(1.5f, 1, -0.75f)),
             chunk("BBOX", Bytes().vec(0, 1, -0.75f).vec(1.5f, 1, 0)), chunk("VMAP", uv),
             test::polygons_chunk("FACE", {{0, 1, 2}, {1, 2, 3}}),
             test::tags_chunk("SURF", {{0, 0}, {1, 0}}), test::tags_chunk("PART", {{1, 1}}),
             crease(1, 2), test::polygons_chunk("PTCH", {{0, 1, 2, 3}}),
             test::tags_chunk("SURF", {{0, 0}}), crease(0, 1),
             chunk("SURF",
                   Bytes()
                       .text("Bark")
                       .text("")
                       .add(sub_chunk(
                           "COLR", Bytes().vec(200 / 255.0f, 200 / 255.0f, 200 / 255.0f).index(0)))
                       .add(sub_chunk("DIFF", Bytes().f4(1).index(0))))}));
    static_cast<void>(test::read_clean(file));
}

TEST(WriteLwo2, GivesEveryLayerOfItsOwnMakingPointsAndPolygons)
{
    mesh::Document document;
    document.layers.emplace_back();
    EXPECT_EQ(formats::write_lwo2(document),
              form({test::layer_chunk(0), chunk("PNTS", {}), chunk("POLS", Bytes().raw("FACE")),
                    chunk("PTAG", Bytes().raw("SURF"))}));
}

TEST(WriteLwo2, LeavesOutAParentThatIsNone)
{
    mesh::Document document = built_in_memory();
    document.layers[0].parent = 4;
    document.layers.emplace_back().number = 4;
    const auto chunks = test::split_chunks(formats::write_lwo2(document));
    EXPECT_EQ(chunks[1], chunk("LAYR", Bytes().u2(0).u2(0).vec(0, 0, 0).text("Tree").u2(4)).get());
    EXPECT_EQ(test::chunk_name(chunks[12]), "LAYR");
    EXPECT_EQ(chunks[12], test::layer_chunk(4).get());
}

TEST(WriteLwo2, DescribesNoSurfaceThatTheFileLeftWithout)
{
    const File file =
        form({chunk("TAGS", Bytes().text("a")), test::layer_chunk(0), test::points_chunk(1),
              test::polygons_chunk("FACE", {{0}}), test::tags_chunk("SURF", {{0, 0}})});
    mesh::Document document = test::read_clean(file);
    EXPECT_EQ(formats::write_lwo2(document), file);
    add_polygon(document.layers[0], mesh::polygon_face, {0}, document.tags.intern("new"));
    EXPECT_THAT(names_of_chunks(formats::write_lwo2(document)),
                ElementsAre("TAGS", "LAYR", "PNTS", "POLS", "PTAG", "SURF"));
}

TEST(WriteLwo2, AddsToTheChunksThatTheFileHas)
{
    mesh::Document document = test::read_clean(test::rich());
    mesh::Layer& layer = document.layers[0];
    layer.points.push_back({9, 9, 9});
    set_value(*layer.find_map(mesh::map_wght, "Density"), 6, {0.75f});
    add_polygon(layer, mesh::polygon_face, {0, 1, 6}, 2);
    add_polygon(layer, mesh::polygon_ptch, {0, 1, 2, 6}, 0);
    add_polygon(layer, mesh::polygon_face, {1, 2, 6}, 0);
    layer.polygons.set_tag(mesh::fourcc("PART"), 13, 3);

    const File file = formats::write_lwo2(document);
    auto expected = names_of_chunks(test::rich());
    // the patches of the file had no surfaces: a chunk for theirs follows them
    const auto before = names_of_chunks(test::rich());
    std::size_t number_of_pols = 0;
    for (std::size_t i = 0; i < before.size(); ++i)
        if (before[i] == "POLS" && ++number_of_pols == 3)
            expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(i) + 1, "PTAG");
    EXPECT_EQ(names_of_chunks(file), expected);

    const auto again = test::read_clean(file);
    const mesh::Polygons& polygons = again.layers[0].polygons;
    ASSERT_EQ(polygons.size(), 14u);
    EXPECT_THAT(polygons.points(5), ElementsAre(0, 1, 6));
    EXPECT_THAT(polygons.points(6), ElementsAre(1, 2, 6));
    EXPECT_EQ(again.tags[polygons.surface(6)], "Bark");
    EXPECT_EQ(polygons.tag(mesh::fourcc("PART"), 6), 3u);
    EXPECT_EQ(polygons.type(7), mesh::polygon_curv);
    EXPECT_EQ(polygons.type(10), mesh::polygon_ptch);
    EXPECT_THAT(polygons.points(10), ElementsAre(0, 1, 2, 6));
    EXPECT_EQ(polygons.surface(9), mesh::no_tag) << "the file's own patch has none";
    EXPECT_EQ(polygons.surface(10), 0u);
    const mesh::VertexMap* const density = again.layers[0].find_map(mesh::map_wght, "Density");
    EXPECT_THAT(test::value_at(*density, 6), ElementsAre(0.75f));
    EXPECT_EQ(again.layers[0].maps[10].corners().polygons[0], 7u) << "it followed its polygon";
    EXPECT_EQ(again.layers[0].maps[0].corners().polygons[0], 1u);
}

TEST(WriteLwo2, WarnsOfUnknownChunksOfALayerThatHasGrown)
{
    mesh::Document document = test::read_clean(test::rich());
    std::vector<std::string> warnings;
    const auto take = [&](const std::string& text) { warnings.push_back(text); };
    static_cast<void>(formats::write_lwo2(document, take));
    EXPECT_THAT(warnings, IsEmpty());
    document.layers[0].points.push_back({});
    static_cast<void>(formats::write_lwo2(document, take));
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("layer 1 \"Tree\": chunk UNK2 is kept as it was"),
                                      HasSubstr("chunk UNK3")));
}

TEST(WriteLwo2, PutsNewMapsBehindTheFilesMapsWithParametersIfThoseHaveThem)
{
    const auto with_map = [](bool parameters) {
        const Bytes head = parameters ? chunk("VMPA", Bytes().u4(1).u4(3)) : Bytes();
        return form({test::layer_chunk(0), test::points_chunk(2), test::box_chunk(2), head,
                     chunk("VMAP", Bytes().raw("WGHT").u2(1).text("w").index(0).f4(1)),
                     test::polygons_chunk("FACE", {{0, 1}})});
    };
    for (const bool parameters : {true, false}) {
        mesh::Document document = test::read_clean(with_map(parameters));
        document.layers[0].maps.emplace_back(mesh::map_morf, "m", 3);
        set_value(document.layers[0].maps[1], 1, {1, 2, 3});
        const File file = formats::write_lwo2(document);
        const Bytes map = chunk("VMAP", Bytes().raw("MORF").u2(3).text("m").index(1).vec(1, 2, 3));
        const auto chunks = test::split_chunks(file);
        if (parameters) {
            EXPECT_THAT(names_of_chunks(file), ElementsAre("LAYR", "PNTS", "BBOX", "VMPA", "VMAP",
                                                           "VMPA", "VMAP", "POLS"));
            EXPECT_EQ(chunks[5], chunk("VMPA", Bytes().u4(0).u4(6)).get());
            EXPECT_EQ(chunks[6], map.get());
        } else {
            EXPECT_THAT(names_of_chunks(file),
                        ElementsAre("LAYR", "PNTS", "BBOX", "VMAP", "VMAP", "POLS"));
            EXPECT_EQ(chunks[4], map.get());
        }
    }
}

TEST(WriteLwo2, GivesPointsToALayerThatHadNone)
{
    mesh::Document document = test::read_clean(form({test::layer_chunk(0, "empty")}));
    document.layers[0].points.push_back({1, 2, 3});
    add_polygon(document.layers[0], mesh::polygon_face, {0});
    EXPECT_EQ(formats::write_lwo2(document),
              form({test::layer_chunk(0, "empty"), chunk("PNTS", Bytes().vec(1, 2, 3)),
                    test::polygons_chunk("FACE", {{0}}), test::tags_chunk("SURF", {})}));
}

TEST(WriteLwo2, CountsFromTheStartOfEachBlock)
{
    mesh::Document document = test::read_clean(test::two_blocks());
    mesh::Layer& layer = document.layers[0];
    ASSERT_EQ(layer.points.size(), 7u);
    ASSERT_EQ(layer.maps.size(), 1u);
    EXPECT_THAT(test::value_at(layer.maps[0], 3), ElementsAre(2));
    EXPECT_EQ(layer.maps[0].corners().points[1], 6u);
    EXPECT_EQ(layer.maps[0].corners().polygons[1], 3u);
    EXPECT_THAT(layer.polygons.points(1), ElementsAre(4, 5, 6));

    layer.points.push_back({5, 5, 5});
    set_value(layer.maps[0], 7, {7});
    add_polygon(layer, mesh::polygon_face, {3, 6, 7}, 1);
    const File file = formats::write_lwo2(document);
    EXPECT_EQ(names_of_chunks(file), names_of_chunks(test::two_blocks()));
    const auto again = test::read_clean(file);
    EXPECT_THAT(again.layers[0].polygons.points(3), ElementsAre(3, 6, 7));
    EXPECT_EQ(again.layers[0].polygons.surface(3), 1u);
    EXPECT_EQ(again.layers[0].polygons.type(4), mesh::polygon_ptch);
    EXPECT_EQ(again.layers[0].maps[0].corners().polygons[1], 4u);
    EXPECT_THAT(test::value_at(again.layers[0].maps[0], 7), ElementsAre(7));
}

TEST(WriteLwo2, JoinsBlocksWhenAPolygonNeedsPointsOfBoth)
{
    mesh::Document document = test::read_clean(test::two_blocks());
    add_polygon(document.layers[0], mesh::polygon_face, {0, 4, 6}, 0);
    const File file = formats::write_lwo2(document);
    EXPECT_THAT(names_of_chunks(file), ElementsAre("TAGS", "LAYR", "PNTS", "VMAP", "POLS", "PTAG",
                                                   "VMAD", "POLS", "PTAG", "POLS", "PTAG", "VMAD"));
    const auto again = test::read_clean(file);
    const mesh::Layer& layer = again.layers[0];
    EXPECT_EQ(layer.points.size(), 7u);
    EXPECT_THAT(layer.polygons.points(0), ElementsAre(0, 1, 2));
    EXPECT_THAT(layer.polygons.points(3), ElementsAre(0, 4, 6));
    EXPECT_THAT(layer.polygons.points(4), ElementsAre(3, 4, 5, 6));
    EXPECT_EQ(layer.maps[0].size(), 3u);
    EXPECT_EQ(layer.maps[0].corners().points[1], 6u);
    EXPECT_EQ(layer.maps[0].corners().polygons[1], 4u);
}

TEST(WriteLwo2, LeavesOutWhatATruncationTookAway)
{
    mesh::Document document = test::read_clean(test::two_blocks());
    mesh::Layer& layer = document.layers[0];
    layer.polygons.truncate(1);
    layer.points.truncate(3);
    layer.maps[0].truncate(3);
    const auto again = test::read_clean(formats::write_lwo2(document));
    EXPECT_EQ(again.layers[0].points.size(), 3u);
    EXPECT_EQ(again.layers[0].polygons.size(), 1u);
    EXPECT_EQ(again.layers[0].maps[0].corners().size(), 1u);
}

TEST(WriteLwo2, RoundsToSinglePrecision)
{
    mesh::Document document;
    document.layers.emplace_back().points.push_back({0.1, 1e-60, 16777217.0});
    const auto again = test::read_clean(formats::write_lwo2(document));
    EXPECT_EQ(again.layers[0].points[0], (mesh::Vec3{static_cast<double>(0.1f), 0, 16777216.0}));
}

} // namespace
