// SPDX-License-Identifier: MIT
#include "formats/lwo2/divide/division.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

#include "formats/errors.h"
#include "formats/lwo2/write/writer.h"
#include "formats/lwo2_writer.h"
#include "tests/formats/support/reading.h"
#include "tests/formats/support/samples.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr formats::lwo2::Limits hundred{.layer = 100};

/// Adds a clone of `points` points in a fan of `polygons` triangles behind what a layer has.
void add_clone(mesh::Layer& layer, std::uint32_t points, std::uint32_t polygons)
{
    const auto first = static_cast<std::uint32_t>(layer.points.size());
    for (std::uint32_t i = 0; i < points; ++i)
        layer.points.push_back({static_cast<double>(first + i), 0.5, -static_cast<double>(i)});
    for (std::uint32_t i = 0; i < polygons; ++i) {
        const std::array corners{first + i % points, first + (i + 1) % points, first + points - 1};
        layer.polygons.add(mesh::polygon_face, corners);
        layer.polygons.set_surface(layer.polygons.size() - 1, i % 2);
    }
}

/// A layer of clones with something of everything that must go with its points and polygons.
mesh::Document clones(std::uint32_t count, std::uint32_t points, std::uint32_t polygons)
{
    mesh::Document document;
    document.tags.append("Bark");
    document.tags.append("Leaf");
    mesh::Layer& layer = document.layers.emplace_back();
    layer.name = "Trees";
    layer.flags = 5;
    layer.pivot = {1.0, 2.0, 3.0};
    for (std::uint32_t i = 0; i < count; ++i)
        add_clone(layer, points, polygons);
    layer.maps.emplace_back(mesh::map_txuv, "Skin", 2);
    layer.maps.emplace_back(mesh::map_wght, "Bend", 1);
    for (std::uint32_t point = 0; point < layer.points.size(); ++point) {
        const auto value = static_cast<float>(point);
        layer.maps[0].set(point, std::array{value, value + 0.5f});
        if (point % 3 == 1)
            layer.maps[1].set(point, std::array{-value});
    }
    mesh::CornerValues& corners = layer.maps[0].edit_corners();
    for (std::uint32_t polygon = 0; polygon < layer.polygons.size(); polygon += 5) {
        corners.polygons.push_back(polygon);
        corners.points.push_back(layer.polygons.points(polygon)[1]);
        corners.values.append(std::array{0.25f, static_cast<float>(polygon)});
        layer.polygons.set_tag(mesh::fourcc("PART"), polygon, polygon % 2);
        layer.polygons.set_flags(polygon, 3);
    }
    return document;
}

/// A copy of the points of a range, and of what goes with them, as a layer of its own.
mesh::Layer cut_out(const mesh::Layer& layer, std::uint32_t begin, std::uint32_t end)
{
    mesh::Layer part;
    part.flags = layer.flags;
    part.pivot = layer.pivot;
    part.parent = layer.parent;
    part.points.append(layer.points.span().subspan(begin, end - begin));
    std::vector<std::uint32_t> number(layer.polygons.size(), 0);
    for (std::uint32_t polygon = 0; polygon < layer.polygons.size(); ++polygon) {
        const auto points = layer.polygons.points(polygon);
        const auto is_inside = [&](std::uint32_t p) { return p >= begin && p < end; };
        EXPECT_EQ(std::all_of(points.begin(), points.end(), is_inside),
                  std::any_of(points.begin(), points.end(), is_inside))
            << "polygon " << polygon << " is cut";
        if (!is_inside(points[0]))
            continue;
        std::vector<std::uint32_t> moved(points.begin(), points.end());
        for (std::uint32_t& point : moved)
            point -= begin;
        number[polygon] = static_cast<std::uint32_t>(part.polygons.size());
        part.polygons.add(layer.polygons.type(polygon), moved);
        part.polygons.copy_attributes(layer.polygons, polygon, number[polygon]);
    }
    for (const mesh::VertexMap& map : layer.maps) {
        mesh::VertexMap& own = part.maps.emplace_back(map.type(), map.name(), map.dimension());
        for (std::uint32_t point = begin; point < end; ++point)
            if (map.has(point))
                own.set(point - begin, map.find(point));
        for (std::size_t row = 0; row < map.corners().size(); ++row) {
            const std::uint32_t point = map.corners().points[row];
            if (point < begin || point >= end)
                continue;
            own.edit_corners().points.push_back(point - begin);
            own.edit_corners().polygons.push_back(number[map.corners().polygons[row]]);
            own.edit_corners().values.append(
                map.corners().values.span().subspan(row * map.dimension(), map.dimension()));
        }
    }
    return part;
}

