// SPDX-License-Identifier: MIT
// What a command reads and adds through an edit.
#include <array>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hostapi/scene_objects.h"
#include "tests/modeler/session.h"
#include "tests/support/mesh_compare.h"

namespace {

using session::run;
using session::sample_document;
using session::sample_host;
using session::scanned_points;
using session::scanned_polygons;
using testing::ElementsAre;

constexpr int front = OPLYR_FG;
constexpr int back = OPLYR_BG;

/// Begins an edit in a run, gives it to `use`, and finishes it with 0.
modeler::RunResult edit(modeler::Modeler& host, const std::function<void(MeshEditOp*)>& use)
{
    return run(host, [&](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        if (op == nullptr)
            return int{AFUNC_BADLOCAL};
        use(op);
        op->done(op->state, EDERR_NONE, 0);
        return int{AFUNC_OK};
    });
}

struct Seen {
    std::string type;
    int points;
    int flags;
    friend bool operator==(const Seen&, const Seen&) = default;
};

std::vector<Seen> scan(MeshEditOp* op, int layers)
{
    std::vector<Seen> seen;
    op->polyScan(
        op->state,
        [](void* data, const EDPolygonInfo* p) {
            static_cast<std::vector<Seen>*>(data)->push_back(
                {mesh::to_text(p->type), p->numPnts, p->flags});
            return int{EDERR_NONE};
        },
        &seen, layers);
    return seen;
}

TEST(Edit, CountsTheLayersOfTheSelector)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        EXPECT_EQ(op->pointCount(op->state, front, OPCOUNT_ALL), 8);
        EXPECT_EQ(op->pointCount(op->state, back, OPCOUNT_ALL), 5);
        EXPECT_EQ(op->pointCount(op->state, front | back, OPCOUNT_ALL), 13);
        EXPECT_EQ(op->polyCount(op->state, front, OPCOUNT_ALL), 4);
        EXPECT_EQ(op->polyCount(op->state, back, OPCOUNT_ALL), 2);
        EXPECT_EQ(op->polyCount(op->state, front | back, OPCOUNT_ALL), 6);
    });
}

TEST(Edit, ScansInFileOrderOverTheLayersInDocumentOrder)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        EXPECT_THAT(scan(op, front), ElementsAre(Seen{"FACE", 3, 1}, Seen{"PTCH", 4, 1},
                                                 Seen{"FACE", 3, 1}, Seen{"FACE", 3, 1}));
        EXPECT_THAT(scan(op, back), ElementsAre(Seen{"FACE", 3, 1}, Seen{"CURV", 2, 1}));
        EXPECT_THAT(scan(op, front | back),
                    ElementsAre(Seen{"FACE", 3, 1}, Seen{"PTCH", 4, 1}, Seen{"FACE", 3, 1},
                                Seen{"FACE", 3, 1}, Seen{"CURV", 2, 1}, Seen{"FACE", 3, 1}));
    });
}

TEST(Edit, AScanGivesThePointsInThePolygonsOrder)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        const auto ids = scanned_polygons(op, front);
        const auto points = scanned_points(op, ids[2]);
        ASSERT_EQ(points.size(), 3u);
        EXPECT_EQ(op->pointInfo(op->state, points[1])->position[2], 2.0);
        EXPECT_EQ(op->pointInfo(op->state, points[2])->position[0], 2.0);
        EXPECT_EQ(op->pointInfo(op->state, points[2])->position[2], 0.0);
        EXPECT_EQ(op->pointInfo(op->state, points[2])->pnt, points[2]);
    });
}

TEST(Edit, NothingSelectedCountsAsEverythingSelected)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        EXPECT_EQ(op->polyCount(op->state, front, OPCOUNT_SELECTED), 4);
        EXPECT_EQ(op->pointCount(op->state, front, OPCOUNT_SELECTED), 8);
        EXPECT_EQ(op->polyCount(op->state, back, OPCOUNT_SELECTED), 2);
        EXPECT_EQ(op->pointCount(op->state, back, OPCOUNT_SELECTED), 5);
    });
}

