// SPDX-License-Identifier: MIT
#include "tests/plugin/host/run_test.h"

namespace dastrel {
namespace {

using RunRefusals = RunSequence;

TEST_F(RunRefusals, WithoutAnEditEndsAtOnceWithThree)
{
    add_ground();
    add_model();
    host.gives_edit = false;
    EXPECT_EQ(run(), 3);
    EXPECT_EQ(host.calls, services);
    EXPECT_EQ(host.done_codes, std::vector<int>{});
}

TEST_F(RunRefusals, RefusesAForegroundWithoutPolygons)
{
    add_model();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls,
              joined({services,
                      {"polyCount(foreground, all)",
                       "error(\"Need some polys to clone on them\", null)", "done(0, 0)"}}));
}

TEST_F(RunRefusals, RefusesAForegroundWithoutFaces)
{
    host.polygons[static_cast<std::size_t>(add_ground())].type = LWPOLTYPE_PTCH;
    host.polygons[static_cast<std::size_t>(add_ground())].type = LWPOLTYPE_CURV;
    add_model();
    host.scan_codes = {5}; // not the code that this edit is finished with
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls, joined({services,
                                  {"polyCount(foreground, all)", "polyCount(foreground, selected)",
                                   "polyScan(foreground)",
                                   "error(\"SubDivs not supported in the foreground Layer\", null)",
                                   "done(0, 0)"}}));
}

TEST_F(RunRefusals, RefusesAForegroundWithNothingSelected)
{
    host.polygons[static_cast<std::size_t>(add_ground())].selected = false;
    add_model();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls_to("error"),
              Lines{"error(\"SubDivs not supported in the foreground Layer\", null)"});
    EXPECT_EQ(host.done_codes, std::vector<int>{0});
}

TEST_F(RunRefusals, RefusesABackgroundWithoutPoints)
{
    add_ground();
    host.scan_codes = {5};
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls,
              joined({services,
                      checks,
                      {"error(\"Need some geometry in the background layer(s) to clone\", null)",
                       "done(5, 0)"}}));
}

TEST_F(RunRefusals, WithoutPanelsEndsAsIfTheUserHadCancelled)
{
    add_ground();
    add_model();
    host.gives_panels = false;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.done_codes, std::vector<int>{0});
    EXPECT_TRUE(host.added_points.empty());
    EXPECT_EQ(host.violations, Lines{});
}

TEST_F(RunRefusals, WithoutAnyServiceEndsWithItsEditFinished)
{
    add_ground();
    add_model();
    host.gives_messages = host.gives_objects = host.gives_panels = host.gives_monitors = false;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.done_codes, std::vector<int>{0});
    EXPECT_TRUE(host.added_points.empty());
}

TEST_F(RunRefusals, WithoutSceneObjectsWorksAsInASceneWithoutMaps)
{
    add_ground();
    add_model();
    host.maps.push_back({LWVMAP_WGHT, "Grass", {{0, {1.0F}}}});
    host.gives_objects = false;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.choices, Lines{"none"});
    EXPECT_FALSE(host.added_points.empty());
    EXPECT_EQ(host.calls_to("pntVMap(").size(), host.added_points.size()); // DT_index alone
}

TEST_F(RunRefusals, TakesABackgroundOfPointsAlone)
{
    add_ground();
    host.points.push_back({{1, 2, 3}, Side::background});
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls_to("error"), Lines{});
    EXPECT_EQ(host.calls_to("panel post").size(), 1U);
    EXPECT_EQ(host.calls_to("polyScan(background)").size(), 1U);
    EXPECT_EQ(host.added_points.size(), 0U);
}

TEST_F(RunRefusals, OnCancelFinishesTheEditAndLeavesThePanel)
{
    add_ground();
    add_model();
    host.scan_codes = {7};
    host.user = [](RecordingHost&) { return 0; };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(calls(),
              joined({services, checks, lists_without_maps, panel_until_shown, {"done(7, 0)"}}));
    EXPECT_EQ(host.open_panels, 1) << "it is not destroyed here";
    expect_run_state_released();
}

TEST_F(RunRefusals, WithoutAPanelEndsAsIfCancelled)
{
    add_ground();
    add_model();
    host.gives_panel = false;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(calls(),
              joined({services, checks, lists_without_maps, {"panel create(1)", "done(0, 0)"}}));
    EXPECT_EQ(host.calls_to("formGet"), Lines{});
    expect_run_state_released();
}

TEST_F(RunRefusals, RefusesSlopeLimitsThatExcludeEverything)
{
    add_ground();
    add_model();
    host.scan_codes = {0, 9};
    host.user = [](RecordingHost& h) {
        h.panel_values[0x8016] = 1;
        h.panel_values[0x8014] = 1.0;
        return 1;
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(calls(), joined({services,
                               checks,
                               lists_without_maps,
                               panel_until_shown,
                               {"panel destroy", "polyScan(foreground)", "polyNormal(polygon 0)",
                                "error(\"Change slope angle settings\", "
                                "\"There are no valid polys to clone on.\")",
                                "done(9, 0)"}}));
    expect_run_state_released();
}

TEST_F(RunRefusals, RefusesAnEmptyScanOnlyWithSlopeLimits)
{
    add_ground();
    add_model();
    host.user = [](RecordingHost& h) {
        h.polygons[0].selected = false; // behind the back of the run
        h.panel_values[0x8002] = 0;
        return 1;
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls_to("error"), Lines{});
    EXPECT_EQ(host.calls_to("monitor create").size(), 2U);
}

TEST_F(RunRefusals, EndsWhereTheScanFailsBeforeItsFirstPolygon)
{
    add_ground();
    add_model();
    host.scan_codes = {0, EDERR_NOMEMORY};
    host.user = [](RecordingHost& h) {
        h.polygons[0].selected = false; // stands for a scan that gives none
        return 1;
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(calls(), joined({services,
                               checks,
                               lists_without_maps,
                               panel_until_shown,
                               {"panel destroy", "polyScan(foreground)", "done(1, 0)"}}));
    EXPECT_EQ(host.added_points.size(), 0U);
    expect_run_state_released();
}

} // namespace
} // namespace dastrel
