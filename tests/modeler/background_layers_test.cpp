// SPDX-License-Identifier: MIT
#include "modeler/background_layers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using modeler::background_layers;
using modeler::LayerRole;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(BackgroundLayers, AreThoseOfThatRoleInTheirOrder)
{
    mesh::Document document;
    for (int i = 0; i < 5; ++i)
        document.layers.emplace_back();
    const LayerRole roles[] = {LayerRole::foreground, LayerRole::background, LayerRole::hidden,
                               LayerRole::background, LayerRole::shown};
    EXPECT_THAT(background_layers(document, roles),
                ElementsAre(&document.layers[1], &document.layers[3]));
}

TEST(BackgroundLayers, AreNoneWhereNoLayerHasThatRole)
{
    mesh::Document document;
    document.layers.emplace_back();
    const LayerRole roles[] = {LayerRole::foreground};
    EXPECT_THAT(background_layers(document, roles), IsEmpty());
    EXPECT_THAT(background_layers({}, {}), IsEmpty());
}

} // namespace