TEST(Edit, ASelectionInOneForegroundLayerIsTheSelectionOfAll)
{
    modeler::Modeler host = sample_host();
    host.select(3, 0, true);
    edit(host, [](MeshEditOp* op) {
        EXPECT_EQ(op->polyCount(op->state, front, OPCOUNT_SELECTED), 1);
        EXPECT_EQ(op->polyCount(op->state, front, OPCOUNT_ALL), 4);
        EXPECT_EQ(op->pointCount(op->state, front, OPCOUNT_SELECTED), 3);
        EXPECT_THAT(scan(op, front), ElementsAre(Seen{"FACE", 3, 0}, Seen{"PTCH", 4, 0},
                                                 Seen{"FACE", 3, 0}, Seen{"FACE", 3, 1}));
        EXPECT_EQ(op->polyCount(op->state, back, OPCOUNT_SELECTED), 2) << "judged on its own";
        EXPECT_EQ(op->polyInfo(op->state, scanned_polygons(op, front)[0])->flags, 0);
        EXPECT_EQ(op->polyInfo(op->state, scanned_polygons(op, front)[3])->flags, 1);
    });
}

TEST(Edit, SelectedPointsAreThoseOfSelectedPolygonsOnceEach)
{
    modeler::Modeler host = sample_host();
    host.select(0, 0, true);
    host.select(0, 2, true);
    edit(host,
         [](MeshEditOp* op) { EXPECT_EQ(op->pointCount(op->state, front, OPCOUNT_SELECTED), 4); });
}

TEST(Edit, AScanEndsWithWhatItsCallbackAnswers)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        int calls = 0;
        EXPECT_EQ(op->polyScan(
                      op->state,
                      [](void* data, const EDPolygonInfo*) {
                          return ++*static_cast<int*>(data) == 2 ? 42 : int{EDERR_NONE};
                      },
                      &calls, front),
                  42);
        EXPECT_EQ(calls, 2);
    });
}

TEST(Edit, GivesUnitNormals)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        double n[3] = {7, 7, 7};
        EXPECT_EQ(op->polyNormal(op->state, scanned_polygons(op, front)[0], n), 1);
        EXPECT_THAT(n, ElementsAre(0.0, 1.0, 0.0));
        EXPECT_EQ(op->polyNormal(op->state, scanned_polygons(op, back)[1], n), 1);
        EXPECT_THAT(n, ElementsAre(0.0, 0.0, 0.0)) << "a curve of two points has no area";
    });
}

TEST(Edit, ReportsTheValuesOfTheSelectedMap)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        const auto points = scanned_points(op, scanned_polygons(op, front)[0]);
        EXPECT_EQ(op->pointInfo(op->state, points[0])->vmap_value, nullptr) << "none selected";
        void* const height = op->pointVSet(op->state, nullptr, LWVMAP_WGHT, "Height");
        ASSERT_NE(height, nullptr);
        EXPECT_EQ(*op->pointInfo(op->state, points[0])->vmap_value, 0.5f);
        EXPECT_EQ(op->pointInfo(op->state, points[1])->vmap_value, nullptr);
        EXPECT_EQ(*op->pointInfo(op->state, points[2])->vmap_value, 1.5f);

        const auto leaf = scanned_points(op, scanned_polygons(op, back)[0]);
        EXPECT_EQ(*op->pointInfo(op->state, leaf[0])->vmap_value, 8.0f) << "the map of its layer";

        float uv[2] = {9, 9};
        EXPECT_EQ(op->pointVGet(op->state, points[1], uv), 0);
        EXPECT_EQ(uv[0], 9.0f);
        EXPECT_NE(op->pointVSet(op->state, nullptr, LWVMAP_TXUV, "Tex"), height);
        EXPECT_EQ(op->pointVGet(op->state, points[1], uv), 1);
        EXPECT_THAT(uv, ElementsAre(1.25f, 0.75f));

        EXPECT_EQ(op->pointVSet(op->state, height, 0, nullptr), height);
        EXPECT_EQ(op->pointVGet(op->state, points[2], uv), 1);
        EXPECT_EQ(uv[0], 1.5f);
    });
}