/// Writes a document of one layer with a limit, and holds every layer that comes back to what was
/// cut out of the document by hand. Gives the points of each.
std::vector<std::size_t> divided(const mesh::Document& document,
                                 const formats::lwo2::Limits& limits)
{
    const test::File file = formats::lwo2::write_bytes(document, {}, limits);
    const mesh::Document again = test::read_clean(file);
    const mesh::Layer& layer = document.layers[0];
    mesh::Document by_hand;
    for (std::size_t i = 0; i < document.tags.size(); ++i)
        by_hand.tags.append(document.tags[static_cast<mesh::TagIndex>(i)]);
    std::vector<std::size_t> sizes;
    std::uint32_t begin = 0;
    for (const mesh::Layer& part : again.layers) {
        sizes.push_back(part.points.size());
        EXPECT_LE(part.points.size(), limits.layer);
        EXPECT_LE(part.polygons.size(), limits.layer);
        const auto end = begin + static_cast<std::uint32_t>(part.points.size());
        by_hand.layers.push_back(cut_out(layer, begin, end));
        by_hand.layers.back().name = part.name;
        by_hand.layers.back().number = part.number;
        begin = end;
    }
    EXPECT_EQ(begin, layer.points.size());
    EXPECT_EQ(formats::write_lwo2(by_hand), file);
    return sizes;
}

std::string refusal(const mesh::Document& document, const formats::lwo2::Limits& limits)
{
    try {
        static_cast<void>(formats::lwo2::write_bytes(document, {}, limits));
    } catch (const formats::LimitError& error) {
        return error.what();
    }
    return {};
}

TEST(Division, LeavesALayerThatFits)
{
    EXPECT_THAT(divided(clones(10, 10, 10), hundred), ElementsAre(100));
}

TEST(Division, CutsBetweenClones)
{
    EXPECT_THAT(divided(clones(30, 7, 5), hundred), ElementsAre(98, 98, 14));
    EXPECT_THAT(divided(clones(2, 100, 3), hundred), ElementsAre(100, 100));
    EXPECT_THAT(divided(clones(3, 51, 3), hundred), ElementsAre(51, 51, 51));
}

TEST(Division, CutsWhereThereAreTooManyPolygons)
{
    EXPECT_THAT(divided(clones(40, 4, 8), hundred), ElementsAre(48, 48, 48, 16));
    mesh::Document uneven = clones(1, 50, 20); // few polygons at first, many behind
    for (int i = 0; i < 12; ++i)
        add_clone(uneven.layers[0], 4, 20);
    EXPECT_THAT(divided(uneven, hundred), ElementsAre(50 + 4 * 4, 5 * 4, 3 * 4));
}

TEST(Division, CutsAnywhereBetweenLoosePoints)
{
    mesh::Document document = clones(1, 30, 20);
    for (int i = 0; i < 200; ++i)
        document.layers[0].points.push_back({0.0, static_cast<double>(i), 0.0});
    EXPECT_THAT(divided(document, hundred), ElementsAre(100, 100, 30));
}

TEST(Division, KeepsTheOrderOfPolygonsThatComeMixed)
{
    mesh::Document document = clones(3, 60, 0);
    mesh::Polygons& polygons = document.layers[0].polygons;
    for (std::uint32_t i = 0; i < 50; ++i) {
        const std::uint32_t first = i * 7 % 3 * 60 + i;
        polygons.add(i % 2 == 0 ? mesh::polygon_face : mesh::polygon_ptch,
                     std::array{first, first + 3, first + 8});
    }
    // without a polygon over them, the last points of a clone are loose
    EXPECT_THAT(divided(document, hundred), ElementsAre(61, 61, 58));
}

