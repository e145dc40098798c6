// SPDX-License-Identifier: MIT
// Whole runs of the real module, loaded as any host loads it, against the literal command: equal to
// the last bit.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "modeler/modeler.h"
#include "tests/literal/command.h"
#include "tests/whole/comparison.h"
#include "tests/whole/literal_scene.h"
#include "tests/whole/random_settings.h"
#include "tests/whole/scenes.h"
#include "tests/whole/user.h"

namespace whole {
namespace {

constexpr int loads = 4; ///< of the module, for each ground and model
constexpr int runs = 5;  ///< in each load

using Lines = std::vector<std::string>;

int count_weight_maps(const literal::Scene& scene)
{
    int count = 0;
    for (const literal::SceneMap& map : scene.maps)
        count += map.type == "WGHT" ? 1 : 0;
    return count;
}

/// One load of the module beside one literal command, on one document.
class SideBySide {
public:
    SideBySide(Session session, std::int64_t clock)
        : modeler_(std::move(session.document), std::move(session.roles)), module_(load(clock)),
          literal_(clock)
    {}

    /// Runs both with the same settings (none: the user cancels) and compares everything.
    void run(const std::optional<literal::Settings>& settings)
    {
        const LiteralScene source = literal_scene(modeler_.document(), modeler_.roles());
        const Extent before(modeler_.document());
        const literal::Settings panel = literal_.panel();
        User user;
        user.in_panel = [&settings](modeler::FormPanel& shown) {
            if (settings)
                fill(shown, *settings);
            return settings.has_value();
        };
        const modeler::RunResult real = modeler_.run(module_, "Dastrel", user);
        const literal::Result expected = literal_.run(source.scene, settings);
        EXPECT_EQ(
            differences(modeler_.document(), modeler_.roles(), before, source, real, expected),
            Lines{});
        EXPECT_EQ(user.warned, refusal_lines(expected));
        if (user.before) {
            EXPECT_TRUE(same_settings(*user.before, panel)) << "the panel shows the last settings";
        }
        EXPECT_EQ(real.panel_cancelled, user.before.has_value() && !settings.has_value());
        clones_ += expected.positions.size();
        refused_ += expected.refusal.empty() ? 0 : 1;
    }

    [[nodiscard]] modeler::Modeler& modeler() { return modeler_; }
    [[nodiscard]] int weight_maps() const
    {
        return count_weight_maps(literal_scene(modeler_.document(), modeler_.roles()).scene);
    }
    [[nodiscard]] std::size_t clones() const { return clones_; }
    [[nodiscard]] int refused() const { return refused_; }

private:
    static modeler::Module load(std::int64_t clock)
    {
        setenv("DASTREL_CLOCK", std::to_string(clock).c_str(), 1);
        modeler::Module module = modeler::Module::load(DASTREL_MODULE_FILE);
        unsetenv("DASTREL_CLOCK");
        return module;
    }

    static Lines refusal_lines(const literal::Result& result)
    {
        if (result.refusal.empty())
            return {};
        return {result.refusal[0] + "\n" + (result.refusal.size() > 1 ? result.refusal[1] : "")};
    }

    /// Equal, non-numbers alike.
    static bool same_settings(literal::Settings a, literal::Settings b)
    {
        using S = literal::Settings;
        for (double S::*const field :
             {&S::dep_power, &S::size_wg_influence, &S::slope_max, &S::slope_min, &S::jitter,
              &S::distribution, &S::b_max, &S::b_min, &S::p_max, &S::p_min, &S::h_max, &S::h_min,
              &S::size_var_x, &S::size_var_y, &S::size_var_z})
            if (std::isnan(a.*field) && std::isnan(b.*field))
                a.*field = b.*field = 0.0;
        return a == b;
    }

