// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/literal/checks/scenes.h"
#include "tests/literal/command.h"
#include "tests/literal/weights.h"

namespace literal {
namespace {

using Value = std::vector<float>;

/// Runs one clone over a scene whose first map weighs the ground, and gives the clone's height.
double height_with_weight(float weight, double influence)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "WGHT", "Grass", {0, 1, 2, 3}, {weight}));
    Settings settings = still();
    settings.clone_num = 1;
    settings.size_wg = 1;
    settings.size_wg_influence = influence;
    return Command(1).run(scene, settings).points[1].position.y;
}

Result run_with_density(float weight, std::int64_t clock)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "WGHT", "Grass", {0, 1, 2, 3}, {weight}));
    Settings settings = still();
    settings.density_wg = 1;
    settings.iterations = 3;
    return Command(clock).run(scene, settings);
}

TEST(LiteralWeights, TheMeanIsTakenInSinglePrecision)
{
    Scene scene;
    add_polygon(scene, Side::foreground, {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 0.0, 1.0}});
    scene.polygons.push_back({"FACE", {}, Side::foreground, true, {}});
    scene.maps.push_back({"TXUV", "Bark", {}});
    scene.maps.push_back({"WGHT", "First", {}});
    scene.maps.push_back({"WGHT", "Second", {Value{1.0F}, Value{0.0F}}});
    const WeightReader reader(scene);
    ASSERT_NE(reader.chosen(2), nullptr);
    EXPECT_EQ(reader.chosen(2)->name, "Second");
    EXPECT_EQ(reader.mean(0, reader.chosen(2)), static_cast<double>(1.0F / 3.0F));
    EXPECT_EQ(reader.mean(0, reader.chosen(1)), 0.0);
    EXPECT_TRUE(std::isnan(reader.mean(1, reader.chosen(2))));
    for (const std::int32_t choice : {0, -1, 3}) {
        EXPECT_EQ(reader.chosen(choice), nullptr);
        EXPECT_EQ(reader.mean(0, reader.chosen(choice)), 1.0);
    }
}

TEST(LiteralWeights, SizeWeightsCountHalfBelowZero)
{
    EXPECT_EQ(height_with_weight(1.0F, 1.0), 4.0);
    EXPECT_EQ(height_with_weight(-1.0F, 1.0), 1.0);
    EXPECT_EQ(height_with_weight(1.0F, 0.25), 2.5);
    EXPECT_EQ(height_with_weight(0.0F, 1.0), 2.0);
}

TEST(LiteralWeights, AChoiceThatNamesNoMapWeighsOne)
{
    Settings settings = still();
    settings.clone_num = 1;
    settings.size_wg = 4;
    settings.size_wg_influence = 1.0;
    EXPECT_EQ(Command(1).run(square_and_triangle(), settings).points[1].position.y, 4.0);
}

TEST(LiteralWeights, ABarePlaceTakesOnlyTheUntestedCandidate)
{
    // At -0.8 and below every test rejects without a draw, so the clock has no part in it.
    const Result bare = run_with_density(-0.9F, 1);
    const Result other_clock = run_with_density(-0.9F, 2);
    ASSERT_EQ(bare.positions.size(), 30U);
    for (std::size_t i = 0; i < bare.positions.size(); ++i) {
        EXPECT_EQ(bare.positions[i].pos, other_clock.positions[i].pos);
    }
    // The fourth candidate of each clone: two outputs per candidate on the only face.
    Sampler sampler(0);
    sampler.restart(25);
    Face face;
    face.points = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 0.0, 1.0}, {0.0, 0.0, 1.0}};
    face.normal = {0.0, 1.0, 0.0};
    std::multiset<double> wanted;
    for (int candidate = 1; candidate <= 4 * 30; ++candidate) {
        const Vec3 p = sampler.point_on(face);
        if (candidate % 4 == 0) {
            wanted.insert(p.x);
        }
    }
    std::multiset<double> found;
    for (const Position& position : bare.positions) {
        found.insert(position.pos.x);
    }
    EXPECT_EQ(found, wanted);
}

