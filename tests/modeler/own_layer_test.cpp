// SPDX-License-Identifier: MIT
// What a run adds can go into a layer that is made for it, and goes with it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "modeler/errors.h"
#include "tests/modeler/session.h"
#include "tests/support/mesh_compare.h"

namespace {

using modeler::LayerRole;
using session::run;
using session::sample_host;
using support::first_difference;
using testing::HasSubstr;

const modeler::RunOptions own_layer{"clones of tree"};

/// Adds a triangle like one of the background, with a weight that the foreground has and a morph
/// that is new; ends the edit with this code.
int add_triangle(MeshEditBegin* begin, int error = EDERR_NONE)
{
    MeshEditOp* const op = begin(0, 0, OPSEL_USER);
    const auto tree = session::scanned_polygons(op, OPLYR_BG);
    LWPntID points[3];
    for (int i = 0; i < 3; ++i) {
        const double position[3] = {double(i), 2.0, -0.0};
        points[i] = op->addPoint(op->state, position);
        const float value[3] = {float(i), 0.5f, 1.0f};
        op->pntVMap(op->state, points[i], LWVMAP_WGHT, "Height", 1, value);
        op->pntVMap(op->state, points[i], LWVMAP_MORF, "New", 3, value);
    }
    op->addPoly(op->state, LWPOLTYPE_FACE, tree[0], nullptr, 3, points);
    op->addPoly(op->state, LWPOLTYPE_FACE, tree[0], "Fresh", 3, points);
    op->done(op->state, error, 0);
    return 0;
}

modeler::RunResult run_with_own_layer(modeler::Modeler& host, session::Command command)
{
    session::LoggingFrontEnd front_end;
    return run(host, front_end, std::move(command), own_layer);
}

int one_triangle(GlobalFunc*, MeshEditBegin* begin) { return add_triangle(begin); }

TEST(OwnLayer, HoldsWhatTheRunWouldHaveAddedToTheGround)
{
    modeler::Modeler plain = sample_host();
    const auto plain_result = run(plain, one_triangle);
    modeler::Modeler host = sample_host();
    const auto result = run_with_own_layer(host, one_triangle);

    ASSERT_EQ(host.document().layers.size(), 6u);
    EXPECT_EQ(result.points_added, plain_result.points_added);
    EXPECT_EQ(result.polygons_added, plain_result.polygons_added);
    const mesh::Document before = session::sample_document();
    const mesh::Layer& ground = plain.document().layers[0];
    const mesh::Layer& own = host.document().layers[5];
    const std::size_t first_point = before.layers[0].points.size();
    const std::size_t first_polygon = before.layers[0].polygons.size();
    EXPECT_EQ(own.name, "clones of tree");
    ASSERT_EQ(own.points.size(), 3u);
    ASSERT_EQ(own.polygons.size(), 2u);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_TRUE(support::detail::same(own.points[i], ground.points[first_point + i]));
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(own.polygons.type(i), ground.polygons.type(first_polygon + i));
        EXPECT_EQ(own.polygons.flags(i), ground.polygons.flags(first_polygon + i));
        EXPECT_EQ(own.polygons.surface(i), ground.polygons.surface(first_polygon + i));
        for (const mesh::FourCC kind : ground.polygons.other_tag_kinds())
            EXPECT_EQ(own.polygons.tag(kind, i), ground.polygons.tag(kind, first_polygon + i));
        EXPECT_THAT(own.polygons.points(i), testing::ElementsAre(0, 1, 2));
    }
    ASSERT_EQ(own.maps.size(), 2u);
    for (const mesh::VertexMap& map : own.maps) {
        const mesh::VertexMap* const there = ground.find_map(map.type(), map.name());
        ASSERT_NE(there, nullptr);
        for (std::uint32_t i = 0; i < 3; ++i)
            EXPECT_TRUE(support::detail::same(
                map.find(i), there->find(static_cast<std::uint32_t>(first_point) + i)));
    }
}

TEST(OwnLayer, LeavesTheOtherLayersAsTheyWere)
{
    modeler::Modeler host = sample_host();
    run_with_own_layer(host, one_triangle);
    mesh::Document rest = support::copy_of(host.document());
    rest.layers.pop_back();
    rest.tags.truncate(session::sample_document().tags.size());
    EXPECT_EQ(first_difference(rest, session::sample_document()), "");
}

TEST(OwnLayer, HasAFreeNumberAndIsShownOnly)
{
    modeler::Modeler host = sample_host();
    run_with_own_layer(host, one_triangle);
    ASSERT_EQ(host.roles().size(), 6u);
    EXPECT_EQ(host.roles()[5], LayerRole::shown);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(host.roles()[i], session::sample_roles()[i]);
        EXPECT_NE(host.document().layers[i].number, host.document().layers[5].number);
    }
}

TEST(OwnLayer, IsAskedForWhenTheCommandFirstAdds)
{
    for (const bool wanted : {true, false}) {
        modeler::Modeler plain = sample_host();
        session::LoggingFrontEnd front_end;
        bool answered = false;
        modeler::RunOptions options = own_layer;
        options.wants_own_layer = [&] {
            EXPECT_TRUE(answered); // a panel, say, comes after the edit's begin
            return wanted;
        };
        const auto command = [&](GlobalFunc*, MeshEditBegin* begin) {
            const auto add_late = [](MeshEditBegin* now) { return add_triangle(now); };
            static MeshEditOp* op = nullptr;
            op = begin(0, 0, OPSEL_USER);
            answered = true;
            return add_late(+[](int, int, int) { return op; });
        };
        modeler::Modeler host = sample_host();
        run(host, front_end, command, options);
        run(
            plain, front_end, [](GlobalFunc*, MeshEditBegin* begin) { return add_triangle(begin); },
            wanted ? own_layer : modeler::RunOptions());
        EXPECT_EQ(first_difference(host.document(), plain.document()), "");
        EXPECT_EQ(host.roles(), plain.roles());
        const mesh::Document after = support::copy_of(host.document());
        host.undo();
        EXPECT_EQ(first_difference(host.document(), session::sample_document()), "");
        EXPECT_EQ(host.roles(), session::sample_roles());
        host.redo();
        EXPECT_EQ(first_difference(host.document(), after), "");
        EXPECT_EQ(host.roles(), plain.roles());
    }
}

