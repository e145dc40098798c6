// SPDX-License-Identifier: MIT
#include "formats/lwo2/write/limits.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <functional>
#include <numeric>

#include "formats/clone_kinds.h"
#include "formats/errors.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/write/writer.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "tests/formats/support/reading.h"
#include "tests/formats/support/samples.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// The refusal of some work; empty when there is none.
std::string refusal(const std::function<void()>& work)
{
    try {
        work();
    } catch (const formats::LimitError& error) {
        return error.what();
    }
    return {};
}

mesh::Document one_layer()
{
    mesh::Document document;
    mesh::Layer& layer = document.layers.emplace_back();
    layer.name = "Trees";
    layer.points.resize(10);
    return document;
}

std::string refusal_of(const mesh::Document& document)
{
    const std::string checked = refusal([&] { formats::check_writable(document); });
    EXPECT_EQ(refusal([&] { static_cast<void>(formats::write_lwo2(document)); }), checked);
    return checked;
}

std::string refusal_of_polygon(mesh::FourCC type, std::size_t corners)
{
    mesh::Document document = one_layer();
    document.layers[0].polygons.add(type, std::vector<std::uint32_t>(corners, 1));
    return refusal_of(document);
}

TEST(Limits, LetAPolygonHave1023Points)
{
    EXPECT_EQ(refusal_of_polygon(mesh::polygon_face, 1023), "");
    EXPECT_EQ(
        refusal_of_polygon(mesh::polygon_face, 1024),
        "layer 1 \"Trees\": polygon 0 has 1024 points, more than the 1023 that LWO2 can hold; "
        "split it");
    EXPECT_EQ(refusal_of_polygon(mesh::polygon_curv, 16383), "");
    EXPECT_THAT(refusal_of_polygon(mesh::polygon_curv, 16384), HasSubstr("more than the 16383"));
    EXPECT_THAT(refusal_of_polygon(mesh::polygon_face, 0), HasSubstr("polygon 0 has no points"));
}

TEST(Limits, WriteThePolygonsThatJustFit)
{
    for (const auto& [type, count] :
         {std::pair(mesh::polygon_face, 1023u), std::pair(mesh::polygon_curv, 16383u)}) {
        mesh::Document document = one_layer();
        document.layers[0].polygons.add(type, std::vector<std::uint32_t>(count, 1));
        const auto again = test::read_clean(formats::write_lwo2(document));
        EXPECT_EQ(again.layers[0].polygons.points(0).size(), count);
        EXPECT_EQ(again.layers[0].polygons.flags(0), 0);
    }
}

TEST(Limits, LetALayerHave16777216PointsAndPolygons)
{
    using formats::lwo2::check_count;
    EXPECT_EQ(refusal([] { check_count(16777216, "points", {}, "layer 2"); }), "");
    EXPECT_EQ(
        refusal([] { check_count(16777217, "points", {}, "layer 2"); }),
        "layer 2: 16777217 points are more than the 16777216 that LWO2 can number; make fewer "
        "clones, or spread them over several layers or files");
}

TEST(Limits, OfPointsDivideADocumentsLayer)
{
    mesh::Document document = one_layer();
    document.layers[0].points.resize(16777217);
    document.layers[0].polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{1, 16777216});
    EXPECT_EQ(refusal([&] { formats::check_writable(document); }), "");
    document.layers[0].polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{0, 16777215});
    EXPECT_THAT(refusal_of(document),
                StartsWith("layer 1 \"Trees\": points 0 to 16777216 and their polygons are more"));
    document.layers[0].polygons.truncate(0);
    const auto again = test::read_clean(formats::write_lwo2(document));
    ASSERT_EQ(again.layers.size(), 2u);
    EXPECT_EQ(again.layers[0].points.size(), 16777216u);
    EXPECT_EQ(again.layers[1].points.size(), 1u);
    EXPECT_EQ(again.layers[1].name, "Trees (2)");
}

