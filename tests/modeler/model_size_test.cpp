// SPDX-License-Identifier: MIT
#include "modeler/model_size.h"

#include <limits>

#include <gtest/gtest.h>

#include "modeler/several_models.h"

namespace {

using modeler::LayerRole;

/// A ground and a model of these longest sides, each far from the origin.
mesh::Document sized(double ground, double model)
{
    mesh::Document document;
    for (const double size : {ground, model}) {
        mesh::Layer& layer = document.layers.emplace_back();
        layer.points.push_back({1000.0, 0.0, 0.0});
        layer.points.push_back({1000.0 + size, size / 2, 0.0});
    }
    return document;
}

std::optional<modeler::SizeMismatch> mismatch_of(const mesh::Document& document)
{
    return modeler::size_mismatch(document, {LayerRole::foreground, LayerRole::background});
}

TEST(SizeMismatch, IsToldOfModelsThatCannotBeSeen)
{
    const auto found = mismatch_of(sized(40.0, 0.02));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->factor, 100.0);
    EXPECT_EQ(modeler::to_sentence(*found),
              "the model is 0.05 % of the ground's size (0.02 m beside 40 m): its clones will be "
              "too small to be seen; scale the model by 100 (it may be in another unit)");
}

TEST(SizeMismatch, IsToldOfModelsLargerThanTheGround)
{
    const auto found = mismatch_of(sized(40.0, 3000.0));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->factor, 0.001);
    EXPECT_EQ(modeler::to_sentence(*found),
              "the model is 75 times as large as the ground (3000 m beside 40 m): its clones will "
              "hide it; scale the model by 0.001 (it may be in another unit)");
}

TEST(SizeMismatch, ScaledByTheFactorThereIsNone)
{
    for (double model = 1e-9; model < 1e9; model *= 1.7) {
        const auto found = mismatch_of(sized(40.0, model));
        EXPECT_EQ(found.has_value(), model < 0.04 || model > 40.0) << model;
        if (found) {
            EXPECT_FALSE(mismatch_of(sized(40.0, model * found->factor))) << model;
        }
    }
}

TEST(SizeMismatch, IsNoneWhereASizeIsNothingOrNoNumber)
{
    EXPECT_FALSE(mismatch_of(sized(0.0, 1.0)));
    EXPECT_FALSE(mismatch_of(sized(1.0, 0.0)));
    EXPECT_FALSE(mismatch_of(sized(1.0, std::numeric_limits<double>::infinity())));
    EXPECT_FALSE(mismatch_of(sized(std::numeric_limits<double>::quiet_NaN(), 1.0)));
    const mesh::Document document = sized(40.0, 0.02);
    for (const LayerRole role : {LayerRole::hidden, LayerRole::shown, LayerRole::foreground})
        EXPECT_FALSE(modeler::size_mismatch(document, {LayerRole::foreground, role}));
}

TEST(SeveralModels, AreNamed)
{
    using Names = std::vector<std::string>;
    EXPECT_EQ(modeler::several_models(Names{"tree"}, 33), "");
    EXPECT_EQ(modeler::several_models(Names{"tree", "rock"}, 45),
              "every clone is all 2 models at once (tree and rock; 45 points)");
    EXPECT_EQ(modeler::several_models(Names{"a", "b", "c", "d", "e"}, 7),
              "every clone is all 5 models at once (a, b, c, d and 1 more; 7 points)");
}

} // namespace
