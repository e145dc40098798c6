// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <bit>
#include <cmath>
#include <map>

#include "formats/errors.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "formats/merge.h"
#include "tests/formats/support/compare.h"
#include "tests/formats/support/samples.h"

namespace {

/// Any number of single precision, as a double.
double any_number()
{
    const auto bits = *rc::gen::arbitrary<std::uint32_t>();
    return static_cast<double>(std::bit_cast<float>(bits | 0x00400000u)); // no signalling ones
}

std::string any_name() { return *rc::gen::container<std::string>(rc::gen::nonZero<char>()); }

void add_polygons(mesh::Layer& layer, std::size_t tag_count)
{
    const auto points = static_cast<std::uint32_t>(layer.points.size());
    const auto any_tag = [&] {
        return *rc::gen::inRange<mesh::TagIndex>(0, static_cast<mesh::TagIndex>(tag_count));
    };
    // polygons of a type stand together, as they do in a file
    for (const mesh::FourCC type : {mesh::polygon_face, mesh::polygon_ptch, mesh::polygon_curv}) {
        const int count = *rc::gen::inRange(0, 6);
        for (int i = 0; i < count && points > 0; ++i) {
            const auto size = *rc::gen::inRange<std::size_t>(1, 6);
            layer.polygons.add(type, *rc::gen::container<std::vector<std::uint32_t>>(
                                         size, rc::gen::inRange<std::uint32_t>(0, points)));
            const std::size_t polygon = layer.polygons.size() - 1;
            layer.polygons.set_flags(polygon, *rc::gen::inRange<std::uint8_t>(0, 4));
            if (*rc::gen::arbitrary<bool>())
                layer.polygons.set_surface(polygon, any_tag());
            if (*rc::gen::arbitrary<bool>())
                layer.polygons.set_tag(mesh::fourcc("PART"), polygon, any_tag());
        }
    }
}

void add_maps(mesh::Layer& layer)
{
    const auto points = static_cast<std::uint32_t>(layer.points.size());
    const auto polygons = static_cast<std::uint32_t>(layer.polygons.size());
    std::map<std::string, int> used;
    const int count = *rc::gen::inRange(0, 4);
    for (int i = 0; i < count && points > 0; ++i) {
        const std::string name = any_name();
        if (used[name]++ > 0)
            continue;
        const auto dimension = *rc::gen::inRange<std::size_t>(0, 4);
        mesh::VertexMap map(mesh::map_wght, name, dimension);
        const auto any_value = [&] {
            std::vector<float> value;
            for (std::size_t d = 0; d < dimension; ++d)
                value.push_back(static_cast<float>(any_number()));
            return value;
        };
        // a map without any value would not come into the file
        map.set(*rc::gen::inRange<std::uint32_t>(0, points), any_value());
        for (std::uint32_t p = 0; p < points; ++p)
            if (*rc::gen::arbitrary<bool>())
                map.set(p, any_value());
        layer.maps.push_back(std::move(map));
    }
    // one map with values for corners, all in the first type's polygons: their order is the file's
    if (layer.maps.empty() || polygons == 0)
        return;
    mesh::VertexMap& map = layer.maps.back();
    std::uint32_t same_type = 0;
    while (same_type < polygons && layer.polygons.type(same_type) == layer.polygons.type(0))
        ++same_type;
    const int rows = *rc::gen::inRange(0, 4);
    for (int i = 0; i < rows; ++i) {
        map.edit_corners().polygons.push_back(*rc::gen::inRange<std::uint32_t>(0, same_type));
        map.edit_corners().points.push_back(*rc::gen::inRange<std::uint32_t>(0, points));
        for (std::size_t d = 0; d < map.dimension(); ++d)
            map.edit_corners().values.push_back(static_cast<float>(any_number()));
    }
}

mesh::Document any_document()
{
    mesh::Document document;
    const int tags = *rc::gen::inRange(1, 5);
    for (int i = 0; i < tags; ++i)
        document.tags.append(any_name());
    const int layers = *rc::gen::inRange(0, 4);
    for (int i = 0; i < layers; ++i) {
        mesh::Layer& layer = document.layers.emplace_back();
        layer.name = any_name();
        layer.number = static_cast<std::uint16_t>(i);
        layer.flags = *rc::gen::arbitrary<std::uint16_t>();
        layer.pivot = {any_number(), any_number(), any_number()};
        if (*rc::gen::arbitrary<bool>())
            layer.parent = *rc::gen::inRange<std::uint16_t>(0, 65535);
        const int points = *rc::gen::inRange(0, 12);
        for (int p = 0; p < points; ++p)
            layer.points.push_back({any_number(), any_number(), any_number()});
        add_polygons(layer, document.tags.size());
        add_maps(layer);
    }
    return document;
}

/// What a document without a file gains by being written.
void forget_file(mesh::Document& document)
{
    document.head.clear();
    document.tail.clear();
    for (mesh::Layer& layer : document.layers)
        layer.chunks.clear();
}

TEST(Properties, ReadingGivesBackWhatWasWritten)
{
    EXPECT_TRUE(rc::check([] {
        const mesh::Document document = any_document();
        auto again = formats::read_lwo2(formats::write_lwo2(document), {});
        forget_file(again);
        const std::string found = test::difference(document, again);
        RC_ASSERT(found == "");
    }));
}

TEST(Properties, WritingAgainGivesTheSameBytes)
{
    EXPECT_TRUE(rc::check([] {
        const auto file = formats::write_lwo2(any_document());
        RC_ASSERT(formats::write_lwo2(formats::read_lwo2(file, {})) == file);
    }));
}

/// Four characters, of as many as `kinds` different ones.
mesh::FourCC any_kind(int kinds)
{
    return mesh::fourcc("K000") + static_cast<mesh::FourCC>(*rc::gen::inRange(0, kinds));
}

/// A layer with about as many types of polygons and kinds of tags as one can hold, and maps with
/// values anywhere.
mesh::Document any_full_document()
{
    mesh::Document document;
    document.tags.append("tag");
    mesh::Layer& layer = document.layers.emplace_back();
    constexpr std::uint32_t points = 70000; // indices of two bytes and of four
    layer.points.resize(points);
    const auto any_point = [] { return *rc::gen::inRange<std::uint32_t>(0, points); };
    const int types = *rc::gen::inRange(1, 400);
    const int kinds = *rc::gen::inRange(1, 400);
    constexpr std::size_t polygons = 700;
    for (std::size_t i = 0; i < polygons; ++i)
        layer.polygons.add(any_kind(types), std::array{any_point()});
    for (std::size_t i = 0; i < polygons; ++i)
        layer.polygons.set_tag(any_kind(kinds), *rc::gen::inRange<std::size_t>(0, polygons), 0);
    for (int i = 0; i < 20; ++i) {
        mesh::VertexMap& map =
            layer.maps.emplace_back(mesh::map_wght, std::to_string(i), std::size_t{0});
        for (int row = 0; row < 10; ++row)
            map.set(any_point(), {});
    }
    return document;
}

TEST(Properties, WhatTheWriterTakesTheReaderTakes)
{
    int refused = 0;
    int written = 0;
    EXPECT_TRUE(rc::check([&] {
        const mesh::Document document = any_full_document();
        std::vector<std::byte> file;
        try {
            file = formats::write_lwo2(document);
        } catch (const formats::LimitError&) {
            ++refused;
            return;
        }
        ++written;
        const mesh::Document again = formats::read_lwo2(file, {});
        RC_ASSERT(again.layers[0].polygons.size() == document.layers[0].polygons.size());
        for (std::size_t i = 0; i < document.layers[0].maps.size(); ++i)
            RC_ASSERT(again.layers[0].maps[i].size() == document.layers[0].maps[i].size());
    }));
    EXPECT_GT(refused, 0);
    EXPECT_GT(written, 0);
}

TEST(Properties, JoiningKeepsTheMeshesOfBoth)
{
    EXPECT_TRUE(rc::check([] {
        auto into = formats::read_lwo2(formats::write_lwo2(any_document()), {});
        const auto file = formats::write_lwo2(any_document());
        const std::size_t first = into.layers.size();
        formats::append_document(into, formats::read_lwo2(file, {}), "other", {});
        const auto from = formats::read_lwo2(file, {});
        const auto again = formats::read_lwo2(formats::write_lwo2(into), {});
        RC_ASSERT(test::difference(into, again) == "");
        RC_ASSERT(again.layers.size() == first + from.layers.size());
        for (std::size_t i = 0; i < from.layers.size(); ++i) {
            const mesh::Layer& a = from.layers[i];
            const mesh::Layer& b = again.layers[first + i];
            RC_ASSERT(a.points.size() == b.points.size());
            RC_ASSERT(a.polygons.size() == b.polygons.size());
            RC_ASSERT(a.maps.size() == b.maps.size());
        }
    }));
}

} // namespace
