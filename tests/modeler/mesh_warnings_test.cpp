// SPDX-License-Identifier: MIT
#include <array>
#include <limits>

#include <gtest/gtest.h>

#include "mesh/polygons.h"
#include "modeler/mesh_warnings.h"

namespace {

using modeler::LayerRole;

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Layers of one triangle each; the first point of each is at `x`.
mesh::Document triangles(std::initializer_list<double> x_of_layers)
{
    mesh::Document document;
    for (const double x : x_of_layers) {
        mesh::Layer& layer = document.layers.emplace_back();
        layer.points.push_back({x, 0, 0});
        layer.points.push_back({1, 0, 0});
        layer.points.push_back({1, 0, 1});
        layer.polygons.add(mesh::polygon_face, std::array<std::uint32_t, 3>{1, 2, 0});
    }
    return document;
}

TEST(MeshWarnings, NothingIsSaidOfSoundMeshes)
{
    EXPECT_TRUE(modeler::mesh_warnings(triangles({0.0, 1e300}),
                                       {LayerRole::foreground, LayerRole::background})
                    .empty());
}

TEST(MeshWarnings, NameTheFirstPlaceAndCountAllOfARole)
{
    mesh::Document document = triangles({0.0, infinity, -infinity, infinity});
    document.layers[1].name = "Hill\x1b[2J";
    const auto warnings =
        modeler::mesh_warnings(document, {LayerRole::foreground, LayerRole::foreground,
                                          LayerRole::foreground, LayerRole::background});
    ASSERT_EQ(warnings.size(), 2U);
    EXPECT_EQ(warnings[0].substr(0, warnings[0].find(';')),
              "the ground has 2 vertices that are not finite numbers, the first is vertex 2 of "
              "polygon 0 (point 0, at inf 0 0) in layer 2 'Hill\\x1B[2J'");
    EXPECT_EQ(warnings[1].substr(0, warnings[1].find(';')),
              "the model has a vertex that is not a finite number: vertex 2 of polygon 0 (point "
              "0, at inf 0 0) in layer 4");
}

TEST(MeshWarnings, HiddenLayersDoNotCount)
{
    EXPECT_TRUE(modeler::mesh_warnings(triangles({infinity}), {LayerRole::hidden}).empty());
}

} // namespace
