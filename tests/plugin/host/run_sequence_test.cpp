// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>

#include "tests/plugin/host/run_test.h"

namespace dastrel {
namespace {

TEST_F(RunSequence, MakesAllItsCallsInOrder)
{
    add_ground();
    add_model();
    par.clone_num = 2;
    par.iterations = 0;
    host.scan_codes = {1, 2, 3, 4};
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(host.added_points.size(), 6U);
    const auto point = [this](int i) {
        const std::array<double, 3>& p = host.added_points[static_cast<std::size_t>(i)];
        return "addPoint(" + support::number(p[0]) + ", " + support::number(p[1]) + ", " +
               support::number(p[2]) + ") = n" + std::to_string(i);
    };
    const auto clone = [&point](int first, const std::string& index) {
        Lines lines = {"monitor step(1)", "polyScan(background)"};
        for (int i = 0; i < 3; ++i) {
            lines.push_back("pointInfo(p" + std::to_string(4 + i) + ")");
            lines.push_back(point(first + i));
            lines.push_back("pntVMap(n" + std::to_string(first + i) +
                            ", WGHT, \"DT_index\", 1: " + index + ")");
        }
        const auto n = [first](int i) { return " n" + std::to_string(first + i); };
        lines.push_back("addPoly(FACE, like polygon 1, null, 3:" + n(0) + n(1) + n(2) + ")");
        return lines;
    };
    EXPECT_EQ(
        calls(),
        joined({services,
                checks,
                lists_without_maps,
                panel_until_shown,
                {"panel destroy", "polyScan(foreground)", "polyNormal(polygon 0)", "pointInfo(p0)",
                 "pointInfo(p1)", "pointInfo(p2)", "pointInfo(p3)",
                 "monitor create(\"Please wait\", \"Randomising positions...\")", "monitor init(2)",
                 "monitor step(1)", "monitor step(1)", "monitor done", "monitor destroy",
                 "pointCount(background, all)", "numVMaps(TXUV)",
                 "monitor create(\"Hello\", \"Randomising positions...\")", "monitor init(2)"},
                clone(0, "0"),
                clone(3, "0.5"),
                {"monitor done", "monitor destroy", "done(2, 0)"}}));
    EXPECT_EQ(host.open_panels, 0);
    EXPECT_EQ(host.open_monitors, 0);
    expect_run_state_released();
}

TEST_F(RunSequence, ReadsThePanelBeforeItIsDestroyed)
{
    add_ground();
    add_model();
    EXPECT_EQ(run(), 0);
    const auto at = [this](const std::string& call) {
        return std::find(host.calls.begin(), host.calls.end(), call) - host.calls.begin();
    };
    EXPECT_LT(at("panel post"), at("formGet(0x8002)"));
    EXPECT_LT(at("formGet(0x8022)"), at("panel destroy"));
    EXPECT_EQ(host.calls_to("formGet").size(), 28U);
}

TEST_F(RunSequence, ListsTheMapsBeforeThePanelAndTheTextureMapsOnceMore)
{
    add_ground();
    add_model();
    for (const LWID type : {LWVMAP_SPOT, LWVMAP_MNVW, LWVMAP_MORF, LWVMAP_WGHT, LWVMAP_TXUV})
        host.maps.push_back({type, "One", {}});
    host.maps.push_back({LWVMAP_TXUV, "Two", {}});
    par.clone_num = 0;
    EXPECT_EQ(run(), 0);
    Lines asked;
    for (const std::string& call : host.calls)
        if (call.compare(0, 8, "numVMaps") == 0 || call.compare(0, 8, "vmapName") == 0 ||
            call == "panel create(1)" || call.compare(0, 7, "monitor") == 0)
            asked.push_back(call);
    EXPECT_EQ(asked, (Lines{"numVMaps(WGHT)",
                            "vmapName(WGHT, 0)",
                            "vmapName(WGHT, 0)",
                            "numVMaps(TXUV)",
                            "vmapName(TXUV, 0)",
                            "vmapName(TXUV, 1)",
                            "numVMaps(WGHT)",
                            "vmapName(WGHT, 0)",
                            "numVMaps(MORF)",
                            "vmapName(MORF, 0)",
                            "numVMaps(MNVW)",
                            "vmapName(MNVW, 0)",
                            "numVMaps(SPOT)",
                            "vmapName(SPOT, 0)",
                            "panel create(1)",
                            "monitor create(\"Please wait\", \"Randomising positions...\")",
                            "monitor init(0)",
                            "monitor done",
                            "monitor destroy",
                            "numVMaps(TXUV)",
                            "vmapName(TXUV, 0)",
                            "vmapName(TXUV, 1)",
                            "monitor create(\"Hello\", \"Randomising positions...\")",
                            "monitor init(0)",
                            "monitor done",
                            "monitor destroy"}));
}

TEST_F(RunSequence, ComputesSizeWeightsBetweenTheScanAndThePositions)
{
    add_ground();
    add_model();
    host.maps.push_back({LWVMAP_WGHT, "Grass", {{0, {1.0F}}}});
    par.clone_num = 0;
    for (const int choice : {-1, 0, 1}) {
        par.size_wg = choice;
        host.forget();
        EXPECT_EQ(run(), 0);
        EXPECT_EQ(host.calls_to("pointVSet").size(), choice > 0 ? 1U : 0U) << choice;
    }
    const auto set =
        std::find(host.calls.begin(), host.calls.end(), "pointVSet(null, WGHT, \"Grass\")");
    const auto scanned = std::find(host.calls.begin(), host.calls.end(), "pointInfo(p3)");
    EXPECT_LT(scanned, set);
    EXPECT_LT(set, std::find(host.calls.begin(), host.calls.end(),
                             "monitor create(\"Please wait\", \"Randomising positions...\")"));
}

TEST_F(RunSequence, DoesNotHeedTheWishToStop)
{
    add_ground();
    add_model();
    par.clone_num = 5;
    host.asks_to_stop = true;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.added_polygons.size(), 5U);
    EXPECT_EQ(host.calls_to("monitor step").size(), 10U);
}

TEST_F(RunSequence, OfNoClonesStillShowsBothMonitors)
{
    add_ground();
    add_model();
    for (const int number : {0, -3}) {
        host.forget();
        par.clone_num = number;
        EXPECT_EQ(run(), 0);
        EXPECT_EQ(host.calls_to("monitor init"),
                  (Lines(2, "monitor init(" + std::to_string(number) + ")")));
        EXPECT_EQ(host.calls_to("monitor step"), Lines{});
        EXPECT_EQ(host.calls_to("monitor destroy").size(), 2U);
        EXPECT_EQ(host.added_points.size(), 0U);
    }
}

TEST_F(RunSequence, DoesWithoutMessagesAndMonitors)
{
    add_model();
    host.gives_messages = false;
    host.gives_monitors = false;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls.back(), "done(0, 0)");
    add_ground();
    host.forget();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.added_polygons.size(), 1U);
    host.gives_monitors = true;
    host.gives_monitor = false;
    host.forget();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.added_polygons.size(), 1U);
    EXPECT_EQ(host.calls_to("monitor").size(), 2U);
}

