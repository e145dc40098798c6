// SPDX-License-Identifier: MIT
#include <cmath>
#include <memory>

#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/weights/LW6-weight.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

constexpr double pi = 3.141592653589793;
constexpr double half_pi = 1.5707963267948966;
constexpr double float_pi = 3.1415927410125732;

/// The heading and pitch that a position takes from the normal of its polygon.
class Alignment : public ModuleTest {
protected:
    Alignment() : maps(nullptr)
    {
        maps.add_edit(edit);
        add_ground();
        par.clone_num = 1;
        par.iterations = 0;
    }

    /// The only position, on the square with this normal.
    const pos_typ& on(double x, double y, double z, weight_map* wm = nullptr)
    {
        host.polygons[0].normal = {x, y, z};
        scan();
        set_positions(wm, &par);
        return *pos_list;
    }

    void add_map(const char* name, float value)
    {
        host.maps.push_back(
            {LWVMAP_WGHT, name, {{0, {value}}, {1, {value}}, {2, {value}}, {3, {value}}}});
        const std::unique_ptr<char*[]> list(maps.get_list(objfunc));
    }

    /// The heading drawn for a normal along Y on a square that lies flat.
    double drawn_heading() const
    {
        random sampler;
        sampler.fixed(par.seed);
        (void)sampler.get(); // the column
        (void)sampler.get(); // the height
        return sampler.z_zakresu(-float_pi, float_pi);
    }

    weight_map maps;
};

TEST_F(Alignment, ANormalStraightUpOrDownHasNoPitchAndADrawnHeading)
{
    const pos_typ& up = on(0, 1, 0);
    EXPECT_EQ(up.norm_p, 0.0);
    EXPECT_EQ(up.norm_h, drawn_heading());
    EXPECT_EQ(on(0, -1, 0).norm_p, 0.0);
}

TEST_F(Alignment, DrawnHeadingsFillTheirRange)
{
    double least = 4;
    double most = -4;
    for (par.seed = 1; par.seed <= 500; ++par.seed) {
        const double heading = on(0, 1, 0).norm_h;
        ASSERT_EQ(heading, drawn_heading());
        ASSERT_LE(std::fabs(heading), float_pi);
        least = std::fmin(least, heading);
        most = std::fmax(most, heading);
    }
    EXPECT_LT(least, -3.1);
    EXPECT_GT(most, 3.1);
}

TEST_F(Alignment, ThePitchIsTheAngleFromUp)
{
    EXPECT_EQ(on(0.6, 0.8, 0).norm_p, std::acos(0.8));
    EXPECT_EQ(on(0.6, -0.8, 0).norm_p, std::acos(-0.8));
    EXPECT_EQ(on(1, 0, 0).norm_p, std::acos(0.0));
}

TEST_F(Alignment, ANormalLongerThanOneUpwardsHasNoPitch)
{
    EXPECT_EQ(on(0.5, 1.5, 0).norm_p, 0.0);
    EXPECT_EQ(on(0.5, -1.5, 0).norm_p, 0.0);
}

TEST_F(Alignment, TheHeadingRunsFromXAndTakesTheSignOfZ)
{
    const double length = std::sqrt(0.48 * 0.48 + 0.64 * 0.64);
    EXPECT_EQ(on(0.48, 0.6, 0.64).norm_h, std::acos(0.48 / length));
    EXPECT_EQ(on(0.48, 0.6, -0.64).norm_h, -std::acos(0.48 / length));
    EXPECT_EQ(on(-0.48, 0.6, 0.64).norm_h, std::acos(-0.48 / length));
}

TEST_F(Alignment, TheHeadingAlongXIsExact)
{
    EXPECT_EQ(on(1, 0, 0).norm_h, 0.0);
    EXPECT_EQ(on(-1, 0, 0).norm_h, pi);
}

TEST_F(Alignment, WhatLiesWithinTheToleranceCountsAsZero)
{
    EXPECT_EQ(on(1, 0, 0.001).norm_h, 0.0);
    EXPECT_EQ(on(-1, 0, -0.001).norm_h, pi);
    EXPECT_NE(on(1, 0, 0.0011).norm_h, 0.0);
    EXPECT_EQ(on(0.001, 1, 0.001).norm_h, drawn_heading());
    EXPECT_EQ(on(-0.001, 1, -0.001).norm_h, drawn_heading());
    EXPECT_EQ(on(0.0011, 1, 0).norm_h, 0.0);
    EXPECT_EQ(on(-0.0011, 1, 0).norm_h, pi);
}