TEST(Edit, AMapThatNoLayerHoldsGivesNoValues)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        const auto points = scanned_points(op, scanned_polygons(op, front)[0]);
        ASSERT_NE(op->pointVSet(op->state, nullptr, LWVMAP_WGHT, "Height"), nullptr);
        EXPECT_EQ(op->pointVSet(op->state, nullptr, LWVMAP_WGHT, "Nowhere"), nullptr);
        EXPECT_EQ(op->pointInfo(op->state, points[0])->vmap_value, nullptr);
        EXPECT_EQ(op->pointVSet(op->state, nullptr, LWVMAP_MORF, "Height"), nullptr)
            << "a name is of one type";
        EXPECT_EQ(op->pointVSet(op->state, nullptr, LWVMAP_WGHT, "Hidden"), nullptr)
            << "hidden layers are not looked at";
    });
}

TEST(Edit, AnotherNameAtTheSameAddressIsAnotherMap)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        const auto points = scanned_points(op, scanned_polygons(op, back)[0]);
        char name[16] = "Sway";
        float value[3] = {};
        for (int i = 0; i < 3; ++i) {
            std::strcpy(name, "Sway");
            (void)op->pointVSet(op->state, nullptr, LWVMAP_WGHT, name);
            ASSERT_EQ(op->pointVGet(op->state, points[0], value), 1);
            EXPECT_EQ(value[0], 0.1f);
            std::strcpy(name, "Height");
            (void)op->pointVSet(op->state, nullptr, LWVMAP_WGHT, name);
            ASSERT_EQ(op->pointVGet(op->state, points[0], value), 1);
            EXPECT_EQ(value[0], 8.0f);
            std::strcpy(name, "Smile");
            (void)op->pointVSet(op->state, nullptr, LWVMAP_MORF, name);
            ASSERT_EQ(op->pointVGet(op->state, points[1], value), 1);
            EXPECT_THAT(value, ElementsAre(0.125f, -1.0f, 2.0f));
        }
    });
}

TEST(Edit, ALentNameMeansTheMapOfTheTypeThatIsAskedFor)
{
    mesh::Document document = sample_document();
    mesh::VertexMap& twin = document.layers[1].maps.emplace_back(mesh::map_wght, "Smile", 1u);
    twin.set(1, std::array{0.75f});
    modeler::Modeler host(std::move(document), session::sample_roles());
    run(host, [](GlobalFunc* global, MeshEditBegin* begin) {
        auto* const objects =
            static_cast<LWObjectFuncs*>(global(LWOBJECTFUNCS_GLOBAL, GLOBAL_USE_TRANSIENT));
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        const char* const morph = objects->vmapName(LWVMAP_MORF, 0);
        const char* const weight = objects->vmapName(LWVMAP_WGHT, 3);
        EXPECT_STREQ(morph, "Smile");
        EXPECT_EQ(weight, morph) << "a text is lent once";
        const LWPntID point = scanned_points(op, scanned_polygons(op, back)[0])[1];
        for (int i = 0; i < 3; ++i) {
            float value[3] = {};
            (void)op->pointVSet(op->state, nullptr, LWVMAP_WGHT, weight);
            EXPECT_EQ(op->pointVGet(op->state, point, value), 1);
            EXPECT_EQ(value[0], 0.75f);
            (void)op->pointVSet(op->state, nullptr, LWVMAP_MORF, morph);
            EXPECT_EQ(op->pointVGet(op->state, point, value), 1);
            EXPECT_THAT(value, ElementsAre(0.125f, -1.0f, 2.0f));
            const std::string part(weight + 1); // a text of our own with the same end
            EXPECT_EQ(op->pointVSet(op->state, nullptr, LWVMAP_WGHT, weight + 1), nullptr) << part;
        }
        op->done(op->state, EDERR_NONE, 0);
        return int{AFUNC_OK};
    });
}