TEST(OwnLayer, IsNoPartOfTheNextRun)
{
    std::vector<std::size_t> polygons;
    const auto count = [&](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        polygons.push_back(session::scanned_polygons(op, OPLYR_FG | OPLYR_BG).size());
        op->done(op->state, EDERR_NONE, 0);
        return 0;
    };
    modeler::Modeler host = sample_host();
    run(host, count);
    run_with_own_layer(host, one_triangle);
    run(host, count);
    EXPECT_EQ(polygons[0], polygons[1]);
    run_with_own_layer(host, one_triangle);
    EXPECT_EQ(host.document().layers.size(), 7u) << "every run has a layer of its own";
}

TEST(OwnLayer, ComesAndGoesWithUndoAndRedo)
{
    modeler::Modeler host = sample_host();
    std::vector<mesh::Document> stages;
    for (int i = 0; i < 3; ++i) {
        stages.push_back(support::copy_of(host.document()));
        if (i == 1)
            run(host, one_triangle);
        else
            run_with_own_layer(host, one_triangle);
    }
    stages.push_back(support::copy_of(host.document()));
    ASSERT_EQ(host.undo_steps(), 3u);
    for (int round = 0; round < 2; ++round) {
        for (std::size_t stage = 3; stage-- > 0;) {
            host.undo();
            EXPECT_EQ(first_difference(host.document(), stages[stage]), "") << stage;
            EXPECT_EQ(host.roles().size(), host.document().layers.size());
        }
        for (std::size_t stage = 1; stage <= 3; ++stage) {
            host.redo();
            EXPECT_EQ(first_difference(host.document(), stages[stage]), "") << stage;
            EXPECT_EQ(host.roles().size(), host.document().layers.size());
        }
        EXPECT_EQ(host.roles().back(), LayerRole::shown);
    }
}

TEST(OwnLayer, OfSeveralEditsIsOne)
{
    modeler::Modeler host = sample_host();
    run_with_own_layer(host, [](GlobalFunc*, MeshEditBegin* begin) {
        add_triangle(begin, EDERR_BADARGS); // dropped, and its layer with it
        add_triangle(begin);
        add_triangle(begin, EDERR_BADARGS);
        return add_triangle(begin);
    });
    ASSERT_EQ(host.document().layers.size(), 6u);
    EXPECT_EQ(host.document().layers[5].points.size(), 6u);
    host.undo();
    ASSERT_EQ(host.document().layers.size(), 6u);
    EXPECT_EQ(host.document().layers[5].points.size(), 3u);
    host.undo();
    EXPECT_EQ(first_difference(host.document(), session::sample_document()), "");
}

TEST(OwnLayer, IsNotMadeByARunThatAddsNothing)
{
    const std::vector<session::Command> runs{
        [](GlobalFunc*, MeshEditBegin*) { return 0; },
        [](GlobalFunc*, MeshEditBegin* begin) {
            MeshEditOp* const op = begin(0, 0, OPSEL_USER);
            op->done(op->state, EDERR_NONE, 0);
            return 0;
        },
        [](GlobalFunc*, MeshEditBegin* begin) { return add_triangle(begin, EDERR_BADARGS); },
        [](GlobalFunc*, MeshEditBegin* begin) {
            begin(0, 0, OPSEL_USER); // left open
            return 0;
        }};
    for (const session::Command& command : runs) {
        modeler::Modeler host = sample_host();
        run_with_own_layer(host, command);
        EXPECT_EQ(first_difference(host.document(), session::sample_document()), "");
        EXPECT_EQ(host.roles(), session::sample_roles());
    }
}

TEST(OwnLayer, DoesNotMakeAForegroundWhereThereIsNone)
{
    modeler::Modeler host(session::sample_document(), std::vector(5, LayerRole::background));
    bool begun = true;
    run_with_own_layer(host, [&](GlobalFunc*, MeshEditBegin* begin) {
        begun = begin(0, 0, OPSEL_USER) != nullptr;
        return 0;
    });
    EXPECT_FALSE(begun);
}

TEST(OwnLayer, NeedsANumber)
{
    modeler::Modeler host = sample_host();
    mesh::Document document = host.release();
    std::vector<LayerRole> roles = session::sample_roles();
    for (unsigned number = 0; number < 0xFFFF; ++number)
        document.layers.emplace_back().number = static_cast<std::uint16_t>(number);
    roles.resize(document.layers.size(), LayerRole::hidden);
    host.replace(std::move(document), roles);
    try {
        run_with_own_layer(host, [](GlobalFunc*, MeshEditBegin* begin) {
            return begin(0, 0, OPSEL_USER) == nullptr ? 1 : 0;
        });
        FAIL() << "no exception";
    } catch (const modeler::ModuleError& error) {
        EXPECT_THAT(error.what(), HasSubstr("all layer numbers are taken"));
    }
    EXPECT_EQ(host.document().layers.size(), roles.size());
    EXPECT_EQ(host.roles(), roles);
}

} // namespace
