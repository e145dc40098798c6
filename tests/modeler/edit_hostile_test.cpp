// SPDX-License-Identifier: MIT
// Commands that do not keep to the rules of an edit.
#include <array>
#include <cstdint>
#include <limits>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/modeler/session.h"
#include "tests/support/mesh_compare.h"

namespace {

using session::run;
using session::sample_host;
using session::scanned_points;
using session::scanned_polygons;
using testing::Each;
using testing::ElementsAre;

constexpr int front = OPLYR_FG;
constexpr int back = OPLYR_BG;

template <typename Id> Id forged(std::uint64_t number)
{
    return reinterpret_cast<Id>(static_cast<std::uintptr_t>(number));
}

/// Ids that name nothing in the sample: null, past the end, in the hidden layer, beyond the layers.
std::vector<std::uint64_t> wrong_ids()
{
    const auto layer = [](std::uint64_t number) { return (number << 32) + 1; };
    return {0,
            100,
            layer(2),
            layer(5),
            0x7FFF'FFFF'FFFF'FFFFu,
            std::numeric_limits<std::uint64_t>::max()};
}

/// Calls every operation and expects a refusal from each.
void expect_refusals(MeshEditOp* op, void* state)
{
    const double position[3] = {0, 0, 0};
    double normal[3] = {7, 7, 7};
    float value[3] = {7, 7, 7};
    const LWPntID point = forged<LWPntID>(1);
    const LWPolID polygon = forged<LWPolID>(1);
    int calls = 0;
    EDPolyScanFunc* const count = [](void* data, const EDPolygonInfo*) {
        ++*static_cast<int*>(data);
        return int{EDERR_NONE};
    };
    EXPECT_EQ(op->pointCount(state, front, OPCOUNT_ALL), 0);
    EXPECT_EQ(op->polyCount(state, front, OPCOUNT_ALL), 0);
    EXPECT_NE(op->polyScan(state, count, &calls, front), EDERR_NONE);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(op->pointInfo(state, point), nullptr);
    EXPECT_EQ(op->polyInfo(state, polygon), nullptr);
    EXPECT_EQ(op->polyNormal(state, polygon, normal), 0);
    EXPECT_THAT(normal, Each(7.0));
    EXPECT_EQ(op->pointVSet(state, nullptr, LWVMAP_WGHT, "Height"), nullptr);
    EXPECT_EQ(op->pointVGet(state, point, value), 0);
    EXPECT_THAT(value, Each(7.0f));
    EXPECT_NE(op->pntVMap(state, point, LWVMAP_WGHT, "Height", 1, value), EDERR_NONE);
    EXPECT_EQ(op->addPoint(state, position), nullptr);
    EXPECT_EQ(op->addPoly(state, LWPOLTYPE_FACE, nullptr, nullptr, 1, &point), nullptr);
    op->done(state, EDERR_NONE, 0);
}

void expect_untouched(const modeler::Modeler& host)
{
    EXPECT_EQ(support::first_difference(host.document(), session::sample_document()), "");
}

TEST(HostileEdit, EveryOperationTableEntryIsThere)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        EXPECT_TRUE(op->state && op->done && op->pointCount && op->polyCount && op->polyScan &&
                    op->pointInfo && op->polyInfo && op->polyNormal && op->pointVSet &&
                    op->pointVGet && op->pntVMap && op->addPoint && op->addPoly);
        return 0;
    });
}

TEST(HostileEdit, NothingWorksAfterDone)
{
    modeler::Modeler host = sample_host();
    const auto result = run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        op->done(op->state, EDERR_NONE, 0);
        expect_refusals(op, op->state);
        return 0;
    });
    EXPECT_FALSE(result.applied);
    expect_untouched(host);
}

TEST(HostileEdit, AnotherStateIsNoEdit)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        int mine = 0;
        expect_refusals(op, &mine);
        expect_refusals(op, nullptr);
        EXPECT_EQ(op->pointCount(op->state, front, OPCOUNT_ALL), 8) << "still open";
        return 0;
    });
    expect_untouched(host);
}

TEST(HostileEdit, AnotherThreadFindsNoEdit)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc* global, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        std::thread([&] {
            expect_refusals(op, op->state);
            EXPECT_EQ(begin(0, 0, OPSEL_USER), nullptr);
            EXPECT_NE(global("Info Messages 3", 0), nullptr) << "a table, which does nothing here";
        }).join();
        return 0;
    });
    expect_untouched(host);
}

TEST(HostileEdit, OneEditIsOpenAtATime)
{
    modeler::Modeler host = sample_host();
    const auto result = run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const first = begin(0, 0, OPSEL_USER);
        EXPECT_EQ(begin(0, 0, OPSEL_USER), nullptr);
        const double position[3] = {1, 2, 3};
        EXPECT_NE(first->addPoint(first->state, position), nullptr);
        first->done(first->state, EDERR_NONE, 0);
        MeshEditOp* const second = begin(0, 0, OPSEL_USER);
        EXPECT_EQ(second->pointCount(second->state, front, OPCOUNT_ALL), 9);
        expect_refusals(first, first->state);
        EXPECT_NE(second->addPoint(second->state, position), nullptr);
        second->done(second->state, EDERR_NONE, 0);
        return 0;
    });
    EXPECT_EQ(result.points_added, 2u);
    EXPECT_EQ(host.undo_steps(), 2u);
}