TEST(Edit, ReadsOneNameInSeveralLayersByTurns)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        const LWPntID ground = scanned_points(op, scanned_polygons(op, front)[0])[2];
        const LWPntID path = scanned_points(op, scanned_polygons(op, front)[3])[1];
        const LWPntID tree = scanned_points(op, scanned_polygons(op, back)[0])[0];
        const auto height = [op](LWPntID point) {
            float value = -1.0f;
            EXPECT_EQ(op->pointVGet(op->state, point, &value), 1);
            return value;
        };
        (void)op->pointVSet(op->state, nullptr, LWVMAP_WGHT, "Height");
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(height(ground), 1.5f);
            EXPECT_EQ(height(tree), 8.0f);
            EXPECT_EQ(height(path), 3.0f);
        }
    });
}

TEST(Edit, FindsAMapThatWasMadeAfterItWasLookedForInVain)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        const LWPntID ground = scanned_points(op, scanned_polygons(op, front)[0])[0];
        (void)op->pointVSet(op->state, nullptr, LWVMAP_WGHT, "Sway"); // the tree has one
        float value = -1.0f;
        EXPECT_EQ(op->pointVGet(op->state, ground, &value), 0);
        const float weight = 0.25f;
        EXPECT_EQ(op->pntVMap(op->state, ground, LWVMAP_WGHT, "Sway", 1, &weight), EDERR_NONE);
        EXPECT_EQ(op->pointVGet(op->state, ground, &value), 1);
        EXPECT_EQ(value, 0.25f);
    });
}

TEST(Edit, KeepsTheValuesOfManyMapsApart)
{
    modeler::Modeler host = sample_host();
    constexpr int maps = 200; // more than there are short cuts to
    std::vector<std::string> names;
    for (int i = 0; i < maps; ++i)
        names.push_back("map " + std::to_string(i));
    edit(host, [&](MeshEditOp* op) {
        const double position[3] = {1, 2, 3};
        for (int p = 0; p < 130; ++p) { // more than two words of presence bits
            const LWPntID point = op->addPoint(op->state, position);
            for (int i = 0; i < maps; ++i) {
                const auto value = static_cast<float>(p * maps + i);
                const char* const name = names[static_cast<std::size_t>(i)].c_str();
                EXPECT_EQ(op->pntVMap(op->state, point, LWVMAP_WGHT, name, 1, &value), EDERR_NONE);
            }
        }
    });
    const mesh::Layer& ground = host.document().layers[0];
    for (int i = 0; i < maps; ++i) {
        const mesh::VertexMap* const map =
            ground.find_map(LWVMAP_WGHT, names[static_cast<std::size_t>(i)]);
        ASSERT_NE(map, nullptr);
        ASSERT_EQ(map->size(), 130u);
        for (int p = 0; p < 130; ++p)
            EXPECT_THAT(map->find(static_cast<std::uint32_t>(5 + p)),
                        ElementsAre(static_cast<float>(p * maps + i)));
    }
}

