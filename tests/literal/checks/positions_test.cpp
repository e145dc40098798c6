// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "tests/literal/checks/scenes.h"
#include "tests/literal/command.h"
#include "tests/literal/kernel/sampler.h"

namespace literal {
namespace {

/// Two clones on one unit square of ground; the second must keep clear of the first.
/// `wanted_spacing` gives what a candidate with that try's even spacing really needs, or a negative
/// number where the candidate is turned away whatever its distance.
void expect_second_clone(const Scene& scene, Settings settings,
                         const std::function<double(double, Sampler&)>& wanted_spacing)
{
    settings.clone_num = 2;
    Face face;
    face.points = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 0.0, 1.0}, {0.0, 0.0, 1.0}};
    face.normal = {0.0, 1.0, 0.0};
    int beyond_first_try = 0;
    for (std::int32_t seed = 1; seed <= 200; ++seed) {
        settings.seed = seed;
        const std::int64_t clock = 1000 + seed;
        Sampler places(0);
        places.restart(seed);
        Sampler thinning(clock);
        const double even = settings.distribution * std::sqrt(1.0 / 2.0);
        std::vector<Vec3> taken;
        for (int clone = 0; clone < 2; ++clone) {
            for (int t = 1;; ++t) {
                const Vec3 candidate = places.point_on(face);
                if (t <= settings.iterations) {
                    const double tried = static_cast<double>(t) / settings.iterations;
                    const double needed = wanted_spacing(even / (tried + 1.0), thinning);
                    const double away = taken.empty() ? 1e9 : distance(candidate, taken.front());
                    if (needed < 0.0 || needed > away) {
                        ++beyond_first_try;
                        continue;
                    }
                }
                taken.push_back(candidate);
                break;
            }
        }
        const Result result = Command(clock).run(scene, settings);
        ASSERT_EQ(result.positions.size(), 2U);
        const bool swapped = taken[0].x > taken[1].x;
        EXPECT_EQ(result.positions[0].pos, taken[swapped ? 1 : 0]) << "seed " << seed;
        EXPECT_EQ(result.positions[1].pos, taken[swapped ? 0 : 1]) << "seed " << seed;
    }
    EXPECT_GT(beyond_first_try, 10) << "the case tests nothing";
}

Scene weighed_ground(float weight)
{
    Scene scene = square_and_triangle();
    scene.maps.push_back(map_at(scene, "WGHT", "Grass", {0, 1, 2, 3}, {weight}));
    return scene;
}

TEST(LiteralPositions, TheSpacingShrinksFromTryToTry)
{
    Settings settings = still();
    settings.distribution = 1.0;
    settings.iterations = 4;
    expect_second_clone(square_and_triangle(), settings,
                        [](double even, Sampler&) { return even; });
}

TEST(LiteralPositions, LittleWeightSpreadsClonesAndThinsThem)
{
    Settings settings = still();
    settings.distribution = 0.3;
    settings.iterations = 6;
    settings.density_wg = 1;
    // -0.5 gives -50: the spacing grows by 50 / 20 + 1, and draws from 1 to 50 must exceed 4.
    expect_second_clone(weighed_ground(-0.5F), settings, [](double even, Sampler& draws) {
        return draws.between(std::int32_t{1}, std::int32_t{50}) > 4 ? even * 3.5 : -1.0;
    });
}

TEST(LiteralPositions, MuchWeightPacksClones)
{
    Settings settings = still();
    settings.distribution = 5.0;
    settings.iterations = 6;
    settings.density_wg = 1;
    expect_second_clone(weighed_ground(0.5F), settings, [](double even, Sampler& draws) {
        return draws.between(std::int32_t{1}, std::int32_t{150}) > 4 ? even / 3.5 : -1.0;
    });
}

TEST(LiteralPositions, SmallFacesTakeClonesCloserDownToHalf)
{
    // The candidates fall on two faces, so the replay follows the faces' own draws.
    Scene scene;
    add_ground(scene);
    add_polygon(scene, Side::foreground,
                {{0.0, 0.0, 2.0}, {0.125, 0.0, 2.0}, {0.125, 0.0, 3.0}, {0.0, 0.0, 3.0}});
    add_polygon(scene, Side::background, {{1.0, 0.0, 0.0}, {0.0, 2.0, 0.0}, {0.0, 0.0, 4.0}});
    Settings settings = still();
    settings.clone_num = 2;
    settings.distribution = 1.0;
    settings.iterations = 5;
    settings.size_poly_area = 1;
    std::vector<Face> faces(2);
    for (std::size_t i = 0; i < 8; ++i) {
        faces[i / 4].points.push_back(scene.points[i].position);
        faces[i / 4].normal = {0.0, 1.0, 0.0};
    }
    int both_small = 0;
    for (std::int32_t seed = 1; seed <= 200; ++seed) {
        settings.seed = seed;
        Sampler places(0);
        places.restart(seed);
        std::vector<Vec3> taken;
        for (int t = 1; taken.size() < 2; ++t) {
            const std::int32_t k = places.between(std::int32_t{0}, std::int32_t{1});
            const Vec3 candidate = places.point_on(faces[static_cast<std::size_t>(k)]);
            // An eighth of a square metre is less than half of the mean of nine sixteenths.
            const double spacing = std::sqrt(1.125 / 2.0) / (t / 5.0 + 1.0) * (k == 1 ? 0.5 : 1.0);
            if (!taken.empty() && t <= 5 && spacing > distance(candidate, taken.front())) {
                continue;
            }
            both_small += !taken.empty() && k == 1 && taken.front().z >= 2.0 ? 1 : 0;
            taken.push_back(candidate);
            t = 0;
        }
        const Result result = Command(1).run(scene, settings);
        const bool swapped = taken[0].x > taken[1].x;
        EXPECT_EQ(result.positions[0].pos, taken[swapped ? 1 : 0]) << "seed " << seed;
        EXPECT_EQ(result.positions[1].pos, taken[swapped ? 0 : 1]) << "seed " << seed;
    }
    EXPECT_GT(both_small, 5) << "the case tests nothing";
}

} // namespace
} // namespace literal