TEST(HostileEdit, BeginRefusesWhatItDoesNotKnow)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        EXPECT_EQ(begin(-1, 0, OPSEL_USER), nullptr);
        EXPECT_EQ(begin(0, -1, OPSEL_USER), nullptr);
        EXPECT_EQ(begin(0, 0, 99), nullptr);
        EXPECT_NE(begin(0, 0, OPSEL_USER), nullptr);
        return 0;
    });
}

TEST(HostileEdit, ForgedIdsNameNothing)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        const float weight = 1.0f;
        for (const std::uint64_t id : wrong_ids()) {
            SCOPED_TRACE(id);
            const auto point = forged<LWPntID>(id);
            const auto polygon = forged<LWPolID>(id);
            double normal[3] = {7, 7, 7};
            EXPECT_EQ(op->pointInfo(op->state, point), nullptr);
            EXPECT_EQ(op->polyInfo(op->state, polygon), nullptr);
            EXPECT_EQ(op->polyNormal(op->state, polygon, normal), 0);
            EXPECT_THAT(normal, Each(7.0));
            EXPECT_EQ(op->pntVMap(op->state, point, LWVMAP_WGHT, "Height", 1, &weight),
                      EDERR_BADARGS);
            EXPECT_EQ(op->addPoly(op->state, LWPOLTYPE_FACE, nullptr, nullptr, 1, &point), nullptr);
            if (polygon != nullptr) {
                EXPECT_EQ(op->addPoly(op->state, LWPOLTYPE_FACE, polygon, nullptr, 0, nullptr),
                          nullptr);
            }
        }
        op->done(op->state, EDERR_NONE, 0);
        return 0;
    });
    expect_untouched(host);
}

TEST(HostileEdit, APolygonMayNotUsePointsOfOtherLayers)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        const auto mine = scanned_points(op, scanned_polygons(op, front)[0]);
        const auto path = scanned_points(op, scanned_polygons(op, front)[3]);
        const auto leaf = scanned_points(op, scanned_polygons(op, back)[0]);
        const std::array with_path{mine[0], path[0]};
        const std::array with_leaf{leaf[0], mine[0]};
        EXPECT_EQ(op->addPoly(op->state, LWPOLTYPE_FACE, nullptr, "New", 2, with_path.data()),
                  nullptr);
        EXPECT_EQ(op->addPoly(op->state, LWPOLTYPE_FACE, nullptr, "New", 2, with_leaf.data()),
                  nullptr);
        op->done(op->state, EDERR_NONE, 0);
        return 0;
    });
    expect_untouched(host);
}

TEST(HostileEdit, WrongArgumentsAreRefused)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        const LWPntID point = scanned_points(op, scanned_polygons(op, front)[0])[0];
        const LWPolID polygon = scanned_polygons(op, front)[0];
        const float value[3] = {1, 2, 3};
        void* const s = op->state;
        for (const int layers : {0, 4, -1, 7}) {
            EXPECT_EQ(op->pointCount(s, layers, OPCOUNT_ALL), 0) << layers;
            EXPECT_EQ(op->polyCount(s, layers, OPCOUNT_ALL), 0) << layers;
            EXPECT_EQ(op->polyScan(
                          s, [](void*, const EDPolygonInfo*) { return 5; }, nullptr, layers),
                      EDERR_BADLAYER)
                << layers;
        }
        EXPECT_EQ(op->pointCount(s, front, 2), 0);
        EXPECT_EQ(op->polyCount(s, front, -1), 0);
        EXPECT_EQ(op->polyScan(s, nullptr, nullptr, front), EDERR_BADARGS);
        EXPECT_EQ(op->polyNormal(s, polygon, nullptr), 0);
        EXPECT_EQ(op->pointVSet(s, nullptr, LWVMAP_WGHT, nullptr), nullptr);
        EXPECT_EQ(op->pointVSet(s, forged<void*>(0xDEADBEEF), LWVMAP_WGHT, "Height"), nullptr);
        EXPECT_NE(op->pointVSet(s, nullptr, LWVMAP_WGHT, "Height"), nullptr);
        EXPECT_EQ(op->pointVGet(s, point, nullptr), 0);
        EXPECT_EQ(op->pntVMap(s, point, LWVMAP_WGHT, nullptr, 1, value), EDERR_BADARGS);
        EXPECT_EQ(op->pntVMap(s, point, LWVMAP_WGHT, "Height", 1, nullptr), EDERR_BADARGS);
        EXPECT_EQ(op->pntVMap(s, point, LWVMAP_WGHT, "Height", -1, value), EDERR_BADARGS);
        EXPECT_EQ(op->pntVMap(s, point, LWVMAP_WGHT, "New", 2'000'000'000, value), EDERR_BADARGS);
        EXPECT_EQ(op->pntVMap(s, point, LWVMAP_WGHT, "Height", 3, value), EDERR_BADARGS)
            << "the map has one float for each point";
        EXPECT_EQ(op->addPoint(s, nullptr), nullptr);
        EXPECT_EQ(op->addPoly(s, LWPOLTYPE_FACE, nullptr, nullptr, -1, &point), nullptr);
        EXPECT_EQ(op->addPoly(s, LWPOLTYPE_FACE, nullptr, nullptr, 1, nullptr), nullptr);
        op->done(s, EDERR_NONE, 0);
        return 0;
    });
    expect_untouched(host);
}

