// SPDX-License-Identifier: MIT
#include <limits>

#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "tests/plugin/module_test.h"
#include "tests/plugin/random/ends.h"

namespace dastrel {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double two_to_53 = 9007199254740992.0;

class PositionList : public ModuleTest {
protected:
    PositionList() { par.clone_num = 100; }

    bool accepted(XYZ6_typ pos, double spacing, double area = 0.0, double weight = 0.0)
    {
        return check_pos(&par, &pos, area, weight, spacing);
    }

    /// Whether a clone at this distance from the only other one is accepted.
    bool accepted_at(double distance, double spacing, double area = 0.0, double weight = 0.0)
    {
        discard_positions();
        add_item(XYZ6_typ(0, 0, 0));
        return accepted(XYZ6_typ(0, 0, distance), spacing, area, weight);
    }

    /// Accepts at a distance just above `limit` and rejects at one just below.
    void expect_limit(double limit, double spacing, double area = 0.0, double weight = 0.0)
    {
        const auto let_pass = [] { // the draw that thins by density
            if (par.density_wg != 0)
                let_next_be(losoj, {1.0});
        };
        let_pass();
        EXPECT_TRUE(accepted_at(limit * 1.000001, spacing, area, weight)) << limit;
        let_pass();
        EXPECT_FALSE(accepted_at(limit * 0.999999, spacing, area, weight)) << limit;
    }
};

TEST_F(PositionList, KeepsAscendingXAndTheOrderOfArrivalOfEqualOnes)
{
    int number = 0;
    for (const double x : {5.0, 1.0, 3.0, 1.0, 5.0, 3.0, 0.0, 1.0}) {
        pos_typ* const node = add_item(XYZ6_typ(x, 0, number));
        EXPECT_EQ(node->pos.z(), number);
        ++number;
    }
    std::string order;
    for (const pos_typ* node : positions())
        order += support::number(node->pos.x()) + "/" + support::number(node->pos.z()) + " ";
    EXPECT_EQ(order, "0/6 1/1 1/3 1/7 3/2 3/5 5/0 5/4 ");
}

TEST_F(PositionList, ANewNodeIsZeroButForItsPlace)
{
    const pos_typ* const node = add_item(XYZ6_typ(1, 2, 3));
    expect_equal(node->pos, 1, 2, 3);
    EXPECT_EQ(node->poly, 0);
    EXPECT_EQ(node->norm_h, 0.0);
    EXPECT_EQ(node->norm_p, 0.0);
    EXPECT_EQ(node->poly_area, 0.0);
    EXPECT_EQ(node->next, nullptr);
    EXPECT_EQ(node, pos_list);
}

TEST_F(PositionList, ANonNumberGoesToTheEndAndEverythingLaterBehindIt)
{
    add_item(XYZ6_typ(1, 0, 0));
    add_item(XYZ6_typ(infinity - infinity, 0, 1));
    add_item(XYZ6_typ(5, 0, 2));
    add_item(XYZ6_typ(0, 0, 3));
    std::string order;
    for (const pos_typ* node : positions())
        order += support::number(node->pos.z()) + " ";
    EXPECT_EQ(order, "3 0 1 2 ");
}

TEST_F(PositionList, AnythingIsAcceptedWhenThereIsNothingYet)
{
    EXPECT_TRUE(accepted(XYZ6_typ(), 1e9));
}

TEST_F(PositionList, ASpacingOfZeroNeverRejects)
{
    EXPECT_TRUE(accepted_at(0.0, 0.0));
    EXPECT_FALSE(accepted_at(0.0, 1e-300));
}

TEST_F(PositionList, ADistanceOfExactlyTheSpacingIsAccepted)
{
    EXPECT_TRUE(accepted_at(1.0, 1.0));
    EXPECT_FALSE(accepted_at(1.0, 1.0000001));
    add_item(XYZ6_typ(10, 0, 0));
    EXPECT_TRUE(accepted(XYZ6_typ(11, 0, 0), 1.0));
    EXPECT_TRUE(accepted(XYZ6_typ(9, 0, 0), 1.0));
}

TEST_F(PositionList, ANodeAtExactlyTheLowerXIsSkipped)
{
    add_item(XYZ6_typ(1e16, 0, 0));
    ASSERT_EQ(1e16 - 0.9, 1e16);
    EXPECT_TRUE(accepted(XYZ6_typ(1e16, 0, 0), 0.9)) << "rounding hides the overlap";
}

TEST_F(PositionList, ANodeAtExactlyTheUpperXIsStillExamined)
{
    add_item(XYZ6_typ(two_to_53, 0, 0));
    ASSERT_EQ(two_to_53 + 0.9, two_to_53);
    ASSERT_LT(two_to_53 - 0.9, two_to_53);
    EXPECT_FALSE(accepted(XYZ6_typ(two_to_53, 0, 0), 0.9));
}

TEST_F(PositionList, TheSearchStopsAtTheFirstNodeThatIsTooFarInX)
{
    add_item(XYZ6_typ(0, 0, 0))->next = nullptr;
    pos_list->pos = XYZ6_typ(5, 0, 0);
    pos_typ* const behind = new pos_typ; // out of order on purpose: nobody may look at it
    pos_list->next = behind;
    EXPECT_TRUE(accepted(XYZ6_typ(), 1.0));
    pos_list->pos = XYZ6_typ(-5, 0, 0);
    EXPECT_FALSE(accepted(XYZ6_typ(), 1.0));
}

TEST_F(PositionList, MeasuresInThreeDimensions)
{
    add_item(XYZ6_typ(1, 2, 2));
    EXPECT_TRUE(accepted(XYZ6_typ(), 3.0));
    EXPECT_FALSE(accepted(XYZ6_typ(), 3.001));
}

TEST_F(PositionList, SmallPolygonsLetClonesStandCloserDownToHalf)
{
    par.size_poly_area = 1;
    poly_avg_area = 4.0;
    expect_limit(0.5, 1.0, 1.0); // a quarter: no less than half the spacing
    expect_limit(0.5, 1.0, 2.0);
    expect_limit(0.75, 1.0, 3.0);
    expect_limit(1.0, 1.0, 4.0);
    expect_limit(1.0, 1.0, 9.0); // no more on large ones
}

TEST_F(PositionList, AreasCountOnlyWhenTheSwitchIsExactlyOne)
{
    poly_avg_area = 4.0;
    for (const int value : {0, 2, -1}) {
        par.size_poly_area = value;
        expect_limit(1.0, 1.0, 1.0);
    }
}

TEST_F(PositionList, WeightsPackAboveAndSpreadBelowZero)
{
    par.density_wg = 1;
    expect_limit(1.0 / 3.5, 1.0, 0.0, 0.5);
    expect_limit(1.0 / 6.0, 1.0, 0.0, 1.0);
    expect_limit(3.5, 1.0, 0.0, -0.5);
    expect_limit(1.0, 1.0, 0.0, 0.0);
    expect_limit(1.0, 1.0, 0.0, 0.01); // a weight of one percent changes nothing
    expect_limit(1.0, 1.0, 0.0, -0.01);
    expect_limit(1.0 / (2.0 / 20 + 1), 1.0, 0.0, 0.02);
    expect_limit(2.0 / 20 + 1, 1.0, 0.0, -0.02);
}

TEST_F(PositionList, AreaAndWeightActTogether)
{
    par.size_poly_area = 1;
    par.density_wg = 1;
    poly_avg_area = 4.0;
    expect_limit(0.75 * 3.5, 1.0, 3.0, -0.5);
}

TEST_F(PositionList, AWeightOfMinusPointEightOrLessRejectsWithoutADraw)
{
    par.density_wg = 1;
    for (const double weight : {-0.8, -0.9, -1.0, -5.0}) {
        EXPECT_FALSE(accepted(XYZ6_typ(), 0.0, 0.0, weight));
        EXPECT_EQ(draws_since(1, losoj), 0) << weight;
    }
    EXPECT_EQ(-0.79 * 100 + 100, 21.0);
    let_next_be(losoj, {1.0});
    EXPECT_TRUE(accepted(XYZ6_typ(), 0.0, 0.0, -0.79));
}

TEST_F(PositionList, ADrawOfFourOrLessRejects)
{
    par.density_wg = 1;
    random beside;
    beside.randomize(1);
    int rejected = 0;
    for (int i = 0; i < 5000; ++i) {
        const bool expected = beside.z_zakresu(1, 100) > 4;
        ASSERT_EQ(accepted(XYZ6_typ(), 0.0, 0.0, 0.0), expected) << i;
        rejected += expected ? 0 : 1;
    }
    EXPECT_NEAR(rejected, 5000 * 0.035, 40);
}

TEST_F(PositionList, TheRangeOfTheDrawIsTheWeightCutTowardsZero)
{
    par.density_wg = 1;
    random beside;
    beside.randomize(1);
    int rejected = 0;
    for (int i = 0; i < 5000; ++i) {
        const bool expected = beside.z_zakresu(1, 50) > 4; // -0.491 * 100 + 100 is 50.9
        ASSERT_EQ(accepted(XYZ6_typ(), 0.0, 0.0, -0.491), expected) << i;
        rejected += expected ? 0 : 1;
    }
    EXPECT_NEAR(rejected, 5000 * 0.07, 60);
}

TEST_F(PositionList, AWeightThatIsNoNumberOrTooLargeRejectsAfterADraw)
{
    par.density_wg = 1;
    EXPECT_FALSE(accepted(XYZ6_typ(), 0.0, 0.0, infinity - infinity));
    EXPECT_EQ(draws_since(1, losoj), 1);
    // its hundredfold does not fit an int: it becomes the most negative one
    let_next_be(losoj, {0.0});
    EXPECT_FALSE(accepted(XYZ6_typ(), 0.0, 0.0, 1e9));
}

TEST_F(PositionList, AnyDensitySettingButZeroActs)
{
    par.density_wg = -1;
    EXPECT_FALSE(accepted(XYZ6_typ(), 0.0, 0.0, -1.0));
    par.density_wg = 2;
    EXPECT_FALSE(accepted(XYZ6_typ(), 0.0, 0.0, -1.0));
    par.density_wg = 0;
    EXPECT_TRUE(accepted(XYZ6_typ(), 0.0, 0.0, -1.0));
    EXPECT_EQ(draws_since(1, losoj), 0);
}

} // namespace
} // namespace dastrel