TEST(Edit, NewPointsAndPolygonsGoBehindWhatTheFirstForegroundLayerHolds)
{
    modeler::Modeler host = sample_host();
    const auto result = edit(host, [](MeshEditOp* op) {
        LWPntID ids[3];
        for (int i = 0; i < 3; ++i) {
            const double position[3] = {10.0 + i, 0.0, 0.5};
            ids[i] = op->addPoint(op->state, position);
            ASSERT_NE(ids[i], nullptr);
        }
        ASSERT_NE(op->addPoly(op->state, LWPOLTYPE_PTCH, nullptr, nullptr, 3, ids), nullptr);
    });
    EXPECT_TRUE(result.applied);
    EXPECT_EQ(result.points_added, 3u);
    EXPECT_EQ(result.polygons_added, 1u);
    const mesh::Layer& ground = host.document().layers[0];
    ASSERT_EQ(ground.points.size(), 8u);
    EXPECT_EQ(ground.points[5], (mesh::Vec3{10.0, 0.0, 0.5}));
    ASSERT_EQ(ground.polygons.size(), 4u);
    EXPECT_EQ(ground.polygons.type(3), mesh::polygon_ptch);
    EXPECT_THAT(ground.polygons.points(3), ElementsAre(5u, 6u, 7u));
    EXPECT_EQ(ground.polygons.surface(3), mesh::no_tag);
    EXPECT_FALSE(ground.polygons.selected(3));
    EXPECT_EQ(host.document().layers[3].points.size(), 3u);
}

TEST(Edit, WhatIsAddedIsKnownByIdAndNotYetCountedOrScanned)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        const double position[3] = {1, 2, 3};
        const LWPntID point = op->addPoint(op->state, position);
        const LWPolID polygon = op->addPoly(op->state, LWPOLTYPE_FACE, nullptr, nullptr, 1, &point);
        EXPECT_EQ(op->pointCount(op->state, front, OPCOUNT_ALL), 8);
        EXPECT_EQ(op->polyCount(op->state, front, OPCOUNT_ALL), 4);
        EXPECT_EQ(scan(op, front).size(), 4u);
        ASSERT_NE(op->pointInfo(op->state, point), nullptr);
        EXPECT_EQ(op->pointInfo(op->state, point)->position[2], 3.0);
        ASSERT_NE(op->polyInfo(op->state, polygon), nullptr);
        EXPECT_EQ(op->polyInfo(op->state, polygon)->points[0], point);

        const float weight = 0.5f;
        EXPECT_EQ(op->pntVMap(op->state, point, LWVMAP_WGHT, "Brand new", 1, &weight), EDERR_NONE);
        EXPECT_NE(op->pointVSet(op->state, nullptr, LWVMAP_WGHT, "Brand new"), nullptr);
        float read = 0.0f;
        EXPECT_EQ(op->pointVGet(op->state, point, &read), 1);
        EXPECT_EQ(read, 0.5f);
    });
    edit(host, [](MeshEditOp* op) {
        EXPECT_EQ(op->pointCount(op->state, front, OPCOUNT_ALL), 9) << "finished: it counts";
        EXPECT_EQ(scan(op, front).size(), 5u);
    });
}

TEST(Edit, ANewPolygonTakesAllTagsOfItsTemplateFromAnyLayer)
{
    modeler::Modeler host = sample_host();
    edit(host, [](MeshEditOp* op) {
        const double position[3] = {1, 2, 3};
        const LWPntID point = op->addPoint(op->state, position);
        const LWPolID leaf = scanned_polygons(op, back)[0];
        const LWPolID grass = scanned_polygons(op, front)[0];
        op->addPoly(op->state, LWPOLTYPE_FACE, leaf, nullptr, 1, &point);
        op->addPoly(op->state, LWPOLTYPE_CURV, leaf, nullptr, 1, &point);
        op->addPoly(op->state, LWPOLTYPE_FACE, grass, nullptr, 1, &point);
        op->addPoly(op->state, LWPOLTYPE_FACE, grass, "Brand new", 1, &point);
    });
    const mesh::Document& document = host.document();
    const mesh::Polygons& polygons = document.layers[0].polygons;
    const auto surface = [&](std::size_t i) { return document.tags[polygons.surface(i)]; };
    EXPECT_EQ(surface(3), "Leaf");
    EXPECT_EQ(document.tags[polygons.tag(mesh::fourcc("COLR"), 3)], "green");
    EXPECT_EQ(polygons.tag(mesh::fourcc("PART"), 3), mesh::no_tag);
    EXPECT_EQ(polygons.flags(3), 3);
    EXPECT_EQ(surface(4), "Leaf");
    EXPECT_EQ(polygons.flags(4), 0) << "flags mean something else for another type";
    EXPECT_EQ(surface(5), "Grass");
    EXPECT_EQ(document.tags[polygons.tag(mesh::fourcc("PART"), 5)], "left");
    EXPECT_EQ(polygons.flags(5), 5);
    EXPECT_EQ(surface(6), "Brand new");
    EXPECT_EQ(document.tags[polygons.tag(mesh::fourcc("PART"), 6)], "left");
}