TEST(HostileEdit, AReadNeverWritesMoreThanTheTypeHas)
{
    mesh::Document document = session::sample_document();
    mesh::Layer& ground = document.layers[0];
    ground.maps.emplace_back(mesh::map_wght, "Wide", 4u);
    ground.maps.back().set(0, std::array{1.f, 2.f, 3.f, 4.f});
    ground.maps.emplace_back(mesh::map_morf, "Narrow", 1u);
    ground.maps.back().set(0, std::array{5.f});
    ground.maps.emplace_back(mesh::fourcc("RGBA"), "Colour", 4u);
    ground.maps.back().set(0, std::array{1.f, 2.f, 3.f, 4.f});
    ground.maps.emplace_back(mesh::map_wght, "Empty", 0u);
    ground.maps.back().set(0, {});
    modeler::Modeler host(std::move(document), session::sample_roles());
    run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        const LWPntID point = scanned_points(op, scanned_polygons(op, front)[0])[0];
        const auto read = [&](LWID type, const char* name) {
            std::array<float, 5> value{9, 9, 9, 9, 9};
            (void)op->pointVSet(op->state, nullptr, type, name);
            EXPECT_EQ(op->pointVGet(op->state, point, value.data()), 1);
            EXPECT_NE(op->pointInfo(op->state, point)->vmap_value, nullptr);
            EXPECT_EQ(op->pointInfo(op->state, point)->vmap_value[0], value[0]);
            return value;
        };
        EXPECT_THAT(read(LWVMAP_WGHT, "Wide"), ElementsAre(1.f, 9.f, 9.f, 9.f, 9.f));
        EXPECT_THAT(read(LWVMAP_MORF, "Narrow"), ElementsAre(5.f, 0.f, 0.f, 9.f, 9.f));
        EXPECT_THAT(read(mesh::fourcc("RGBA"), "Colour"), ElementsAre(1.f, 2.f, 3.f, 4.f, 9.f));
        EXPECT_THAT(read(LWVMAP_WGHT, "Empty"), ElementsAre(0.f, 9.f, 9.f, 9.f, 9.f));
        return 0;
    });
}

TEST(HostileEdit, AScanMayAddScanAndFinishFromItsCallback)
{
    modeler::Modeler host = sample_host();
    struct Data {
        MeshEditOp* op;
        int outer = 0;
        int inner = 0;
    };
    const auto result = run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        Data data{op};
        const int code = op->polyScan(
            op->state,
            [](void* raw, const EDPolygonInfo* polygon) {
                Data& d = *static_cast<Data*>(raw);
                ++d.outer;
                EXPECT_EQ(d.op->polyScan(
                              d.op->state,
                              [](void* count, const EDPolygonInfo*) {
                                  ++*static_cast<int*>(count);
                                  return int{EDERR_NONE};
                              },
                              &d.inner, back),
                          EDERR_NONE);
                // Enough to move every array of the layer while the scan goes on over it.
                for (int i = 0; i < 1000; ++i)
                    EXPECT_NE(d.op->addPoly(d.op->state, polygon->type, polygon->pol, nullptr,
                                            polygon->numPnts, polygon->points),
                              nullptr);
                if (d.outer == 3)
                    d.op->done(d.op->state, EDERR_NONE, 0);
                return int{EDERR_NONE};
            },
            &data, front);
        EXPECT_NE(code, EDERR_NONE);
        EXPECT_EQ(data.outer, 3);
        EXPECT_EQ(data.inner, 6);
        return 0;
    });
    EXPECT_EQ(result.polygons_added, 3000u);
    host.undo();
    expect_untouched(host);
}

TEST(HostileEdit, ValuesToldOfAPointSurviveWritingToItsMap)
{
    modeler::Modeler host = sample_host();
    run(host, [](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        const LWPntID point = scanned_points(op, scanned_polygons(op, front)[0])[0];
        (void)op->pointVSet(op->state, nullptr, LWVMAP_WGHT, "Height");
        const EDPointInfo* const info = op->pointInfo(op->state, point);
        const double position[3] = {0, 0, 0};
        const float other = 99.0f;
        for (int i = 0; i < 10'000; ++i)
            EXPECT_EQ(op->pntVMap(op->state, op->addPoint(op->state, position), LWVMAP_WGHT,
                                  "Height", 1, &other),
                      EDERR_NONE);
        EXPECT_EQ(*info->vmap_value, 0.5f);
        return 0;
    });
    expect_untouched(host);
}

} // namespace
