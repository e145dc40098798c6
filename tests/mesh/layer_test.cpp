// SPDX-License-Identifier: MIT
#include "mesh/layer.h"

#include <gtest/gtest.h>

#include "mesh/document.h"

namespace {

TEST(Layer, FindsTheFirstMapOfATypeAndName)
{
    mesh::Layer layer;
    layer.maps.emplace_back(mesh::map_wght, "A", 1u);
    layer.maps.emplace_back(mesh::map_morf, "A", 3u);
    layer.maps.emplace_back(mesh::map_wght, "A", 2u);
    EXPECT_EQ(layer.find_map(mesh::map_wght, "A"), &layer.maps[0]);
    EXPECT_EQ(layer.find_map(mesh::map_morf, "A"), &layer.maps[1]);
    EXPECT_EQ(layer.find_map(mesh::map_wght, "a"), nullptr);
    EXPECT_EQ(layer.find_map(mesh::map_spot, "A"), nullptr);
}

TEST(FourCC, PacksTheFirstCharacterHighest)
{
    EXPECT_EQ(mesh::fourcc("FACE"), 0x46414345u);
    EXPECT_EQ(mesh::to_text(0x46414345u), "FACE");
}

TEST(FourCC, SpellsOutWhatCannotBePrinted)
{
    EXPECT_EQ(mesh::to_text(0x41000A7Fu), "A\\x00\\x0A\\x7F");
    EXPECT_EQ(mesh::to_text(0x41207EFFu), "A ~\\xFF");
}

TEST(Document, AddingALayerLeavesTheOthersWhereTheyAre)
{
    mesh::Document document;
    document.layers.emplace_back().points.push_back({1.0, 2.0, 3.0});
    const mesh::Layer* const layer = &document.layers.front();
    const mesh::Vec3* const point = layer->points.data();
    for (int i = 0; i < 100; ++i)
        document.layers.emplace_back();
    EXPECT_EQ(&document.layers.front(), layer);
    EXPECT_EQ(layer->points.data(), point) << "a copy would need the memory twice";
}

} // namespace
