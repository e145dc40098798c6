// SPDX-License-Identifier: MIT
#include "mesh/clone_numbers.h"

#include <gtest/gtest.h>

namespace {

/// A layer of four points, the first ones of which have a clone's number.
mesh::Layer numbered(std::uint32_t count, mesh::FourCC type = mesh::map_wght)
{
    mesh::Layer layer;
    for (int i = 0; i < 4; ++i)
        layer.points.push_back({});
    mesh::VertexMap& map = layer.maps.emplace_back(type, mesh::clone_number_map, 1);
    const float number = 0.5f;
    for (std::uint32_t i = 0; i < count; ++i)
        map.set(i, {&number, 1});
    return layer;
}

TEST(CloneNumbers, TellWhetherALayerHoldsClones)
{
    EXPECT_FALSE(mesh::holds_clones(mesh::Layer()));
    EXPECT_FALSE(mesh::holds_clones(numbered(0))) << "a map without values says nothing";
    EXPECT_FALSE(mesh::holds_clones(numbered(4, mesh::map_mnvw)));
    EXPECT_TRUE(mesh::holds_clones(numbered(1)));
    EXPECT_FALSE(mesh::holds_only_clones(numbered(0)));
    EXPECT_FALSE(mesh::holds_only_clones(numbered(3)));
    EXPECT_TRUE(mesh::holds_only_clones(numbered(4)));
}

} // namespace