TEST(Limits, OfTheFilesSizeAreCheckedBeforeTheFileIsTouched)
{
    const mesh::Document document = one_layer();
    const auto size = formats::write_lwo2(document).size() - 8;
    const auto path = std::filesystem::path(testing::TempDir()) / "limits_of_size.lwo";
    std::filesystem::remove(path);
    EXPECT_EQ(
        refusal([&] { formats::lwo2::write_file(document, path, {}, {.file_size = size - 1}); }),
        fmt::format("document: the file would take {} bytes, more than the {} that LWO2 can "
                    "hold; make fewer clones, or spread them over several files",
                    size, size - 1));
    EXPECT_FALSE(std::filesystem::exists(path));
    formats::lwo2::write_file(document, path, {}, {.file_size = size});
    const auto written = std::filesystem::last_write_time(path);
    EXPECT_NE(
        refusal([&] { formats::lwo2::write_file(document, path, {}, {.file_size = size - 1}); }),
        "");
    EXPECT_EQ(std::filesystem::last_write_time(path), written);
    EXPECT_EQ(std::filesystem::file_size(path), size + 8);
    std::filesystem::remove(path);
}

TEST(Limits, OfSizesAreCheckedIn64Bits)
{
    using namespace formats::lwo2;
    EXPECT_EQ(refusal([] { check_chunk_size(0xFFFFFFFF, id_pnts, "layer 1"); }), "");
    EXPECT_THAT(refusal([] { check_chunk_size(0x100000000, id_pnts, "layer 1"); }),
                StartsWith("layer 1: chunk PNTS would take 4294967296 bytes"));
    EXPECT_EQ(refusal([] { check_file_size(0xFFFFFFFF, {}); }), "");
    EXPECT_THAT(refusal([] { check_file_size(0x100000000, {}); }),
                StartsWith("document: the file would take 4294967296 bytes"));
}

TEST(Limits, LetALayerHave256TypesOfPolygonsAndKindsOfTags)
{
    mesh::Document document = one_layer();
    document.tags.append("t");
    mesh::Polygons& polygons = document.layers[0].polygons;
    constexpr std::array<std::uint32_t, 1> point{0};
    for (mesh::FourCC i = 0; i < 256; ++i) {
        polygons.add(mesh::fourcc("T000") + i, point);
        polygons.set_tag(mesh::fourcc("K000") + i, 0, 0);
    }
    EXPECT_EQ(refusal_of(document), "");
    const mesh::Document again = formats::read_lwo2(formats::write_lwo2(document), {});
    EXPECT_EQ(again.layers[0].polygons.other_tag_kinds().size(), 256u);
    polygons.set_tag(mesh::fourcc("K000") + 256, 255, 0);
    EXPECT_THAT(refusal_of(document), HasSubstr("257 kinds of polygon tags are more than the 256"));
    polygons.add(mesh::fourcc("T000") + 256, point);
    EXPECT_THAT(refusal_of(document), HasSubstr("257 types of polygons are more than the 256"));
}

TEST(Limits, RefuseClonesThatBringTheirLayerTooManyKinds)
{
    mesh::Layer ground;
    mesh::Layer model;
    constexpr std::array<std::uint32_t, 1> point{0};
    for (mesh::FourCC i = 0; i < 256; ++i) {
        ground.polygons.add(mesh::fourcc("T000") + i, point);
        ground.polygons.set_tag(mesh::fourcc("K000") + i, 0, 0);
    }
    model.polygons.add(mesh::fourcc("T000") + 7, point);
    model.polygons.set_tag(mesh::fourcc("K000") + 7, 0, 0);
    const std::array<const mesh::Layer*, 1> models{&model};
    EXPECT_EQ(refusal([&] { formats::check_clone_kinds(ground, models); }), "");
    model.polygons.set_tag(mesh::fourcc("PART"), 0, 0);
    EXPECT_THAT(refusal([&] { formats::check_clone_kinds(ground, models); }),
                HasSubstr("257 kinds of polygon tags together"));
    model.polygons.add(mesh::fourcc("SUBD"), point);
    EXPECT_THAT(refusal([&] { formats::check_clone_kinds(ground, models); }),
                HasSubstr("257 types of polygons together"));
}

