// SPDX-License-Identifier: MIT
#include "mesh/layer_numbers.h"

#include <initializer_list>

#include <gtest/gtest.h>

namespace {

mesh::Document numbered(std::initializer_list<std::uint16_t> numbers)
{
    mesh::Document document;
    for (const std::uint16_t number : numbers)
        document.layers.emplace_back().number = number;
    return document;
}

TEST(FreeLayerNumber, ComesAfterTheHighestAsLongAsThereIsOne)
{
    EXPECT_EQ(mesh::free_layer_number(numbered({})), 0);
    EXPECT_EQ(mesh::free_layer_number(numbered({3, 0})), 4);
    EXPECT_EQ(mesh::free_layer_number(numbered({0xFFFD})), 0xFFFE);
    EXPECT_EQ(mesh::free_layer_number(numbered({0, 0xFFFE, 2})), 1);
    EXPECT_EQ(mesh::free_layer_number(numbered({0, 0xFFFF})), 1) << "no number: it stands for none";
}

TEST(FreeLayerNumber, IsNobodysParent)
{
    mesh::Document document = numbered({0, 1});
    document.layers[1].parent = 7;
    EXPECT_EQ(mesh::free_layer_number(document), 8);
}

TEST(FreeLayerNumber, IsNoneWhereAllAreTaken)
{
    mesh::Document document;
    for (unsigned number = 0; number < 0xFFFF; ++number)
        document.layers.emplace_back().number = static_cast<std::uint16_t>(number);
    EXPECT_EQ(mesh::free_layer_number(document), std::nullopt);
    document.layers.front().number = 1;
    EXPECT_EQ(mesh::free_layer_number(document), 0);
}

} // namespace
