// SPDX-License-Identifier: MIT
#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

/// What happens to one point of the model, and what is drawn for one clone.
class ClonedPoint : public ModuleTest {
protected:
    ClonedPoint()
    {
        use(still());
        akt_item = &item;
        size_change_x = 1.0;
        size_change_y = size_change_z = 99.0; // from some other clone: not to be read
    }

    ~ClonedPoint() override
    {
        WG_val = nullptr;
        akt_item = nullptr;
    }

    XYZ6_typ cloned(XYZ6_typ p) { return calc_cloned_point(p, &par); }

    void draw() { EXPECT_TRUE(clone_object(&par)); }

    pos_typ item;
    double weights[2] = {0.0, 0.0};
};

TEST_F(ClonedPoint, StaysAsItIsWhenNothingVaries)
{
    expect_equal(cloned({1, 2, 3}), 1, 2, 3);
    EXPECT_EQ(draws_since(1, losoj), 0);
}

TEST_F(ClonedPoint, IsNotMovedToThePosition)
{
    item.pos = XYZ6_typ(10, 20, 30);
    expect_equal(cloned({1, 2, 3}), 1, 2, 3);
}

TEST_F(ClonedPoint, IsSizedAlikeOnAllAxesUnlessTheyAreIndependent)
{
    size_change_x = 2.0;
    size_change_y = 3.0;
    size_change_z = 5.0;
    expect_equal(cloned({1, 1, 1}), 2, 2, 2);
    par.size_indep = 1;
    expect_equal(cloned({1, 1, 1}), 2, 3, 5);
    par.size_indep = 2;
    expect_equal(cloned({1, 1, 1}), 2, 2, 2);
}

TEST_F(ClonedPoint, JittersByOneFreshFactorForEachCall)
{
    par.jitter = 0.25;
    random beside;
    beside.randomize(1);
    for (int i = 0; i < 3; ++i) {
        const double factor = beside.z_zakresu(0.75, 1.25);
        expect_equal(cloned({1, -2, 3}), factor, -2 * factor, 3 * factor);
    }
    EXPECT_EQ(draws_since(1, losoj), 3);
}

TEST_F(ClonedPoint, DoesNotJitterAtZeroOrLess)
{
    for (const double jitter : {0.0, -0.5}) {
        par.jitter = jitter;
        expect_equal(cloned({1, 2, 3}), 1, 2, 3);
    }
    EXPECT_EQ(draws_since(1, losoj), 0);
}

TEST_F(ClonedPoint, JitterAboveOneMayMirrorThePoint)
{
    par.jitter = 50.0;
    int mirrored = 0;
    for (int i = 0; i < 200; ++i)
        mirrored += cloned({1, 0, 0}).x() < 0 ? 1 : 0;
    EXPECT_GT(mirrored, 50);
}

TEST_F(ClonedPoint, AWeightOfOneDoublesAndOneOfMinusOneHalves)
{
    WG_val = weights;
    par.size_wg = 1;
    par.size_wg_influence = 1.0;
    item.poly = 1;
    weights[1] = 1.0;
    expect_equal(cloned({1, 2, 3}), 2, 4, 6);
    weights[1] = -1.0;
    expect_equal(cloned({1, 2, 3}), 0.5, 1, 1.5);
    par.size_wg_influence = 0.5;
    expect_equal(cloned({4, 0, 0}), 3, 0, 0);
    weights[1] = 1.0;
    expect_equal(cloned({4, 0, 0}), 6, 0, 0);
    weights[1] = 0.0;
    expect_equal(cloned({4, 0, 0}), 4, 0, 0);
}

TEST_F(ClonedPoint, TheSizeWeightActsForAChoiceAboveZeroOnly)
{
    WG_val = weights;
    weights[0] = 1.0;
    par.size_wg_influence = 1.0;
    for (const int choice : {0, -1}) {
        par.size_wg = choice;
        expect_equal(cloned({1, 2, 3}), 1, 2, 3);
    }
    par.size_wg = 7;
    expect_equal(cloned({1, 2, 3}), 2, 4, 6);
}

TEST_F(ClonedPoint, TurnsBankThenPitchThenHeading)
{
    HPB_rand = XYZ6_typ(0.3, 0.5, 0.7);
    const XYZ6_typ expected = XYZ6_typ(1, 2, 3).rotate_Z(0.7).rotate_X(0.5).rotate_Y(0.3);
    EXPECT_EQ(text(cloned({1, 2, 3})), text(expected));
}

TEST_F(ClonedPoint, TiltsOntoTheNormalThenTurnsToItsHeading)
{
    HPB_rand = XYZ6_typ(0.3, 0.5, 0.7);
    item.norm_p = 0.9;
    item.norm_h = -0.4;
    const XYZ6_typ turned = XYZ6_typ(1, 2, 3).rotate_Z(0.7).rotate_X(0.5).rotate_Y(0.3);
    EXPECT_EQ(text(cloned({1, 2, 3})), text(turned));
    par.p_align = 1;
    EXPECT_EQ(text(cloned({1, 2, 3})), text(turned.rotate_Z(0.9)));
    par.h_align = 1;
    EXPECT_EQ(text(cloned({1, 2, 3})), text(turned.rotate_Z(0.9).rotate_Y(-0.4)));
    par.p_align = 0;
    EXPECT_EQ(text(cloned({1, 2, 3})), text(turned.rotate_Y(-0.4)));
    par.p_align = par.h_align = 2;
    EXPECT_EQ(text(cloned({1, 2, 3})), text(turned));
}

