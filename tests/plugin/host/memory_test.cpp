// SPDX-License-Identifier: MIT
// What a run allocates it releases, whatever comes in between.
#include <new>

#include "tests/plugin/module_test.h"
#include "tests/support/allocations.h"

namespace dastrel {
namespace {

class Memory : public ModuleTest {
protected:
    Memory()
    {
        add_ground();
        add_ground(2);
        add_model();
        add_model();
        add_maps(LWVMAP_TXUV, {1, 2});
        add_maps(LWVMAP_WGHT, {1});
        add_maps(LWVMAP_MORF, {1, 2, 3});
        add_maps(LWVMAP_MNVW, {1});
        add_maps(LWVMAP_SPOT, {1, 2, 3});
        par.clone_num = 4;
        par.iterations = 3;
        par.size_wg = 1;
        par.density_wg = 2;
        par.p_angle_wg = 3;
        par.auto_morph_maps = 2;
        par.jitter = 0.1;
        par.size_indep = 1;
    }

    /// Three maps that two points have this value in.
    void add_maps(LWID type, const std::vector<float>& value)
    {
        for (const char* name : {"One", "Two", "Three"})
            host.maps.push_back({type, name, {{0, value}, {9, value}}});
    }

    void expect_balance()
    {
        support::reset_allocations();
        EXPECT_EQ(run(), 0);
        EXPECT_GT(support::allocations().made, 0U);
        EXPECT_EQ(support::allocations().made, support::allocations().freed);
    }

    /// What a run of the module as it is after loading adds to the mesh and writes to maps.
    struct Outcome {
        std::vector<std::array<double, 3>> points;
        std::map<support::MapKey, support::MapValues> written;

        bool operator==(const Outcome&) const = default;
    };

    Outcome fresh_outcome()
    {
        losoj.randomize(1);
        morph_map_num = 0;
        host.forget();
        EXPECT_EQ(run(), 0);
        EXPECT_EQ(host.done_codes, std::vector<int>{0});
        return {host.added_points, host.written};
    }
};

TEST_F(Memory, IsReleasedAfterARun) { expect_balance(); }

TEST_F(Memory, IsReleasedAfterEachOfManyRunsInOneLoad)
{
    for (int i = 0; i < 20; ++i) {
        host.forget();
        par.clone_num = i;
        expect_balance();
    }
}

TEST_F(Memory, IsReleasedAfterCancel)
{
    host.user = [](RecordingHost&) { return 0; };
    expect_balance();
    expect_run_state_released();
}

TEST_F(Memory, IsReleasedWithoutAPanel)
{
    host.gives_panel = false;
    expect_balance();
}

TEST_F(Memory, IsReleasedAfterTheSlopeRefusal)
{
    par.slope_limits = 1;
    par.slope_min = 1.0;
    expect_balance();
    EXPECT_EQ(host.calls_to("error").size(), 1U);
    expect_run_state_released();
}

TEST_F(Memory, IsTakenForSizeWeightsOnlyWithAChoiceAboveZero)
{
    const auto made_with = [this](int choice) {
        host.forget();
        losoj.randomize(1);
        par.size_wg = choice;
        expect_balance();
        return support::allocations().made;
    };
    EXPECT_EQ(made_with(-1), made_with(0));
    EXPECT_EQ(made_with(1), made_with(0) + 1);
}

TEST_F(Memory, IsNotTakenByEarlyRefusals)
{
    host.polygons.clear();
    support::reset_allocations();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(support::allocations().made, 0U);
}

TEST_F(Memory, IsReleasedWhenTheNumberOfClonesShrinksBetweenRuns)
{
    par.clone_num = 40;
    expect_balance();
    host.forget();
    host.user = [](RecordingHost& h) {
        h.panel_values[0x8002] = 2;
        return 1;
    };
    expect_balance();
    EXPECT_EQ(pos_list, nullptr);
}

TEST_F(Memory, ThatRunsOutAnywhereLeavesNothingBehind)
{
    host.recording = false;
    const Outcome expected = fresh_outcome();
    ASSERT_GT(expected.points.size(), 0U);
    support::reset_allocations();
    losoj.randomize(1);
    host.forget();
    ASSERT_EQ(run(), 0);
    const std::size_t all = support::allocations().made;
    ASSERT_GT(all, 50U);
    for (std::size_t k = 1; k <= all; ++k) {
        losoj.randomize(1);
        morph_map_num = 0;
        host.forget();
        support::fail_allocation(k);
        EXPECT_THROW((void)run(), std::bad_alloc) << "allocation " << k;
        ASSERT_EQ(support::allocations().made, support::allocations().freed) << "allocation " << k;
        expect_run_state_released();
        EXPECT_EQ(host.done_codes, std::vector<int>{}) << "the host drops the edit";
        EXPECT_EQ(host.open_monitors, 0);
        EXPECT_EQ(host.open_panels, 0);
        ASSERT_EQ(host.violations, Lines{});
        if (k % 10 == 0 || k == all) {
            EXPECT_TRUE(fresh_outcome() == expected) << "after allocation " << k << " failed";
        }
    }
}

} // namespace
} // namespace dastrel