TEST(Edit, WritesMapsOfNewAndOldPointsInTheirOwnLayers)
{
    modeler::Modeler host = sample_host();
    const auto result = edit(host, [](MeshEditOp* op) {
        const double position[3] = {1, 2, 3};
        const LWPntID point = op->addPoint(op->state, position);
        const LWPntID old = scanned_points(op, scanned_polygons(op, front)[0])[1];
        const LWPntID behind = scanned_points(op, scanned_polygons(op, back)[0])[0];
        const float weight = 0.5f;
        const float offset[3] = {1, 2, 3};
        EXPECT_EQ(op->pntVMap(op->state, point, LWVMAP_WGHT, "Height", 1, &weight), EDERR_NONE);
        EXPECT_EQ(op->pntVMap(op->state, old, LWVMAP_WGHT, "Height", 1, &weight), EDERR_NONE);
        EXPECT_EQ(op->pntVMap(op->state, point, LWVMAP_MORF, "Smile", 3, offset), EDERR_NONE);
        EXPECT_EQ(op->pntVMap(op->state, behind, LWVMAP_WGHT, "Sway", 1, &weight), EDERR_NONE);
    });
    using modeler::WrittenMap;
    EXPECT_THAT(result.maps_written, ElementsAre(WrittenMap{LWVMAP_WGHT, "Height", 1, false},
                                                 WrittenMap{LWVMAP_MORF, "Smile", 3, true},
                                                 WrittenMap{LWVMAP_WGHT, "Sway", 1, false}));
    const mesh::Layer& ground = host.document().layers[0];
    EXPECT_THAT(ground.find_map(LWVMAP_WGHT, "Height")->find(5), ElementsAre(0.5f));
    EXPECT_THAT(ground.find_map(LWVMAP_WGHT, "Height")->find(1), ElementsAre(0.5f));
    EXPECT_THAT(ground.find_map(LWVMAP_WGHT, "Height")->find(2), ElementsAre(1.5f));
    EXPECT_THAT(ground.find_map(LWVMAP_MORF, "Smile")->find(5), ElementsAre(1.f, 2.f, 3.f));
    const mesh::Layer& tree = host.document().layers[1];
    EXPECT_THAT(tree.find_map(LWVMAP_WGHT, "Sway")->find(0), ElementsAre(0.5f));
    EXPECT_EQ(tree.find_map(LWVMAP_MORF, "Smile")->size(), 1u);
}

TEST(Edit, NeedsAForegroundLayer)
{
    using modeler::LayerRole;
    modeler::Modeler host = sample_host();
    host.set_role(0, LayerRole::background);
    EXPECT_EQ(edit(host, [](MeshEditOp*) {}).code, AFUNC_OK);
    host.set_role(3, LayerRole::hidden);
    EXPECT_EQ(edit(host, [](MeshEditOp*) {}).code, AFUNC_BADLOCAL);
    modeler::Modeler empty;
    EXPECT_EQ(edit(empty, [](MeshEditOp*) {}).code, AFUNC_BADLOCAL);
}

TEST(Edit, OneThatAddsNothingIsNoUndoStep)
{
    modeler::Modeler host = sample_host();
    const auto result = edit(host, [](MeshEditOp* op) { (void)scan(op, front); });
    EXPECT_FALSE(result.applied);
    EXPECT_FALSE(host.can_undo());
    EXPECT_EQ(support::first_difference(host.document(), session::sample_document()), "");
}

} // namespace