TEST(Limits, LetADocumentHave65536Tags)
{
    mesh::Document document = one_layer();
    for (int i = 0; i < 65536; ++i)
        document.tags.append(std::to_string(i));
    document.layers[0].polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{0});
    document.layers[0].polygons.set_surface(0, 65535);
    const auto again = test::read_clean(formats::write_lwo2(document));
    EXPECT_EQ(again.layers[0].polygons.surface(0), 65535u);
    document.tags.append("one more");
    EXPECT_THAT(refusal_of(document), HasSubstr("65537 surface and part names are more than"));
}

TEST(Limits, RefuseNumbersThatSinglePrecisionCannotHold)
{
    mesh::Document document = one_layer();
    document.layers[0].points[7].y = -1e39;
    EXPECT_THAT(refusal_of(document), StartsWith("layer 1 \"Trees\": point 7 lies beyond"));
    document.layers[0].points[7].y = std::numeric_limits<double>::infinity();
    EXPECT_EQ(refusal_of(document), "");
    document.layers[0].points[7].y = static_cast<double>(std::numeric_limits<float>::max());
    EXPECT_EQ(refusal_of(document), "");
    document.layers[0].pivot.x = 1e300;
    EXPECT_THAT(refusal_of(document), HasSubstr("the pivot lies beyond"));
}

TEST(Limits, RefuseLayerNumbersThatMeanNone)
{
    mesh::Document document = one_layer();
    document.layers[0].number = 65534;
    EXPECT_EQ(refusal_of(document), "");
    document.layers[0].number = 65535;
    EXPECT_THAT(refusal_of(document), HasSubstr("its number 65535 is past the last one"));
    document.layers[0].number = 0;
    document.layers[0].parent = 65535;
    EXPECT_THAT(refusal_of(document), HasSubstr("its parent has the number 65535"));
}

TEST(Limits, RefuseNamesWithAZeroByte)
{
    using namespace std::string_literals;
    mesh::Document document = one_layer();
    document.layers[0].name = "a\0b"s;
    EXPECT_THAT(refusal_of(document), HasSubstr("the name of layer \"a\" has a zero byte"));
    document.layers[0].name = "a";
    document.layers[0].maps.emplace_back(mesh::map_wght, "w\0"s, 1);
    EXPECT_THAT(refusal_of(document), HasSubstr("the name of vertex map \"w\""));
    document.layers[0].maps.clear();
    document.tags.append("t\0"s);
    EXPECT_THAT(refusal_of(document), HasSubstr("the name of tag \"t\""));
}

TEST(Limits, RefuseMapsOfTooManyNumbersAValue)
{
    mesh::Document document = one_layer();
    document.layers[0].maps.emplace_back(mesh::map_wght, "w", 65536);
    EXPECT_THAT(refusal_of(document), HasSubstr("has 65536 numbers a value"));
}

TEST(Limits, RefuseIndicesThatNameNothing)
{
    mesh::Document document = one_layer();
    document.layers[0].polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{0, 10});
    EXPECT_THAT(refusal_of(document), HasSubstr("polygon 0 names point 10 of 10"));
    document = one_layer();
    document.layers[0].polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{0});
    document.layers[0].polygons.set_surface(0, 0);
    EXPECT_THAT(refusal_of(document), HasSubstr("a tag that is not in the list (0 tags)"));
    document.layers[0].polygons.set_surface(0, mesh::no_tag);
    document.layers[0].polygons.set_tag(mesh::fourcc("PART"), 0, 3);
    EXPECT_THAT(refusal_of(document), HasSubstr("a tag that is not in the list (0 tags)"));
}

} // namespace
