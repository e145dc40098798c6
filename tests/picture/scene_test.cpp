// SPDX-License-Identifier: MIT
#include <atomic>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "picture/scene/picking.h"
#include "picture/view/vectors.h"
#include "tests/picture/scenes.h"

namespace {

using picture::Camera;
using picture::Pick;
using picture::PolygonId;
using picture::StandardView;
using picture::Vec3;
using picture::View;

Camera from_above()
{
    Camera camera;
    camera.look_from(StandardView::top);
    return camera;
}

/// What is at a place of the ground, seen from above.
std::optional<Pick> pick_from_above(const picture::Scene& scene, double x, double z)
{
    const View view(scene.framed(from_above(), 1.0), 400, 400);
    const auto pixel = view.project({x, 0.0, z});
    return picture::pick(scene, view, pixel->x, pixel->y);
}

TEST(Scene, ShowsTheUpperPolygonWhereTwoOverlap)
{
    Model model;
    model.floor(0.0, 0.0, 0.0, 2.0);
    model.floor(1.0, 1.0, 0.0, 0.5);
    const auto scene = model.scene();
    EXPECT_EQ(pick_from_above(*scene, -1.0, 0.3)->polygon, (PolygonId{0, 0}));
    const auto upper = pick_from_above(*scene, 1.1, 0.1);
    EXPECT_EQ(upper->polygon, (PolygonId{0, 1}));
    EXPECT_NEAR(upper->position.x, 1.1, 1e-5);
    EXPECT_NEAR(upper->position.y, 1.0, 1e-5);
    EXPECT_NEAR(upper->position.z, 0.1, 1e-5);
}

TEST(Scene, IsGivenUpWhenItsCallerAsks)
{
    Model model;
    model.floor(0.0, 0.0, 0.0, 2.0);
    std::atomic<bool> cancel = false;
    EXPECT_EQ(picture::Scene(model.scene_layers(), &cancel).triangle_count(), 2U);
    cancel = true;
    EXPECT_THROW(picture::Scene(model.scene_layers(), &cancel), picture::SceneCancelled);
    cancel = false; // the tracer is none the worse for it
    EXPECT_EQ(picture::Scene(model.scene_layers(), &cancel).triangle_count(), 2U);
}

TEST(Scene, LeavesTheHollowOfAConcavePolygonOpen)
{
    Model model; // a U of 30 by 30
    model.face({{0, 0, 0},
                {0, 0, 30},
                {10, 0, 30},
                {10, 0, 10},
                {20, 0, 10},
                {20, 0, 30},
                {30, 0, 30},
                {30, 0, 0}});
    const auto scene = model.scene();
    EXPECT_TRUE(pick_from_above(*scene, 5.0, 25.0));
    EXPECT_TRUE(pick_from_above(*scene, 15.0, 5.0));
    EXPECT_TRUE(pick_from_above(*scene, 25.0, 25.0));
    EXPECT_FALSE(pick_from_above(*scene, 15.0, 20.0));
    EXPECT_FALSE(pick_from_above(*scene, 15.0, 29.0));
}

TEST(Scene, ShowsPolygonsFromTheirBackToo)
{
    Model model;
    model.floor(0.0, 0.0, 0.0, 1.0);
    const auto scene = model.scene();
    Camera camera;
    camera.look_from(StandardView::bottom);
    const View view(scene->framed(camera, 1.0), 50, 50);
    EXPECT_TRUE(picture::pick(*scene, view, 25.0, 25.0));
}

TEST(Scene, NamesPolygonsByTheirPlaceInTheLayerWhenPartsOfItAreShown)
{
    Model model;
    model.floor(-2.0, 0.0, 0.0, 1.0);
    model.floor(0.0, 0.0, 0.0, 1.0);
    model.floor(2.0, 0.0, 0.0, 1.0);
    auto layers = model.scene_layers();
    layers.push_back(layers[0]);
    layers[0].end_polygon = 1;
    layers[1].first_polygon = 2;
    const picture::Scene scene(layers);
    EXPECT_EQ(scene.triangle_count(), 4U);
    EXPECT_EQ(pick_from_above(scene, -2.0, 0.0)->polygon, (PolygonId{0, 0}));
    EXPECT_EQ(pick_from_above(scene, 2.0, 0.0)->polygon, (PolygonId{1, 2}));
    EXPECT_FALSE(pick_from_above(scene, 0.0, 0.0));
}

TEST(Scene, ShowsPatchesAndLinesAndCurvesAndBonesAndSinglePoints)
{
    Model model;
    model.face({{0, 0, 0}, {0, 0, 1}, {1, 0, 1}, {1, 0, 0}}, "", mesh::polygon_ptch);
    model.face({{3, 0, 0}, {3, 0, 4}});
    model.face({{5, 0, 0}, {5, 0, 2}, {5, 0, 4}}, "", mesh::polygon_curv);
    model.face({{7, 0, 0}, {7, 0, 4}}, "", mesh::fourcc("BONE"));
    model.face({{9, 0, 2}});
    const auto scene = model.scene();
    EXPECT_EQ(scene->triangle_count(), 2U);
    EXPECT_EQ(pick_from_above(*scene, 0.5, 0.5)->polygon.polygon, 0U);
    EXPECT_EQ(pick_from_above(*scene, 3.0, 2.2)->polygon.polygon, 1U);
    EXPECT_EQ(pick_from_above(*scene, 5.0, 1.3)->polygon.polygon, 2U);
    EXPECT_EQ(pick_from_above(*scene, 7.0, 2.2)->polygon.polygon, 3U);
    EXPECT_EQ(pick_from_above(*scene, 9.0, 2.0)->polygon.polygon, 4U);
}

TEST(Scene, BendsCurvesBetweenTheirPointsAndKeepsControlPointsOut)
{
    Model model;
    model.face({{0, 0, 0}, {2, 0, 2}, {4, 0, 0}}, "", mesh::polygon_curv);
    model.face({{0, 0, 4}, {1, 0, 4}, {3, 0, 4}, {4, 0, 4}}, "", mesh::polygon_curv);
    model.layer().polygons.set_flags(1, 3); // first and last point give the direction only
    const auto scene = model.scene();
    EXPECT_TRUE(pick_from_above(*scene, 2.0, 2.0));
    EXPECT_FALSE(pick_from_above(*scene, 1.0, 1.0)); // on the straight way
    EXPECT_TRUE(pick_from_above(*scene, 2.0, 4.0));
    EXPECT_FALSE(pick_from_above(*scene, 0.5, 4.0));
    EXPECT_FALSE(pick_from_above(*scene, 3.5, 4.0));
}

TEST(Scene, ShowsLoosePointsThatNoPickFinds)
{
    Model model;
    model.point(0.0, 0.0, 0.0);
    model.point(1.0, 0.0, 0.0);
    const auto scene = model.scene();
    EXPECT_FALSE(pick_from_above(*scene, 0.0, 0.0));
    EXPECT_GT(drawn_pixels(framed_picture(model, 100, 100, 4)), 0);
}

TEST(Scene, LeavesOutWhatHasNoPlace)
{
    Model model;
    model.floor(0.0, 0.0, 0.0, 1.0);
    model.face({{0, 5, 0}, {std::numeric_limits<double>::quiet_NaN(), 5, 1}, {1, 5, 1}});
    model.face({{0, 5, 0}, {std::numeric_limits<double>::infinity(), 5, 1}});
    const auto scene = model.scene();
    EXPECT_EQ(scene->triangle_count(), 2U);
    EXPECT_TRUE(std::isfinite(scene->bounds()->max.x));
    EXPECT_TRUE(pick_from_above(*scene, 0.2, 0.2));
}

TEST(Scene, HasNoBoundsWhenEmpty)
{
    const auto scene = Model().scene();
    EXPECT_FALSE(scene->bounds());
    EXPECT_EQ(scene->framed(Camera(), 2.0), Camera());
    EXPECT_FALSE(picture::pick(*scene, View(Camera(), 10, 10), 5.0, 5.0));
}

class PlaceTest : public testing::TestWithParam<std::pair<double, double>> {};

TEST_P(PlaceTest, IsPickedAsWellAsAnywhere)
{
    const auto [size, away] = GetParam();
    Model model;
    for (int column = 0; column < 10; ++column)
        for (int row = 0; row < 10; ++row)
            model.floor(away + size * (column + 0.5), 0.0, away + size * (row + 0.5), size / 2.0);
    const auto scene = model.scene();
    for (int column = 0; column < 10; ++column)
        for (int row = 0; row < 10; ++row) {
            const auto found =
                pick_from_above(*scene, away + size * (column + 0.45), away + size * (row + 0.55));
            ASSERT_TRUE(found) << column << ' ' << row;
            EXPECT_EQ(found->polygon.polygon, static_cast<std::uint32_t>(column * 10 + row));
            EXPECT_NEAR(found->position.x, away + size * (column + 0.45), size * 0.01);
        }
}

INSTANTIATE_TEST_SUITE_P(Places, PlaceTest,
                         testing::Values(std::pair(1.0, 0.0), std::pair(1e-6, 0.0),
                                         std::pair(1e6, 0.0), std::pair(1.0, 1e9),
                                         std::pair(1e-3, -1e6), std::pair(1e300, 0.0)));

TEST(VisiblePolygons, AreThoseSeenInTheRectangleEachOnce)
{
    Model model;
    model.floor(-2.0, 0.0, 0.0, 1.0);
    model.floor(2.0, 0.0, 0.0, 1.0);
    model.floor(2.0, -1.0, 0.0, 0.5); // hidden below
    const auto scene = model.scene();
    const View view(scene->framed(from_above(), 2.0), 200, 100);
    const std::vector<PolygonId> both{{0, 0}, {0, 1}};
    EXPECT_EQ(picture::visible_polygons(*scene, view, {-50, -50, 1000, 1000}), both);
    EXPECT_EQ(picture::visible_polygons(*scene, view, {0, 0, 90, 100}),
              (std::vector<PolygonId>{{0, 0}}));
    EXPECT_TRUE(picture::visible_polygons(*scene, view, {95, 0, 105, 100}).empty());
    EXPECT_TRUE(picture::visible_polygons(*scene, view, {50, 50, 50, 50}).empty());
}

/// A look for each surface, whichever layers have it: with as many layers as surfaces a colour kept
/// for each of both would be ten thousand million.
TEST(Scene, CostsWhatItShowsWithManySurfacesAndManyLayers)
{
    constexpr std::uint32_t many = 100'000;
    mesh::Document document;
    std::vector<mesh::SurfaceLook> looks(many);
    for (std::uint32_t i = 0; i < many; ++i) {
        looks[i].name = std::to_string(i);
        document.tags.append(looks[i].name);
    }
    document.layers.resize(many);
    const picture::Scene scene(picture::all_layers(document, looks));
    EXPECT_EQ(scene.triangle_count(), 0u);
}

} // namespace
