// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hostapi/messages.h"
#include "hostapi/monitor.h"
#include "hostapi/panel.h"
#include "hostapi/scene_objects.h"
#include "tests/modeler/session.h"
#include "tests/support/mesh_compare.h"

namespace {

using session::LoggingFrontEnd;
using session::run;
using session::sample_host;
using testing::ElementsAre;

template <typename Table> Table* fetch(GlobalFunc* global, const char* name)
{
    return static_cast<Table*>(global(name, GLOBAL_USE_TRANSIENT));
}

TEST(Services, AreFoundByTheirExactNamesOnly)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc* global, MeshEditBegin*) {
        for (const char* name :
             {"Info Messages 3", "Scene Objects 7", "LWXPanel 2", "LWM: Dynamic Monitor"})
            EXPECT_NE(global(name, GLOBAL_USE_TRANSIENT), nullptr) << name;
        for (const char* name : {"Info Messages 2", "info messages 3", "LWXPanel 2 ", "", "Scene"})
            EXPECT_EQ(global(name, GLOBAL_USE_TRANSIENT), nullptr) << name;
        EXPECT_EQ(global(nullptr, GLOBAL_USE_TRANSIENT), nullptr);
        EXPECT_EQ(global("LWXPanel 2", 1), nullptr) << "no other use is known";
        return 0;
    });
}

TEST(Services, EveryTableIsComplete)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc* global, MeshEditBegin*) {
        auto* const messages = fetch<LWMessageFuncs>(global, LWMESSAGEFUNCS_GLOBAL);
        EXPECT_TRUE(messages->info && messages->error && messages->yesNo);
        auto* const objects = fetch<LWObjectFuncs>(global, LWOBJECTFUNCS_GLOBAL);
        EXPECT_TRUE(objects->numVMaps && objects->vmapName);
        auto* const monitors = fetch<LWMonitorFuncs>(global, LWMONITORFUNCS_GLOBAL);
        EXPECT_TRUE(monitors->create && monitors->destroy);
        auto* const panels = fetch<LWXPanelFuncs>(global, LWXPANELFUNCS_GLOBAL);
        EXPECT_TRUE(panels->create && panels->describe && panels->hint && panels->formGet &&
                    panels->formSet && panels->post && panels->destroy);
        return 0;
    });
}

TEST(Messages, ReachTheFrontEndAndErrorsTheResult)
{
    modeler::Modeler host = sample_host();
    LoggingFrontEnd front_end;
    front_end.answer = false;
    const auto result = run(host, front_end, [](GlobalFunc* global, MeshEditBegin*) {
        auto* const messages = fetch<LWMessageFuncs>(global, LWMESSAGEFUNCS_GLOBAL);
        messages->info("one", nullptr);
        messages->error("two", "lines");
        messages->error("alone", nullptr);
        messages->error(nullptr, nullptr);
        EXPECT_EQ(messages->yesNo("Sure", "really", "all of it"), 0);
        return 0;
    });
    EXPECT_THAT(front_end.log, ElementsAre("info: one", "error: two / lines", "error: alone",
                                           "error: ", "ask Sure: really / all of it"));
    EXPECT_THAT(result.errors, ElementsAre(modeler::Message{"two", "lines"},
                                           modeler::Message{"alone", ""}, modeler::Message{}));
    front_end.answer = true;
    run(host, front_end, [](GlobalFunc* global, MeshEditBegin*) {
        EXPECT_EQ(fetch<LWMessageFuncs>(global, LWMESSAGEFUNCS_GLOBAL)->yesNo("a", "b", nullptr),
                  1);
        return 0;
    });
}

