// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/literal/checks/scenes.h"
#include "tests/literal/command.h"

namespace literal {
namespace {

// The first outputs of a sampler that starts at 4357.
const double first = 2867219139.0 * 2.3283064370807974e-10;
const double second = 1585203162.0 * 2.3283064370807974e-10;
const double third = 3113124129.0 * 2.3283064370807974e-10;

using Lines = std::vector<std::string>;

bool same_places(const Result& a, const Result& b)
{
    return std::equal(
        a.positions.begin(), a.positions.end(), b.positions.begin(), b.positions.end(),
        [](const Position& p, const Position& q) { return p.pos == q.pos && p.poly == q.poly; });
}

double closest_pair(const Result& result)
{
    double closest = 1e9;
    for (std::size_t i = 0; i < result.positions.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            closest = std::min(closest, distance(result.positions[i].pos, result.positions[j].pos));
        }
    }
    return closest;
}

TEST(LiteralRun, RefusesAnEmptyForeground)
{
    Scene scene;
    add_polygon(scene, Side::background, {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 0.0, 1.0}});
    EXPECT_EQ(Command(1).run(scene, still()).refusal, Lines{"Need some polys to clone on them"});
}

TEST(LiteralRun, RefusesAForegroundWithoutASelectedFace)
{
    const Lines wanted{"SubDivs not supported in the foreground Layer"};
    Scene patches = square_and_triangle();
    patches.polygons[0].type = "SUBD";
    EXPECT_EQ(Command(1).run(patches, still()).refusal, wanted);
    Scene unselected = square_and_triangle();
    unselected.polygons[0].selected = false;
    EXPECT_EQ(Command(1).run(unselected, still()).refusal, wanted);
}

TEST(LiteralRun, RefusesABackgroundWithoutPoints)
{
    Scene scene;
    add_ground(scene);
    EXPECT_EQ(Command(1).run(scene, still()).refusal,
              Lines{"Need some geometry in the background layer(s) to clone"});
    scene.points.push_back({{}, Side::background}); // a point without a polygon is enough
    const Result result = Command(1).run(scene, still());
    EXPECT_TRUE(result.refusal.empty());
    EXPECT_EQ(result.positions.size(), 30U);
    EXPECT_TRUE(result.points.empty());
}

TEST(LiteralRun, RefusesLimitsThatLeaveNoGround)
{
    Settings settings = still();
    settings.slope_limits = 1;
    settings.slope_min = 0.5;
    Command command(1);
    const Result result = command.run(square_and_triangle(), settings);
    EXPECT_EQ(result.refusal,
              (Lines{"Change slope angle settings", "There are no valid polys to clone on."}));
    EXPECT_TRUE(result.points.empty());
    EXPECT_EQ(command.panel(), settings);
}

TEST(LiteralRun, SlopeLimitsAreInclusive)
{
    Scene scene = square_and_triangle();
    add_polygon(scene, Side::foreground, {{5.0, 0.0, 0.0}, {5.0, 1.0, 0.0}, {5.0, 1.0, 1.0}},
                {1.0, 0.0, 0.0});
    add_polygon(scene, Side::foreground, {{7.0, 0.0, 0.0}, {8.0, 0.0, 0.0}, {8.0, 0.0, 1.0}},
                {0.0, -1.0, 0.0});
    Settings settings = still();
    settings.slope_limits = 1;
    settings.slope_max = std::atan2(1.0, 0.0);
    std::vector<bool> used(3);
    for (const Position& position : Command(1).run(scene, settings).positions) {
        EXPECT_LT(position.pos.x, 6.0);
        used[static_cast<std::size_t>(position.poly)] = true;
    }
    EXPECT_EQ(used, (std::vector<bool>{true, true, false}));
    settings.slope_limits = 2; // on only when exactly 1
    bool downward = false;
    for (const Position& position : Command(1).run(scene, settings).positions) {
        downward = downward || position.poly == 2;
    }
    EXPECT_TRUE(downward);
}