TEST_F(Alignment, EitherSwitchComputesBothAngles)
{
    for (const int h : {0, 1}) {
        par.h_align = h;
        par.p_align = 1 - h;
        const pos_typ& node = on(0.48, 0.6, 0.64);
        EXPECT_NE(node.norm_h, 0.0);
        EXPECT_NE(node.norm_p, 0.0);
    }
}

TEST_F(Alignment, WithoutASwitchOfExactlyOneBothAnglesAreZero)
{
    add_map("Tilt", 1.0F);
    par.p_angle_wg = 1;
    for (const int value : {0, 2, -1}) {
        par.h_align = par.p_align = value;
        const pos_typ& node = on(0.48, 0.6, 0.64, &maps);
        EXPECT_EQ(node.norm_h, 0.0);
        EXPECT_EQ(node.norm_p, 0.0);
    }
}

TEST_F(Alignment, TheHeadingIsDrawnAfterTheCandidateAndOnlyAlongY)
{
    // On a second clone one sees whether the first has taken a draw more.
    par.clone_num = 2;
    random sampler;
    sampler.fixed(par.seed);
    double u[2] = {};
    for (double& column : u) {
        column = sampler.get();
        (void)sampler.get();
        (void)sampler.get(); // the heading
    }
    (void)on(0, 1, 0);
    EXPECT_NEAR(pos_list->pos.x(), std::fmin(u[0], u[1]), 1e-15);
    EXPECT_NEAR(pos_list->next->pos.x(), std::fmax(u[0], u[1]), 1e-15);
    par.h_align = par.p_align = 0;
    sampler.fixed(par.seed);
    for (double& column : u) {
        column = sampler.get();
        (void)sampler.get();
    }
    (void)on(0, 1, 0);
    EXPECT_NEAR(pos_list->pos.x(), std::fmin(u[0], u[1]), 1e-15);
    EXPECT_NEAR(pos_list->next->pos.x(), std::fmax(u[0], u[1]), 1e-15);
}

TEST_F(Alignment, APitchWeightAddsUpToARightAngle)
{
    add_map("Tilt", 0.5F);
    par.p_angle_wg = 1;
    EXPECT_EQ(on(0.6, 0.8, 0, &maps).norm_p, std::acos(0.8) + 0.5 * half_pi);
    EXPECT_EQ(on(0, 1, 0, &maps).norm_p, 0.0 + 0.5 * half_pi);
}

TEST_F(Alignment, AnAbsolutePitchWeightStartsFromARightAngle)
{
    add_map("Tilt", -0.5F);
    par.p_angle_wg = 1;
    par.p_absolute = 1;
    EXPECT_EQ(on(0.6, 0.8, 0, &maps).norm_p, half_pi + -0.5 * half_pi);
    par.p_absolute = 2;
    EXPECT_EQ(on(0.6, 0.8, 0, &maps).norm_p, std::acos(0.8) + -0.5 * half_pi);
    par.p_absolute = 1;
    par.p_angle_wg = 0;
    EXPECT_EQ(on(0.6, 0.8, 0, &maps).norm_p, std::acos(0.8)) << "it needs a map";
}

TEST_F(Alignment, APitchIndexWithoutAMapCountsAsFullWeight)
{
    add_map("Tilt", -0.5F);
    for (const int index : {-1, 2}) {
        par.p_angle_wg = index;
        EXPECT_EQ(on(0.6, 0.8, 0, &maps).norm_p, std::acos(0.8) + 1.0 * half_pi) << index;
    }
}

TEST_F(Alignment, APitchSettingWithoutAReaderDoesNothing)
{
    par.p_angle_wg = 1;
    par.p_absolute = 1;
    EXPECT_EQ(on(0.6, 0.8, 0).norm_p, std::acos(0.8));
}

TEST_F(Alignment, ThePitchMapIsReadOncePerCloneAfterItIsPlaced)
{
    add_map("Tilt", 0.5F);
    par.p_angle_wg = 1;
    par.clone_num = 2;
    par.iterations = 15;
    par.distribution = 1e9; // many candidates
    (void)on(0.6, 0.8, 0, &maps);
    EXPECT_EQ(host.calls_to("pointVSet"),
              (Lines{"pointVSet(null, WGHT, \"Tilt\")", "pointVSet(null, WGHT, \"Tilt\")"}));
}

} // namespace
} // namespace dastrel