TEST(LiteralWeights, DensityDrawsFromTheRunsOwnSampler)
{
    const Result one = run_with_density(-0.5F, 1);
    bool differs = false;
    for (std::int64_t clock = 2; clock < 20 && !differs; ++clock) {
        const Result other = run_with_density(-0.5F, clock);
        for (std::size_t i = 0; i < one.positions.size(); ++i) {
            differs = differs || one.positions[i].pos != other.positions[i].pos;
        }
    }
    EXPECT_TRUE(differs);
}

TEST(LiteralWeights, ThePitchMapAddsQuarterTurns)
{
    Scene scene = square_and_triangle();
    scene.polygons[0].normal = {0.6, 0.8, 0.0};
    scene.maps.push_back(map_at(scene, "WGHT", "Lean", {0, 1, 2, 3}, {0.5F}));
    Settings settings = still();
    settings.h_align = 1;
    settings.p_angle_wg = 1;
    const double half_pi = 1.5707963267948966;
    EXPECT_EQ(Command(1).run(scene, settings).positions[0].norm_p, std::acos(0.8) + 0.5 * half_pi);
    settings.p_absolute = 1;
    EXPECT_EQ(Command(1).run(scene, settings).positions[0].norm_p, half_pi + 0.5 * half_pi);
}

TEST(LiteralMaps, EveryCloneCarriesItsIndex)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "WGHT", "DT_index", {4, 5, 6}, {9.0F}));
    Settings settings = still();
    settings.clone_num = 4;
    const Result result = Command(1).run(scene, settings);
    const WrittenMap* index = result.find_map("WGHT", "DT_index");
    ASSERT_NE(index, nullptr);
    ASSERT_EQ(index->values.size(), 12U);
    for (std::size_t i = 0; i < index->values.size(); ++i) {
        EXPECT_EQ(index->values[i], Value{0.25F * static_cast<float>(i / 3)});
    }
    EXPECT_EQ(result.maps.size(), 1U);
}

TEST(LiteralMaps, ValuesAreCarriedWhereThereAreSome)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "SPOT", "Blown", {4}, {1.0F, 2.0F, 3.0F}));
    scene.maps.push_back(map_at(scene, "MNVW", "Sharp", {5}, {0.5F}));
    scene.maps.push_back(map_at(scene, "WGHT", "Wood", {6}, {0.75F}));
    scene.maps.push_back(map_at(scene, "TXUV", "Bark", {4, 6}, {0.25F, 0.5F}));
    scene.maps.push_back(map_at(scene, "WGHT", "Unused", {0}, {1.0F}));
    scene.maps.push_back(map_at(scene, "RGB ", "Tint", {4}, {1.0F, 0.0F, 0.0F}));
    Settings settings;
    settings.clone_num = 1;
    const Result result = Command(1).run(scene, settings);
    std::vector<std::string> order;
    for (const WrittenMap& map : result.maps) {
        order.push_back(map.type + " " + map.name);
    }
    // By type and in the order in which points first bring them: the first point has no weight.
    EXPECT_EQ(order, (std::vector<std::string>{"TXUV Bark", "WGHT DT_index", "SPOT Blown",
                                               "MNVW Sharp", "WGHT Wood"}));
    const WrittenMap* bark = result.find_map("TXUV", "Bark");
    ASSERT_NE(bark, nullptr);
    EXPECT_EQ(bark->dimension, 2);
    EXPECT_EQ(bark->values[0], (Value{0.25F, 0.5F}));
    EXPECT_FALSE(bark->values[1].has_value());
    EXPECT_EQ(bark->values[2], (Value{0.25F, 0.5F}));
    EXPECT_EQ(result.find_map("SPOT", "Blown")->values[0], (Value{1.0F, 2.0F, 3.0F}));
}