TEST(LiteralRun, CancelKeepsTheSettingsAndOkStoresThem)
{
    Command command(1);
    Settings settings = still();
    settings.clone_num = 3;
    const Scene scene = square_and_triangle();
    EXPECT_EQ(command.run(scene, std::nullopt).next_panel, Settings{});
    EXPECT_EQ(command.run(scene, settings).next_panel, settings);
    const Result cancelled = command.run(scene, std::nullopt);
    EXPECT_EQ(cancelled.next_panel, settings);
    EXPECT_TRUE(cancelled.refusal.empty());
    EXPECT_TRUE(cancelled.points.empty());
}

TEST(LiteralRun, StillClonesAreExactCopiesMovedByTheirPositions)
{
    const Scene scene = square_and_triangle();
    const Result result = Command(77).run(scene, still());
    ASSERT_EQ(result.positions.size(), 30U);
    ASSERT_EQ(result.points.size(), 90U);
    ASSERT_EQ(result.polygons.size(), 30U);
    for (std::size_t i = 0; i < result.points.size(); ++i) {
        const std::size_t source = 4 + i % 3;
        EXPECT_EQ(result.points[i].source, source);
        EXPECT_EQ(result.points[i].position,
                  scene.points[source].position + result.positions[i / 3].pos);
    }
    for (std::size_t i = 0; i < result.polygons.size(); ++i) {
        EXPECT_EQ(result.polygons[i].source, 1U);
        EXPECT_EQ(result.polygons[i].points,
                  (std::vector<std::size_t>{3 * i, 3 * i + 1, 3 * i + 2}));
        EXPECT_EQ(result.positions[i].norm_h, 0.0);
        EXPECT_EQ(result.positions[i].norm_p, 0.0);
    }
}

TEST(LiteralRun, TheFirstDrawsLandWhereTheSequenceSays)
{
    Settings settings;
    settings.clone_num = 1;
    settings.seed = 4357;
    settings.size_var_x = 0.5;
    const Scene scene = square_and_triangle();
    const Result result = Command(4357).run(scene, settings);
    ASSERT_EQ(result.positions.size(), 1U);
    EXPECT_EQ(result.positions[0].pos, (Vec3{first, 0.0, second}));
    EXPECT_EQ(result.positions[0].norm_p, 0.0);
    const double wide_pi = 3.1415927410125732;
    EXPECT_EQ(result.positions[0].norm_h, (wide_pi + wide_pi) * third - wide_pi);

    // The run's own sampler gives heading, pitch and bank first, whatever the positions drew.
    const double limit = settings.h_max;
    const double h = 2.0 * limit * first - limit;
    const double p = 2.0 * limit * second - limit;
    const double b = 2.0 * limit * third - limit;
    Sampler sampler(4357);
    for (int i = 0; i < 3; ++i) {
        (void)sampler.fraction();
    }
    const double size = 0.5 + sampler.fraction();
    // The first point is (1, 0, 0): bank turns it towards -Y, then pitch turns the Y part to +Z.
    const double x1 = size * std::cos(b);
    const double y1 = -size * std::sin(b);
    const double y2 = y1 * std::cos(p);
    const double z2 = -y1 * std::sin(p);
    const double turn = h + result.positions[0].norm_h;
    const double x3 = x1 * std::cos(turn) - z2 * std::sin(turn);
    const double z3 = z2 * std::cos(turn) + x1 * std::sin(turn);
    EXPECT_NEAR(result.points[0].position.x, x3 + first, 1e-12);
    EXPECT_NEAR(result.points[0].position.y, y2, 1e-12);
    EXPECT_NEAR(result.points[0].position.z, z3 + second, 1e-12);
}

TEST(LiteralRun, ClonesGoInAscendingX)
{
    Scene scene = square_and_triangle();
    add_ground(scene, 2.0);
    Settings settings = still();
    settings.clone_num = 200;
    const Result result = Command(5).run(scene, settings);
    ASSERT_EQ(result.positions.size(), 200U);
    for (std::size_t i = 1; i < result.positions.size(); ++i) {
        EXPECT_LE(result.positions[i - 1].pos.x, result.positions[i].pos.x);
    }
}

