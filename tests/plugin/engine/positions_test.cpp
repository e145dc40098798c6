// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <memory>

#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/geometry/LW6-face.h"
#include "plugin/weights/LW6-weight.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

/// The layout as texts, one line for each position.
Lines layout()
{
    Lines lines;
    for (const pos_typ* node : positions())
        lines.push_back(std::to_string(node->poly) + " " + text(node->pos) + " " +
                        support::number(node->norm_h) + " " + support::number(node->norm_p) + " " +
                        support::number(node->poly_area));
    return lines;
}

class Positions : public ModuleTest {
protected:
    Positions() : maps(nullptr)
    {
        maps.add_edit(edit);
        par.h_align = par.p_align = 0;
    }

    /// A weight map with the same value at all points.
    void add_map(const char* name, float value)
    {
        support::HostMap map{LWVMAP_WGHT, name, {}};
        for (int i = 0; i < static_cast<int>(host.points.size()); ++i)
            map.values[i] = {value};
        host.maps.push_back(map);
    }

    void read_maps() { const std::unique_ptr<char*[]> list(maps.get_list(objfunc)); }

    Lines place(weight_map* wm = nullptr)
    {
        scan();
        set_positions(wm, &par);
        return layout();
    }

    weight_map maps;
};

TEST_F(Positions, OfNoClonesAreNone)
{
    add_ground();
    par.clone_num = 0;
    EXPECT_EQ(place(), Lines{});
    EXPECT_EQ(pos_list, nullptr);
    EXPECT_EQ(host.calls, (Lines{"monitor create(\"Please wait\", \"Randomising positions...\")",
                                 "monitor init(0)", "monitor done", "monitor destroy"}));
}

TEST_F(Positions, OfANegativeNumberOfClonesAreNone)
{
    add_ground();
    par.clone_num = -4;
    EXPECT_EQ(place(), Lines{});
    EXPECT_EQ(host.calls_to("monitor init"), Lines{"monitor init(-4)"});
}

TEST_F(Positions, ShowTheirProgressAndDoNotHeedTheWishToStop)
{
    add_ground();
    par.clone_num = 2;
    host.asks_to_stop = true;
    EXPECT_EQ(place().size(), 2U);
    EXPECT_EQ(host.calls, (Lines{"monitor create(\"Please wait\", \"Randomising positions...\")",
                                 "monitor init(2)", "monitor step(1)", "monitor step(1)",
                                 "monitor done", "monitor destroy"}));
}

TEST_F(Positions, DoWithoutAMonitorOrItsService)
{
    add_ground();
    par.clone_num = 5;
    const Lines expected = place();
    host.gives_monitor = false;
    EXPECT_EQ(place(), expected);
    EXPECT_EQ(host.calls.size(), 1U);
    monf = nullptr;
    EXPECT_EQ(place(), expected);
    EXPECT_EQ(host.calls, Lines{});
}

TEST_F(Positions, SetTheMeanArea)
{
    add_ground();
    host.add_polygon(Side::foreground, {{0, 0, 0}, {3, 0, 0}, {3, 0, 4}});
    par.clone_num = 0;
    (void)place();
    EXPECT_NEAR(poly_avg_area, 3.5, 1e-12);
}

TEST_F(Positions, WithoutIterationsAreTheFirstCandidates)
{
    add_ground();
    par.clone_num = 40;
    par.iterations = 0;
    par.distribution = 1e9; // would reject, if anything were tested
    random sampler;
    sampler.fixed(par.seed);
    std::vector<XYZ6_typ> expected;
    for (int i = 0; i < 40; ++i) {
        const double u = sampler.get();
        expected.emplace_back(u, 0.0, sampler.get());
    }
    std::stable_sort(expected.begin(), expected.end(),
                     [](const XYZ6_typ& a, const XYZ6_typ& b) { return a.x() < b.x(); });
    (void)place();
    const auto nodes = positions();
    ASSERT_EQ(nodes.size(), 40U);
    for (std::size_t i = 0; i < 40; ++i)
        expect_near(nodes[i]->pos, expected[i].x(), 0, expected[i].z(), 1e-15);
}