    modeler::Modeler modeler_;
    modeler::Module module_;
    literal::Command literal_;
    std::size_t clones_ = 0;
    int refused_ = 0;
};

using Scenery = std::tuple<Ground, Model>;

class WholeRun : public testing::TestWithParam<Scenery> {};

TEST_P(WholeRun, AgreesWithTheLiteralCommandToTheLastBit)
{
    const auto [ground, model] = GetParam();
    const int scenery = static_cast<int>(ground) * 10 + static_cast<int>(model);
    std::size_t clones = 0;
    for (int load = 0; load < loads; ++load) {
        Numbers numbers(static_cast<std::uint32_t>(scenery * 100 + load));
        SideBySide both(make_session(ground, model, numbers), 1000 + scenery * 7 + load);
        for (int run = 0; run < runs; ++run) {
            SCOPED_TRACE("load " + std::to_string(load) + ", run " + std::to_string(run));
            if (numbers.chance(40)) { // a selection that changes from run to run
                const std::size_t polygons = both.modeler().document().layers[0].polygons.size();
                for (std::size_t p = 0; p < polygons; ++p)
                    both.modeler().select(0, p, numbers.chance(60));
            }
            if (numbers.chance(8))
                both.run(std::nullopt);
            both.run(random_settings(numbers, both.weight_maps()));
            if (numbers.chance(50) && both.modeler().can_undo())
                both.modeler().undo();
            if (HasFailure())
                return;
        }
        clones += both.clones();
    }
    EXPECT_GT(clones, 30U) << "the runs do something";
}

std::string scenery_name(const testing::TestParamInfo<Scenery>& tested)
{
    constexpr const char* grounds[] = {"terrain", "walls", "shapes", "degenerate", "layers"};
    constexpr const char* models[] = {"triangle", "tree", "mixed", "points"};
    return std::string(grounds[static_cast<int>(std::get<0>(tested.param))]) + "_with_" +
           models[static_cast<int>(std::get<1>(tested.param))];
}

INSTANTIATE_TEST_SUITE_P(
    Scenes, WholeRun,
    testing::Combine(testing::Values(Ground::terrain, Ground::walls, Ground::shapes,
                                     Ground::degenerate, Ground::layers),
                     testing::Values(Model::triangle, Model::tree, Model::mixed, Model::points)),
    scenery_name);

SideBySide terrain_with_tree(std::int64_t clock = 1)
{
    Numbers numbers(77);
    return {make_session(Ground::terrain, Model::tree, numbers), clock};
}

TEST(WholeRunEnds, AMapChoiceThatOutlivesItsMapsCountsAsFullWeight)
{
    SideBySide both = terrain_with_tree();
    literal::Settings settings;
    settings.size_wg = settings.density_wg = settings.p_angle_wg = 4;
    both.run(settings);
    both.modeler().undo();
    both.modeler().set_role(0, modeler::LayerRole::background); // its maps come first no more
    both.modeler().set_role(1, modeler::LayerRole::foreground);
    both.run(settings);
    both.modeler().set_role(0, modeler::LayerRole::hidden); // no more than three maps are left
    Numbers numbers(5);
    Session other = make_session(Ground::walls, Model::triangle, numbers);
    other.document.layers[0].maps.clear();
    both.modeler().replace(std::move(other.document), std::move(other.roles));
    both.run(settings); // the panel keeps a choice that has no entry
    EXPECT_EQ(both.refused(), 0);
}

TEST(WholeRunEnds, RefusesEachUnusableSceneAsTheLiteralCommandDoes)
{
    Numbers numbers(3);
    const literal::Settings settings;
    {
        Session no_polygons = make_session(Ground::terrain, Model::triangle, numbers);
        no_polygons.roles[0] = modeler::LayerRole::hidden;
        no_polygons.document.layers.emplace_back();
        no_polygons.roles.push_back(modeler::LayerRole::foreground);
        SideBySide both(std::move(no_polygons), 1);
        both.run(settings);
        EXPECT_EQ(both.refused(), 1);
    }
    {
        Session no_model = make_session(Ground::terrain, Model::triangle, numbers);
        no_model.roles[1] = modeler::LayerRole::hidden;
        SideBySide both(std::move(no_model), 1);
        both.run(settings);
        EXPECT_EQ(both.refused(), 1);
    }
    {
        Session no_faces;
        mesh::Layer& layer = no_faces.document.layers.emplace_back();
        layer.points.push_back({0, 0, 0});
        layer.points.push_back({1, 0, 0});
        layer.polygons.add(mesh::polygon_curv, std::vector<std::uint32_t>{0, 1});
        no_faces.roles.push_back(modeler::LayerRole::foreground);
        SideBySide both(std::move(no_faces), 1);
        both.run(settings);
        EXPECT_EQ(both.refused(), 1);
    }
    {
        SideBySide both(make_session(Ground::terrain, Model::triangle, numbers), 1);
        literal::Settings steep;
        steep.slope_limits = 1;
        steep.slope_min = 3.1;
        both.run(steep);
        EXPECT_EQ(both.refused(), 1);
        EXPECT_FALSE(both.modeler().can_undo());
        both.run(settings);
    }
}

TEST(WholeRunEnds, ManyClonesAgree)
{
    SideBySide both = terrain_with_tree(99);
    literal::Settings settings;
    settings.clone_num = 400;
    settings.jitter = 0.2;
    settings.auto_morph_maps = 2;
    settings.density_wg = 2;
    both.run(settings);
    EXPECT_EQ(both.clones(), 400U);
}

TEST(WholeRunEnds, AFreshLoadStartsFromTheDefaults)
{
    for (int load = 0; load < 2; ++load) {
        SideBySide both = terrain_with_tree();
        literal::Settings settings;
        settings.clone_num = 3;
        settings.auto_morph_maps = 4; // leaves a number that a fresh load must not know
        both.run(literal::Settings());
        both.run(settings);
    }
}

} // namespace
} // namespace whole