TEST(LiteralRun, ThePlacesDependOnTheSeedWithoutItsSign)
{
    const Scene scene = square_and_triangle();
    Settings settings;
    settings.seed = 7;
    const Result result = Command(1).run(scene, settings);
    Settings mirrored = settings;
    mirrored.seed = -7;
    EXPECT_TRUE(same_places(result, Command(2).run(scene, mirrored)));
    mirrored.seed = 8;
    EXPECT_FALSE(same_places(result, Command(1).run(scene, mirrored)));
}

TEST(LiteralRun, SpacingKeepsFewClonesApart)
{
    const Scene scene = square_and_triangle();
    Settings settings = still();
    settings.clone_num = 10;
    settings.distribution = 0.5;
    settings.iterations = 1000;
    const double spacing = 0.5 * std::sqrt(1.0 / 10.0);
    EXPECT_GE(closest_pair(Command(1).run(scene, settings)), spacing / 2.0);
    settings.iterations = 0; // the first candidates, untested
    const Result untested = Command(1).run(scene, settings);
    EXPECT_LT(closest_pair(untested), spacing / 2.0);
    settings.distribution = 0.0;
    settings.iterations = 15; // a spacing of 0 rejects nothing
    EXPECT_TRUE(same_places(untested, Command(1).run(scene, settings)));
}

TEST(LiteralRun, NoClonesOrFewerAddNothing)
{
    Settings settings = still();
    settings.clone_num = 0;
    EXPECT_TRUE(Command(1).run(square_and_triangle(), settings).positions.empty());
    settings.clone_num = -4;
    EXPECT_TRUE(Command(1).run(square_and_triangle(), settings).points.empty());
}

TEST(LiteralRun, HeadingsAndPitchesFollowTheNormal)
{
    struct Case {
        Vec3 normal;
        double h;
        double p;
    };
    const double half = 1.5707963267948966;
    const std::vector<Case> cases{{{1.0, 0.0, 0.0}, 0.0, half},
                                  {{-1.0, 0.0, 0.0}, 3.141592653589793, half},
                                  {{0.0, 0.0, 1.0}, half, half},
                                  {{0.0, 0.0, -1.0}, -half, half},
                                  {{0.6, 0.8, 0.0}, 0.0, std::acos(0.8)}};
    for (const Case& tested : cases) {
        Scene scene = square_and_triangle();
        scene.polygons[0].normal = tested.normal;
        Settings settings = still();
        settings.p_align = 1;
        settings.clone_num = 1;
        const Result result = Command(1).run(scene, settings);
        ASSERT_EQ(result.positions.size(), 1U);
        EXPECT_EQ(result.positions[0].norm_h, tested.h);
        EXPECT_EQ(result.positions[0].norm_p, tested.p);
    }
    Scene downward = square_and_triangle();
    downward.polygons[0].normal = {0.0, -1.0, 0.0};
    EXPECT_EQ(Command(1).run(downward, Settings{}).positions[0].norm_p, 0.0);
}

TEST(LiteralRun, ClonesTiltAndTurnWithTheNormalOnlyWhenAsked)
{
    Scene scene = square_and_triangle();
    scene.polygons[0].normal = {0.0, 0.0, 1.0}; // heading and pitch are quarter turns
    Settings settings = still();
    settings.clone_num = 1;
    const auto tip = [&] {
        const Result result = Command(1).run(scene, settings);
        return result.points[1].position - result.positions[0].pos;
    };
    const auto expect_tip = [&](Vec3 wanted) {
        const Vec3 found = tip();
        EXPECT_NEAR(found.x, wanted.x, 1e-12);
        EXPECT_NEAR(found.y, wanted.y, 1e-12);
        EXPECT_NEAR(found.z, wanted.z, 1e-12);
    };
    settings.h_align = 1;
    expect_tip({0.0, 2.0, 0.0});
    settings.p_align = 1;
    expect_tip({0.0, 0.0, 2.0});
    settings.h_align = 0;
    expect_tip({2.0, 0.0, 0.0});
}