TEST(Monitors, PassStepsOnAndTheWishToStopBack)
{
    modeler::Modeler host = sample_host();
    LoggingFrontEnd front_end;
    front_end.stop_at_step = 2;
    run(host, front_end, [](GlobalFunc* global, MeshEditBegin*) {
        auto* const monitors = fetch<LWMonitorFuncs>(global, LWMONITORFUNCS_GLOBAL);
        LWMonitor* const monitor = monitors->create("Hello", "Working...");
        monitor->init(monitor->data, 3);
        EXPECT_EQ(monitor->step(monitor->data, 1), 0);
        EXPECT_EQ(monitor->step(monitor->data, 2), 1);
        monitor->done(monitor->data);
        monitors->destroy(monitor);
        return 0;
    });
    EXPECT_THAT(front_end.log, ElementsAre("progress: Hello / Working...", "start 3", "step 1",
                                           "step 2", "finish", "progress released"));
}

TEST(Monitors, AFrontEndMayHaveNone)
{
    modeler::Modeler host = sample_host();
    LoggingFrontEnd front_end;
    front_end.shows_progress = false;
    run(host, front_end, [](GlobalFunc* global, MeshEditBegin*) {
        auto* const monitors = fetch<LWMonitorFuncs>(global, LWMONITORFUNCS_GLOBAL);
        EXPECT_EQ(monitors->create("a", "b"), nullptr);
        monitors->destroy(nullptr);
        return 0;
    });
}

TEST(Monitors, CallsOutOfOrderDoNothing)
{
    modeler::Modeler host = sample_host();
    LoggingFrontEnd front_end;
    run(host, front_end, [](GlobalFunc* global, MeshEditBegin*) {
        auto* const monitors = fetch<LWMonitorFuncs>(global, LWMONITORFUNCS_GLOBAL);
        LWMonitor* const monitor = monitors->create(nullptr, nullptr);
        EXPECT_EQ(monitor->step(monitor->data, 1), 0);
        monitor->done(monitor->data);
        monitor->init(monitor->data, -5);
        monitor->init(monitor->data, 5);
        EXPECT_EQ(monitor->step(monitor->data, -1), 0);
        EXPECT_EQ(monitor->step(nullptr, 1), 0);
        EXPECT_EQ(monitor->step(reinterpret_cast<void*>(99), 1), 0);
        monitor->done(monitor->data);
        EXPECT_EQ(monitor->step(monitor->data, 1), 0);
        monitors->destroy(monitor);
        monitor->init(monitor->data, 5);
        monitors->destroy(monitor);
        return 0;
    });
    EXPECT_THAT(front_end.log,
                ElementsAre("progress: ", "start 0", "step 0", "finish", "progress released"));
}

TEST(Monitors, OnesThatAreLeftOpenAreReleasedAtTheEnd)
{
    modeler::Modeler host = sample_host();
    LoggingFrontEnd front_end;
    run(host, front_end, [](GlobalFunc* global, MeshEditBegin*) {
        auto* const monitors = fetch<LWMonitorFuncs>(global, LWMONITORFUNCS_GLOBAL);
        LWMonitor* const monitor = monitors->create("a", "b");
        monitor->init(monitor->data, 3);
        return 0;
    });
    EXPECT_THAT(front_end.log, ElementsAre("progress: a / b", "start 3", "progress released"));
}

std::vector<std::string> names(LWObjectFuncs* objects, LWID type)
{
    std::vector<std::string> all;
    for (int i = 0; i < objects->numVMaps(type); ++i)
        all.emplace_back(objects->vmapName(type, i));
    return all;
}

TEST(SceneObjects, ListsMapsByFirstAppearanceForegroundFirst)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc* global, MeshEditBegin*) {
        auto* const objects = fetch<LWObjectFuncs>(global, LWOBJECTFUNCS_GLOBAL);
        EXPECT_THAT(names(objects, LWVMAP_WGHT), ElementsAre("Height", "Worn", "Sway"));
        EXPECT_THAT(names(objects, LWVMAP_TXUV), ElementsAre("Tex"));
        EXPECT_THAT(names(objects, LWVMAP_MORF), ElementsAre("Smile"));
        EXPECT_THAT(names(objects, LWVMAP_SPOT), ElementsAre());
        EXPECT_THAT(names(objects, LWVMAP_TDVT), ElementsAre());
        EXPECT_EQ(objects->vmapName(LWVMAP_WGHT, 3), nullptr);
        EXPECT_EQ(objects->vmapName(LWVMAP_WGHT, -1), nullptr);
        EXPECT_EQ(objects->vmapName(LWVMAP_SPOT, 0), nullptr);
        return 0;
    });
}