TEST(Division, NamesAndNumbersTheFurtherLayers)
{
    mesh::Document document = clones(30, 10, 5);
    document.layers[0].number = 3;
    document.layers[0].parent = 9;
    mesh::Layer& other = document.layers.emplace_back();
    other.number = 4;
    other.parent = 3;
    add_clone(other, 90, 1);
    add_clone(other, 90, 1);
    const auto again = test::read_clean(formats::lwo2::write_bytes(document, {}, hundred));
    std::vector<std::string> names;
    std::vector<std::uint16_t> numbers;
    for (const mesh::Layer& layer : again.layers) {
        names.push_back(layer.name);
        numbers.push_back(layer.number);
    }
    EXPECT_THAT(names, ElementsAre("Trees", "Trees (2)", "Trees (3)", "", "(2)"));
    EXPECT_THAT(numbers, ElementsAre(3, 10, 11, 4, 12));
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(again.layers[i].flags, 5);
        EXPECT_EQ(again.layers[i].pivot, (mesh::Vec3{1.0, 2.0, 3.0}));
        EXPECT_EQ(again.layers[i].parent, 9);
    }
    EXPECT_EQ(again.layers[4].parent, 3);
}

TEST(Division, FindsFreeNumbersBelowTheHighest)
{
    mesh::Document document = clones(30, 10, 5);
    document.layers[0].number = 65534;
    for (const std::uint16_t number : std::array<std::uint16_t, 3>{0, 1, 3})
        document.layers.emplace_back().number = number;
    const auto again = test::read_clean(formats::lwo2::write_bytes(document, {}, hundred));
    EXPECT_EQ(again.layers[1].number, 2);
    EXPECT_EQ(again.layers[2].number, 4);
    for (std::uint16_t number = 4; number < 65534; ++number)
        document.layers.emplace_back().number = number;
    EXPECT_THAT(refusal(document, hundred),
                HasSubstr("there is no number left for a further layer"));
}

TEST(Division, RefusesOnePieceThatIsTooLarge)
{
    EXPECT_EQ(
        refusal(clones(2, 101, 3), hundred),
        "layer 1 \"Trees\": points 0 to 100 and their polygons are more than the 100 that one "
        "layer of LWO2 can number, and there is no place to divide them at which no polygon "
        "would be cut; make fewer clones, or spread them over several layers or files");
    EXPECT_THAT(refusal(clones(3, 10, 101), hundred), HasSubstr("points 0 to 9 and"));
    mesh::Document chained = clones(30, 10, 5);
    for (std::uint32_t first = 5; first < 290; first += 10)
        chained.layers[0].polygons.add(mesh::polygon_face, std::array{first, first + 10});
    EXPECT_THAT(refusal(chained, hundred), HasSubstr("there is no place to divide"));
}

TEST(Division, DoesNotPartACornerFromItsPolygon)
{
    mesh::Document document = clones(4, 40, 5);
    mesh::CornerValues& corners = document.layers[0].maps[0].edit_corners();
    corners.polygons.push_back(9); // of the second clone
    corners.points.push_back(85);  // of the third
    corners.values.append(std::array{1.0f, 2.0f});
    EXPECT_THAT(divided(document, hundred), ElementsAre(40, 80, 40));
}