TEST(LiteralRun, SizeFollowsTheAreaDownToSevenTenths)
{
    Scene scene;
    add_ground(scene);
    add_polygon(scene, Side::foreground,
                {{2.0, 0.0, 0.0}, {7.0, 0.0, 0.0}, {7.0, 0.0, 1.0}, {2.0, 0.0, 1.0}});
    add_polygon(scene, Side::background, {{1.0, 0.0, 0.0}, {0.0, 2.0, 0.0}, {0.0, 0.0, 4.0}});
    Settings settings = still();
    settings.size_poly_area = 1;
    settings.dep_power = 0.5;
    const Result result = Command(1).run(scene, settings);
    std::vector<int> found(2);
    for (std::size_t i = 0; i < result.positions.size(); ++i) {
        const Position& position = result.positions[i];
        ++found[static_cast<std::size_t>(position.poly)];
        const double height = result.points[3 * i + 1].position.y;
        EXPECT_NEAR(position.area, position.poly == 0 ? 1.0 : 5.0, 1e-12);
        EXPECT_NEAR(height, 2.0 * 0.5 * (position.poly == 0 ? 0.7 : 5.0 / 3.0), 1e-12);
    }
    EXPECT_GT(found[0], 0);
    EXPECT_GT(found[1], 0);
}

TEST(LiteralRun, IndependentSizesUseOneDrawPerAxis)
{
    const Scene scene = square_and_triangle();
    Settings settings = still();
    settings.clone_num = 1;
    settings.size_var_x = settings.size_var_y = settings.size_var_z = 0.5;
    settings.size_indep = 1;
    const Result apart = Command(4357).run(scene, settings);
    const Vec3 at = apart.positions[0].pos;
    EXPECT_EQ(apart.points[0].position.x, (first + 0.5) * 1.0 + at.x);
    EXPECT_EQ(apart.points[1].position.y, (second + 0.5) * 2.0);
    EXPECT_EQ(apart.points[2].position.z, (third + 0.5) * 4.0 + at.z);
    settings.size_indep = 0;
    const Result linked = Command(4357).run(scene, settings);
    EXPECT_EQ(linked.points[1].position.y, (first + 0.5) * 2.0);
    EXPECT_EQ(linked.points[2].position.z, (first + 0.5) * 4.0 + at.z);
}

TEST(LiteralRun, JitterScalesEachPointAboutTheOrigin)
{
    Settings settings = still();
    settings.clone_num = 1;
    settings.jitter = 0.5;
    const Result result = Command(4357).run(square_and_triangle(), settings);
    const Vec3 at = result.positions[0].pos;
    EXPECT_EQ(result.points[0].position, (Vec3{(first + 0.5) + at.x, 0.0, at.z}));
    EXPECT_EQ(result.points[1].position, (Vec3{at.x, (second + 0.5) * 2.0, at.z}));
    EXPECT_EQ(result.points[2].position, (Vec3{at.x, 0.0, (third + 0.5) * 4.0 + at.z}));
}

TEST(LiteralRun, PointsAreSharedWithinACloneOnly)
{
    Scene scene = square_and_triangle();
    ScenePolygon curve;
    curve.type = "CURV";
    curve.side = Side::background;
    curve.selected = false;
    curve.points = {6, 4, 6};
    scene.polygons.push_back(curve);
    scene.points.push_back({{9.0, 9.0, 9.0}, Side::background}); // in no polygon: not copied
    Settings settings = still();
    settings.clone_num = 2;
    const Result result = Command(1).run(scene, settings);
    EXPECT_EQ(result.points.size(), 6U);
    ASSERT_EQ(result.polygons.size(), 4U);
    EXPECT_EQ(result.polygons[1].type, "CURV");
    EXPECT_EQ(result.polygons[1].source, 2U);
    EXPECT_EQ(result.polygons[1].points, (std::vector<std::size_t>{2, 0, 2}));
    EXPECT_EQ(result.polygons[3].points, (std::vector<std::size_t>{5, 3, 5}));
}

TEST(LiteralRun, TheSamplerGoesOnFromRunToRun)
{
    const Scene scene = square_and_triangle();
    Settings settings = still();
    settings.clone_num = 1;
    settings.size_var_x = 0.5;
    Command command(4357);
    EXPECT_EQ(command.run(scene, settings).points[1].position.y, (first + 0.5) * 2.0);
    EXPECT_EQ(command.run(scene, settings).points[1].position.y, (second + 0.5) * 2.0);
}

} // namespace
} // namespace literal