TEST_F(Positions, NegativeIterationsTestNothingEither)
{
    add_ground();
    par.distribution = 1e9;
    par.iterations = 0;
    const Lines expected = place();
    par.iterations = -3;
    EXPECT_EQ(place(), expected);
}

TEST_F(Positions, TakeTheCandidateAfterTheLastTestedOneUntested)
{
    add_ground();
    par.clone_num = 2;
    par.iterations = 3;
    par.distribution = 1e9;
    random sampler;
    sampler.fixed(par.seed);
    std::vector<XYZ6_typ> candidates;
    for (int i = 0; i < 5; ++i) {
        const double u = sampler.get();
        candidates.emplace_back(u, 0.0, sampler.get());
    }
    (void)place();
    // The first clone finds nothing in its way; the second is rejected three times.
    const XYZ6_typ first = candidates[0];
    const XYZ6_typ second = candidates[4];
    const auto nodes = positions();
    const bool in_order = first.x() < second.x();
    expect_near(nodes[in_order ? 0 : 1]->pos, first.x(), 0, first.z(), 1e-15);
    expect_near(nodes[in_order ? 1 : 0]->pos, second.x(), 0, second.z(), 1e-15);
}

TEST_F(Positions, ShrinkTheSpacingFromTryToTry)
{
    add_ground();
    par.clone_num = 2;
    par.iterations = 4;
    const double spacing = 1.1 * std::sqrt(1.0 / 2); // most tries decide
    par.distribution = 1.1;
    int later_tries = 0;
    for (par.seed = 1; par.seed <= 200; ++par.seed) {
        random sampler;
        sampler.fixed(par.seed);
        const auto next = [&sampler] {
            const double u = sampler.get();
            return XYZ6_typ(u, 0.0, sampler.get());
        };
        const XYZ6_typ first = next();
        XYZ6_typ second = next();
        int t = 1;
        for (; t <= 4 && second.calc_distance(first) < spacing / (t / 4.0 + 1.0); ++t)
            second = next();
        later_tries += t > 1 && t <= 4 ? 1 : 0;
        (void)place();
        const auto nodes = positions();
        const XYZ6_typ made = nodes[first.x() < second.x() ? 1 : 0]->pos;
        expect_near(made, second.x(), 0, second.z(), 1e-15);
    }
    EXPECT_GT(later_tries, 20) << "the shrinking was put to the test";
}

TEST_F(Positions, KeepTheirSpacingWhileThereIsRoom)
{
    add_ground();
    par.clone_num = 10;
    par.iterations = 10000;
    par.distribution = 0.5;
    (void)place();
    const auto nodes = positions();
    const double least = 0.5 * std::sqrt(1.0 / 10) / 2;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_GE(nodes[i]->pos.calc_distance(nodes[j]->pos), least);
}

TEST_F(Positions, WithoutDistributionAreNeverRejectedForTheirDistance)
{
    add_ground();
    par.distribution = 0.0;
    par.iterations = 15;
    const Lines tested = place();
    par.iterations = 0;
    EXPECT_EQ(place(), tested);
}

TEST_F(Positions, OnOnePolygonAreAllOnIt)
{
    add_ground();
    (void)place();
    for (const pos_typ* node : positions())
        EXPECT_EQ(node->poly, 0);
}

TEST_F(Positions, FallHalfAsOftenOnTheFirstAndTheLastPolygon)
{
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        add_ground(x);
    par.clone_num = 6000;
    par.iterations = 0;
    (void)place();
    int count[4] = {};
    for (const pos_typ* node : positions()) {
        ++count[node->poly];
        EXPECT_GE(node->pos.x(), node->poly * 10.0);
        EXPECT_LE(node->pos.x(), node->poly * 10.0 + 1);
    }
    EXPECT_NEAR(count[0], 1000, 120);
    EXPECT_NEAR(count[1], 2000, 150);
    EXPECT_NEAR(count[2], 2000, 150);
    EXPECT_NEAR(count[3], 1000, 120);
}