TEST(Division, KeepsWhatCameFromAFileInTheFirst)
{
    // the file's own points would have room for clones before them only as a whole
    const test::File file = test::form(
        {test::chunk("TAGS", test::Bytes().text("Bark").text("Leaf")), test::layer_chunk(2, "Hill"),
         test::points_chunk(70), test::box_chunk(70),
         test::chunk("VMPA", test::Bytes().u4(1).u4(9)),
         test::chunk("VMAP", test::Bytes().raw("WGHT").u2(1).text("Bend").u2(3).f4(0.5f)),
         test::polygons_chunk("FACE", {{0, 1, 2}}), test::tags_chunk("SURF", {{0, 1}}),
         test::chunk("ODD?", test::Bytes().raw("abc"))});
    mesh::Document document = test::read_clean(file);
    mesh::Layer& layer = document.layers[0];
    for (int i = 0; i < 10; ++i)
        add_clone(layer, 20, 4);
    for (std::uint32_t point = 70; point < layer.points.size(); ++point)
        layer.maps[0].set(point, std::array{static_cast<float>(point)});

    std::vector<std::string> warnings;
    const test::File written = formats::lwo2::write_bytes(
        document, [&](const std::string& text) { warnings.push_back(text); }, hundred);
    EXPECT_THAT(warnings, ElementsAre(StartsWith("layer 1 \"Hill\": chunk ODD? is kept")));

    std::vector<std::string> names;
    for (const test::File& chunk : test::split_chunks(written))
        names.push_back(test::chunk_name(chunk));
    EXPECT_THAT(names, ElementsAre("TAGS", "LAYR", "PNTS", "BBOX", "VMPA", "VMAP", "POLS", "PTAG",
                                   "ODD?", "LAYR", "PNTS", "BBOX", "VMPA", "VMAP", "POLS", "PTAG",
                                   "LAYR", "PNTS", "BBOX", "VMPA", "VMAP", "POLS", "PTAG"));
    EXPECT_EQ(test::split_chunks(written)[12], test::split_chunks(written)[4]);
    const mesh::Document again = test::read_clean(written);
    ASSERT_EQ(again.layers.size(), 3u);
    EXPECT_EQ(again.layers[0].points.size(), 90u);
    EXPECT_EQ(again.layers[1].points.size(), 100u);
    EXPECT_EQ(again.layers[2].points.size(), 80u);
    EXPECT_EQ(again.layers[0].polygons.size(), 1u + 4u);
    EXPECT_EQ(again.layers[2].polygons.points(15)[2], 79u);
    EXPECT_EQ(test::value_at(again.layers[0].maps[0], 3), std::vector{0.5f});
    EXPECT_EQ(test::value_at(again.layers[1].maps[0], 0), std::vector{90.0f});
    EXPECT_EQ(test::value_at(again.layers[2].maps[0], 79), std::vector{269.0f});
    EXPECT_EQ(formats::lwo2::write_bytes(again, {}, hundred), written);
}

TEST(Division, KeepsAllOfARandomHeap)
{
    std::mt19937 random(7);
    const auto below = [&](std::uint32_t end) {
        return static_cast<std::uint32_t>(random() % end);
    };
    for (int run = 0; run < 300; ++run) {
        SCOPED_TRACE(run);
        mesh::Document document = clones(0, 1, 1);
        mesh::Layer& layer = document.layers[0];
        std::vector<std::pair<std::uint32_t, std::uint32_t>> pieces;
        const std::uint32_t count = 1 + below(40);
        for (std::uint32_t i = 0; i < count; ++i) {
            const auto first = static_cast<std::uint32_t>(layer.points.size());
            const std::uint32_t size = 1 + below(20);
            pieces.emplace_back(first, size);
            add_clone(layer, size, 0);
        }
        const std::uint32_t polygons = below(150);
        for (std::uint32_t i = 0; i < polygons; ++i) {
            const auto [first, size] = pieces[below(count)];
            std::vector<std::uint32_t> corners(1 + below(5));
            for (std::uint32_t& corner : corners)
                corner = first + below(size);
            layer.polygons.add(mesh::polygon_face, corners);
            layer.polygons.set_surface(i, below(2));
        }
        for (std::uint32_t point = 0; point < layer.points.size(); ++point)
            if (below(3) == 0)
                layer.maps[1].set(point, std::array{static_cast<float>(point)});
        const formats::lwo2::Limits limits{.layer = 20 + below(60)};
        if (refusal(document, limits).empty())
            static_cast<void>(divided(document, limits));
    }
}

} // namespace