TEST(LiteralMaps, MorphOffsetsTurnWithTheirClone)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "MORF", "Smile", {5}, {1.0F, 0.0F, 0.0F}));
    Settings settings = still();
    settings.clone_num = 1;
    settings.h_min = settings.h_max = 1.5707963267948966;
    const Result result = Command(1).run(scene, settings);
    const WrittenMap* smile = result.find_map("MORF", "Smile");
    ASSERT_NE(smile, nullptr);
    EXPECT_FALSE(smile->values[0].has_value());
    ASSERT_TRUE(smile->values[1].has_value());
    EXPECT_NEAR((*smile->values[1])[0], 0.0F, 1e-7F);
    EXPECT_EQ((*smile->values[1])[1], 0.0F);
    EXPECT_NEAR((*smile->values[1])[2], 1.0F, 1e-7F);
}

TEST(LiteralMaps, MorphOffsetsHaveTheirOwnJitter)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "MORF", "Smile", {4}, {1.0F, 0.0F, 0.0F}));
    Settings settings = still();
    settings.clone_num = 1;
    settings.jitter = 0.5;
    const Result result = Command(4357).run(scene, settings);
    const double second_output = 1585203162.0 * 2.3283064370807974e-10;
    const double third_output = 3113124129.0 * 2.3283064370807974e-10;
    EXPECT_EQ((*result.find_map("MORF", "Smile")->values[0])[0],
              static_cast<float>(second_output + 0.5));
    EXPECT_EQ(result.points[1].position.y, (third_output + 0.5) * 2.0);
}

TEST(LiteralMaps, AutomaticMorphMapsAreNumberedToOneMore)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "MORF", "Smile", {4, 5, 6}, {1.0F, 0.0F, 0.0F}));
    Settings settings = still();
    settings.clone_num = 60;
    settings.auto_morph_maps = 2;
    const Result result = Command(1).run(scene, settings);
    EXPECT_EQ(result.find_map("MORF", "Smile"), nullptr);
    EXPECT_NE(result.find_map("MORF", "Smile1"), nullptr);
    EXPECT_NE(result.find_map("MORF", "Smile2"), nullptr);
    EXPECT_NE(result.find_map("MORF", "Smile3"), nullptr);
    EXPECT_EQ(result.maps.size(), 4U);
}

TEST(LiteralMaps, ANegativeNumberOfMorphMapsIsAppendedAsItIs)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "MORF", "Smile", {4, 5, 6}, {1.0F, 0.0F, 0.0F}));
    Settings settings = still();
    settings.clone_num = 200;
    settings.auto_morph_maps = -3;
    const Result result = Command(1).run(scene, settings);
    std::set<std::string> names;
    for (const WrittenMap& map : result.maps) {
        names.insert(map.name);
    }
    EXPECT_EQ(names, (std::set<std::string>{"DT_index", "Smile-1", "Smile", "Smile1"}));
}

TEST(LiteralMaps, ALaterRunKeepsTheLastMorphNumber)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "MORF", "Smile", {4, 5, 6}, {1.0F, 0.0F, 0.0F}));
    Settings settings = still();
    settings.clone_num = 1;
    Command command(4357);
    EXPECT_NE(command.run(scene, settings).find_map("MORF", "Smile"), nullptr);
    settings.auto_morph_maps = 1; // 0.667576 rounds up to 1, so the number is 2
    EXPECT_NE(command.run(scene, settings).find_map("MORF", "Smile2"), nullptr);
    settings.auto_morph_maps = 0;
    settings.clone_num = 3;
    const Result later = command.run(scene, settings);
    EXPECT_NE(later.find_map("MORF", "Smile2"), nullptr);
    EXPECT_EQ(later.find_map("MORF", "Smile"), nullptr);
}

} // namespace
} // namespace literal