TEST_F(Positions, DependOnTheSeedWithoutItsSign)
{
    add_ground();
    add_ground(3);
    par.seed = 7;
    const Lines seven = place();
    losoj.randomize(99);
    EXPECT_EQ(place(), seven) << "the run's own sampler does not matter";
    par.seed = -7;
    EXPECT_EQ(place(), seven);
    par.seed = 8;
    EXPECT_NE(place(), seven);
    par.seed = 0;
    const Lines zero = place();
    par.seed = 4357;
    EXPECT_EQ(place(), zero);
}

TEST_F(Positions, TakeNothingFromTheRunsSamplerWithoutADensityMap)
{
    add_ground();
    (void)place();
    EXPECT_EQ(draws_since(1, losoj), 0);
}

TEST_F(Positions, WithADensityMapVaryWithTheRunsSampler)
{
    add_ground();
    add_map("Grass", -0.7F);
    read_maps();
    par.density_wg = 1;
    const Lines first = place(&maps);
    EXPECT_GT(draws_since(1, losoj), 0);
    losoj.randomize(2);
    EXPECT_NE(place(&maps), first);
    losoj.randomize(1);
    EXPECT_EQ(place(&maps), first);
}

TEST_F(Positions, OnAForbiddingWeightAreTakenAfterAllTries)
{
    add_ground();
    add_map("Grass", -0.8F);
    read_maps();
    par.density_wg = 1;
    par.clone_num = 3;
    par.iterations = 2;
    random sampler;
    sampler.fixed(par.seed);
    std::vector<double> columns;
    for (int i = 1; i <= 9; ++i) {
        const double u = sampler.get();
        (void)sampler.get();
        if (i % 3 == 0) // the third candidate of each clone
            columns.push_back(u);
    }
    std::sort(columns.begin(), columns.end());
    (void)place(&maps);
    const auto nodes = positions();
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(nodes[i]->pos.x(), columns[i], 1e-15);
    EXPECT_EQ(draws_since(1, losoj), 0) << "rejected before the draw";
}

TEST_F(Positions, ADensitySettingWithoutAReaderCountsAsWeightZero)
{
    add_ground();
    par.density_wg = 1;
    par.clone_num = 1;
    par.iterations = 1;
    (void)place(nullptr);
    EXPECT_EQ(draws_since(1, losoj), 1);
}

TEST_F(Positions, ReadTheDensityOfEachCandidateWithTheMapsName)
{
    add_ground();
    add_map("Grass", 0.0F);
    read_maps();
    par.density_wg = 1;
    par.clone_num = 1;
    par.iterations = 0;
    monf = nullptr;
    (void)place(&maps);
    EXPECT_EQ(host.calls,
              (Lines{"pointVSet(null, WGHT, \"Grass\")", "polyInfo(polygon 0)", "pointInfo(p0)",
                     "pointInfo(p1)", "pointInfo(p2)", "pointInfo(p3)"}));
}

TEST_F(Positions, ADensityIndexWithoutAMapCountsAsFullWeight)
{
    add_ground();
    add_map("Grass", -1.0F);
    read_maps();
    par.clone_num = 1;
    par.iterations = 1;
    par.density_wg = 7; // the map it named is gone
    (void)place(&maps);
    random beside;
    beside.randomize(1);
    (void)beside.z_zakresu(1, 200);
    EXPECT_EQ(draws_since(1, losoj), 1);
    EXPECT_EQ(host.calls_to("pointVSet"), Lines{});
}

TEST_F(Positions, KeepTheAreaOnlyWhenSizeDependsOnIt)
{
    add_ground();
    par.size_poly_area = 1;
    (void)place();
    for (const pos_typ* node : positions())
        EXPECT_NEAR(node->poly_area, 1.0, 1e-12);
    par.size_poly_area = 2;
    (void)place();
    for (const pos_typ* node : positions())
        EXPECT_EQ(node->poly_area, 0.0);
}

TEST_F(Positions, ReplaceThoseOfAnEarlierCall)
{
    add_ground();
    par.clone_num = 5;
    (void)place();
    EXPECT_EQ(positions().size(), 5U);
    (void)place();
    EXPECT_EQ(positions().size(), 5U);
}

} // namespace
} // namespace dastrel