TEST_F(ClonedPoint, GoesThroughSizeJitterAndWeightInThisOrder)
{
    size_change_x = 1.1;
    par.jitter = 0.3;
    par.size_wg = 1;
    par.size_wg_influence = 0.7;
    weights[0] = 0.9;
    WG_val = weights;
    random beside;
    beside.randomize(1);
    const double factor = beside.z_zakresu(1 - 0.3, 1 + 0.3);
    const double by_weight = 0.9 * 0.7 + 1;
    EXPECT_EQ(cloned({0.1, 0, 0}).x(), ((0.1 * 1.1) * factor) * by_weight);
}

TEST_F(ClonedPoint, AClonesAnglesAndSizesAreDrawnInOrder)
{
    par.h_min = -0.1;
    par.h_max = 0.2;
    par.p_min = -0.3;
    par.p_max = 0.4;
    par.b_min = -0.5;
    par.b_max = 0.6;
    par.size_var_x = 0.25;
    par.size_var_y = 0.35;
    par.size_var_z = 0.45;
    par.size_indep = 1;
    par.auto_morph_maps = 9;
    random beside;
    beside.randomize(1);
    draw();
    EXPECT_EQ(HPB_rand.x(), beside.z_zakresu(-0.1, 0.2));
    EXPECT_EQ(HPB_rand.y(), beside.z_zakresu(-0.3, 0.4));
    EXPECT_EQ(HPB_rand.z(), beside.z_zakresu(-0.5, 0.6));
    EXPECT_EQ(size_change_x, beside.z_zakresu(1 - 0.25, 1 + 0.25));
    EXPECT_EQ(size_change_y, beside.z_zakresu(1 - 0.35, 1 + 0.35));
    EXPECT_EQ(size_change_z, beside.z_zakresu(1 - 0.45, 1 + 0.45));
    EXPECT_EQ(morph_map_num, beside.z_zakresu(0, 9) + 1);
    EXPECT_EQ(draws_since(1, losoj), 7);
}

TEST_F(ClonedPoint, OnlyTheFirstSizeIsDrawnUnlessTheyAreIndependent)
{
    par.size_var_x = par.size_var_y = par.size_var_z = 0.25;
    for (const int value : {0, 2}) {
        losoj.randomize(1);
        par.size_indep = value;
        draw();
        EXPECT_EQ(draws_since(1, losoj), 1);
        EXPECT_EQ(size_change_y, 99.0);
        EXPECT_EQ(size_change_z, 99.0);
    }
}

TEST_F(ClonedPoint, NothingIsDrawnWhenNothingVaries)
{
    draw();
    EXPECT_EQ(draws_since(1, losoj), 0);
    expect_equal(HPB_rand, 0, 0, 0);
    EXPECT_EQ(size_change_x, 1.0);
    EXPECT_EQ(akt_point, 0);
}

TEST_F(ClonedPoint, TheAreaFactorIsARatioWithAFloorTimesThePower)
{
    par.size_poly_area = 1;
    par.dep_power = 0.5;
    poly_avg_area = 3.0;
    item.poly_area = 1.0; // a third of the mean
    draw();
    EXPECT_EQ(size_change_x, 0.7 * 0.5);
    item.poly_area = 6.0;
    draw();
    EXPECT_EQ(size_change_x, 1.0);
    par.dep_power = 0.0;
    draw();
    EXPECT_EQ(size_change_x, 0.0) << "every clone is a point";
    par.dep_power = 1.0;
    item.poly_area = 3.0;
    draw();
    EXPECT_EQ(size_change_x, 1.0) << "an average polygon keeps the size";
    par.size_indep = 1;
    item.poly_area = 6.0;
    draw();
    EXPECT_EQ(size_change_x, 2.0);
    EXPECT_EQ(size_change_y, 2.0);
    EXPECT_EQ(size_change_z, 2.0);
}

TEST_F(ClonedPoint, TheAreaFactorNeedsASwitchOfExactlyOne)
{
    poly_avg_area = 3.0;
    item.poly_area = 9.0;
    for (const int value : {0, 2, -1}) {
        par.size_poly_area = value;
        draw();
        EXPECT_EQ(size_change_x, 1.0);
    }
}

TEST_F(ClonedPoint, TheMorphNumberRunsFromOneToOneMoreThanAsked)
{
    par.auto_morph_maps = 1;
    int count[4] = {};
    for (int i = 0; i < 4000; ++i) {
        draw();
        ASSERT_TRUE(morph_map_num == 1 || morph_map_num == 2) << morph_map_num;
        ++count[morph_map_num];
    }
    EXPECT_NEAR(count[1], 2000, 150);
    par.auto_morph_maps = 2;
    std::fill(count, count + 4, 0);
    for (int i = 0; i < 4000; ++i) {
        draw();
        ASSERT_TRUE(morph_map_num >= 1 && morph_map_num <= 3) << morph_map_num;
        ++count[morph_map_num];
    }
    EXPECT_NEAR(count[1], 1000, 150);
    EXPECT_NEAR(count[2], 2000, 150);
    EXPECT_NEAR(count[3], 1000, 150);
}

TEST_F(ClonedPoint, TheMorphNumberKeepsItsLastValueWithoutADraw)
{
    morph_map_num = 3;
    draw();
    EXPECT_EQ(morph_map_num, 3);
    EXPECT_EQ(draws_since(1, losoj), 0);
}

TEST_F(ClonedPoint, ANegativeMorphSettingDrawsAsItStands)
{
    par.auto_morph_maps = -3;
    random beside;
    beside.randomize(1);
    for (int i = 0; i < 200; ++i) {
        draw();
        ASSERT_EQ(morph_map_num, beside.z_zakresu(-3, 0) + 1);
        ASSERT_TRUE(morph_map_num >= -1 && morph_map_num <= 1) << morph_map_num;
    }
}

} // namespace
} // namespace dastrel