TEST_F(RunSequence, MakesTheClonesInAscendingXAndNumbersThem)
{
    add_ground();
    host.add_polygon(Side::background, {{0, 0, 0}});
    par.clone_num = 20;
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(host.added_points.size(), 20U);
    const auto& index = host.written[{LWVMAP_WGHT, "DT_index"}];
    for (int i = 0; i < 20; ++i) {
        if (i > 0) {
            EXPECT_LE(host.added_points[static_cast<std::size_t>(i) - 1][0],
                      host.added_points[static_cast<std::size_t>(i)][0]);
        }
        EXPECT_EQ(index.at(i)[0], static_cast<float>(i) / 20.0F);
    }
    EXPECT_EQ(par.akt_clone, 19);
}

TEST_F(RunSequence, NothingStandsOnAPatchBesideAFace)
{
    add_ground();
    host.polygons[static_cast<std::size_t>(add_ground(5))].type = LWPOLTYPE_PTCH;
    add_model();
    par.clone_num = 30;
    EXPECT_EQ(run(), 0);
    for (const std::array<double, 3>& p : host.added_points)
        EXPECT_LT(p[0], 3.0) << "nothing stands on the patch";
    EXPECT_EQ(host.added_polygons.size(), 30U);
}

TEST_F(RunSequence, TheSamplerGoesOnFromRunToRun)
{
    add_ground();
    add_model();
    par.size_var_x = 0.5;
    EXPECT_EQ(run(), 0);
    const double first = size_change_x;
    EXPECT_EQ(draws_since(1, losoj), 1);
    host.forget();
    EXPECT_EQ(run(), 0);
    EXPECT_NE(size_change_x, first);
    EXPECT_EQ(draws_since(1, losoj), 2);
}

} // namespace
} // namespace dastrel