TEST(SceneObjects, FollowsTheRolesOfTheLayers)
{
    using modeler::LayerRole;
    modeler::Modeler host = sample_host();
    host.set_role(0, LayerRole::background);
    host.set_role(2, LayerRole::foreground);
    host.set_role(3, LayerRole::hidden);
    run(host, [](GlobalFunc* global, MeshEditBegin*) {
        auto* const objects = fetch<LWObjectFuncs>(global, LWOBJECTFUNCS_GLOBAL);
        EXPECT_THAT(names(objects, LWVMAP_WGHT), ElementsAre("Hidden", "Height", "Sway"));
        return 0;
    });
}

TEST(SceneObjects, MapsOfAnOpenEditAreNotListedAndNamesStayValid)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc* global, MeshEditBegin* begin) {
        auto* const objects = fetch<LWObjectFuncs>(global, LWOBJECTFUNCS_GLOBAL);
        const char* const height = objects->vmapName(LWVMAP_WGHT, 0);
        const char* const sway = objects->vmapName(LWVMAP_WGHT, 2);
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        const double position[3] = {1, 2, 3};
        const float value[3] = {1, 2, 3};
        const LWPntID point = op->addPoint(op->state, position);
        EXPECT_EQ(op->pntVMap(op->state, point, LWVMAP_WGHT, "New", 1, value), EDERR_NONE);
        EXPECT_EQ(op->pntVMap(op->state, point, LWVMAP_SPOT, "New spot", 3, value), EDERR_NONE);
        EXPECT_THAT(names(objects, LWVMAP_WGHT), ElementsAre("Height", "Worn", "Sway"));
        EXPECT_THAT(names(objects, LWVMAP_SPOT), ElementsAre()) << "asked for first while open";
        op->done(op->state, EDERR_NONE, 0);
        EXPECT_THAT(names(objects, LWVMAP_WGHT), ElementsAre("Height", "New", "Worn", "Sway"));
        EXPECT_THAT(names(objects, LWVMAP_SPOT), ElementsAre("New spot"));
        EXPECT_STREQ(height, "Height");
        EXPECT_STREQ(sway, "Sway");
        return 0;
    });
}

TEST(Services, TablesDoNothingOutsideARun)
{
    modeler::Modeler host = sample_host();
    LWMessageFuncs* messages = nullptr;
    LWObjectFuncs* objects = nullptr;
    LWMonitorFuncs* monitors = nullptr;
    LWXPanelFuncs* panels = nullptr;
    MeshEditBegin* begin_later = nullptr;
    run(host, [&](GlobalFunc* global, MeshEditBegin* begin) {
        messages = fetch<LWMessageFuncs>(global, LWMESSAGEFUNCS_GLOBAL);
        objects = fetch<LWObjectFuncs>(global, LWOBJECTFUNCS_GLOBAL);
        monitors = fetch<LWMonitorFuncs>(global, LWMONITORFUNCS_GLOBAL);
        panels = fetch<LWXPanelFuncs>(global, LWXPANELFUNCS_GLOBAL);
        begin_later = begin;
        return 0;
    });
    messages->info("late", nullptr);
    messages->error("late", nullptr);
    EXPECT_EQ(messages->yesNo("late", "a", "b"), 0);
    EXPECT_EQ(objects->numVMaps(LWVMAP_WGHT), 0);
    EXPECT_EQ(objects->vmapName(LWVMAP_WGHT, 0), nullptr);
    EXPECT_EQ(monitors->create("late", ""), nullptr);
    EXPECT_EQ(panels->create(LWXP_FORM, nullptr), nullptr);
    EXPECT_EQ(begin_later(0, 0, OPSEL_USER), nullptr);
}

} // namespace
