// SPDX-License-Identifier: MIT
#include "modeler/clone_layers.h"

#include <gtest/gtest.h>

#include "mesh/clone_numbers.h"

namespace {

using modeler::LayerRole;

std::string position(std::size_t layer) { return "layer " + std::to_string(layer + 1); }

/// Layers of two triangles each; the second of them belongs to a clone.
mesh::Document grounds_with_clones(std::size_t count)
{
    mesh::Document document;
    for (std::size_t i = 0; i < count; ++i) {
        mesh::Layer& layer = document.layers.emplace_back();
        for (int point = 0; point < 6; ++point)
            layer.points.push_back({});
        layer.polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{0, 1, 2});
        layer.polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{3, 4, 5});
        mesh::VertexMap& map = layer.maps.emplace_back(mesh::map_wght, mesh::clone_number_map, 1);
        const float number = 0.0f;
        for (std::uint32_t point = 3; point < 6; ++point)
            map.set(point, {&number, 1});
    }
    return document;
}

TEST(EarlierClones, AreNamedWithTheirLayers)
{
    const mesh::Document document = grounds_with_clones(5);
    EXPECT_EQ(modeler::earlier_clones(document,
                                      {LayerRole::background, LayerRole::foreground,
                                       LayerRole::hidden, LayerRole::shown, LayerRole::background},
                                      position),
              "the ground contains clones of an earlier run (layer 2): new clones will stand on "
              "those, too");
    EXPECT_EQ(modeler::earlier_clones(document, std::vector(5, LayerRole::foreground), position),
              "the ground contains clones of an earlier run (layer 1, layer 2, layer 3 and 2 more):"
              " new clones will stand on those, too");
    EXPECT_EQ(modeler::earlier_clones(document, std::vector(5, LayerRole::background), position),
              "");
}

TEST(EarlierClones, ThatAreNotAmongTheSelectedPolygonsDoNotMatter)
{
    mesh::Document document = grounds_with_clones(2);
    const std::vector roles(2, LayerRole::foreground);
    document.layers[0].polygons.select(0, true);
    EXPECT_EQ(modeler::earlier_clones(document, roles, position), "");
    document.layers[1].polygons.select(1, true);
    EXPECT_NE(modeler::earlier_clones(document, roles, position).find("(layer 2)"),
              std::string::npos);
}

TEST(EarlierClones, AMapOfThatNameWithoutValuesIsNone)
{
    mesh::Document document = grounds_with_clones(1);
    document.layers[0].maps[0].truncate(0);
    EXPECT_EQ(modeler::earlier_clones(document, {LayerRole::foreground}, position), "");
}

TEST(CloneLayerName, TellsTheModels)
{
    using Names = std::vector<std::string>;
    EXPECT_EQ(modeler::clone_layer_name({}), "clones");
    EXPECT_EQ(modeler::clone_layer_name(Names{"tree"}), "clones of tree");
    EXPECT_EQ(modeler::clone_layer_name(Names{"tree", "rock"}), "clones of tree and rock");
    EXPECT_EQ(modeler::clone_layer_name(Names{"a", "b", "c"}), "clones of a and 2 more");
}

TEST(CloneLayerName, GetsANumberWhereALayerHasItAlready)
{
    mesh::Document document;
    for (const char* const name : {"ground", "clones", "clones 3", "clones 2", "clones 4"})
        document.layers.emplace_back().name = name;
    EXPECT_EQ(modeler::free_layer_name("clones of tree", document, 5), "clones of tree");
    EXPECT_EQ(modeler::free_layer_name("clones", document, 1), "clones");
    EXPECT_EQ(modeler::free_layer_name("clones", document, 2), "clones 2");
    EXPECT_EQ(modeler::free_layer_name("clones", document, 4), "clones 4");
    EXPECT_EQ(modeler::free_layer_name("clones", document, 5), "clones 5");
}

} // namespace
