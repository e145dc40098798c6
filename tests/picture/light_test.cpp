// SPDX-License-Identifier: MIT
// What falls onto a mesh: light, shadow, and the colours in it.
#include <cmath>

#include <gtest/gtest.h>

#include "picture/image/colour.h"
#include "picture/render/progressive.h"
#include "picture/view/view.h"
#include "tests/picture/scenes.h"

namespace {

using picture::Camera;
using picture::Image;
using picture::Look;
using picture::StandardView;
using picture::View;

constexpr int width = 320;
constexpr int height = 240;

/// A camera that looks down on the ground from behind.
Camera camera_above()
{
    Camera camera;
    camera.azimuth_deg = 0.0;
    camera.elevation_deg = 50.0;
    camera.height = 8.0;
    return camera;
}

/// How bright a place of the mesh is shown.
double shown(const Model& model, const mesh::Vec3& place, const Look& look = {})
{
    const Image image = picture_of(model.scene(), camera_above(), width, height, 32, look);
    const auto pixel = View(camera_above(), width, height).project(place);
    return brightness(image, static_cast<int>(pixel->x), static_cast<int>(pixel->y), 1);
}

TEST(Light, IsLessUnderARoofThanInTheOpenAndLeastFarBelowIt)
{
    // The roof stands high to the right, out of the sun's way: only sky is taken.
    Model model;
    model.floor(0.0, 0.0, 0.0, 6.0);
    const double open = shown(model, {0.0, 0.0, -1.5});
    model.floor(2.5, 1.0, 1.0, 2.0);
    const double beside = shown(model, {0.2, 0.0, -1.5});
    const double below = shown(model, {1.5, 0.0, -0.85});
    EXPECT_LT(beside, open - 1.0);
    EXPECT_LT(below, beside - 10.0);
}

TEST(Light, LeavesAShadowOnTheSideAwayFromTheSun)
{
    // The sun stands over the viewer's left shoulder.
    Model model;
    model.floor(0.0, 0.0, 0.0, 6.0);
    model.box({-0.5, 0.0, -0.5}, {0.5, 3.0, 0.5});
    const double lit = shown(model, {-2.0, 0.0, -0.5});
    const double shadow = shown(model, {2.0, 0.0, 1.2});
    EXPECT_GT(lit, 1.4 * shadow);
}

TEST(Light, IsTheSameOnBothSidesOfAPolygon)
{
    const std::vector<mesh::Vec3> square{{-2, 0, -2}, {-2, 0, 2}, {2, 0, 2}, {2, 0, -2}};
    Model front;
    front.face(square);
    Model back;
    back.face({square.rbegin(), square.rend()});
    EXPECT_NEAR(shown(front, {0, 0, 0}), shown(back, {0, 0, 0}), 1.0);
}

TEST(Light, ShowsTheColoursOfSurfacesAndTheDefaultWithoutALook)
{
    Model model;
    model.look("Red", 0.9F, 0.1F, 0.1F);
    model.floor(-1.5, 0.0, 0.0, 1.0, "Red");
    model.floor(1.5, 0.0, 0.0, 1.0, "Unknown");
    const Image image = picture_of(model.scene(), camera_above(), width, height, 16);
    const View view(camera_above(), width, height);
    const auto pixel = [&](double x) {
        const auto place = view.project({x, 0.0, 0.0});
        return image.at(static_cast<int>(place->x), static_cast<int>(place->y));
    };
    EXPECT_GT(pixel(-1.5)[0], 3 * pixel(-1.5)[1]);
    EXPECT_NEAR(pixel(1.5)[0], pixel(1.5)[2], 25);
    EXPECT_GT(pixel(1.5)[1], 150);
}

TEST(Light, TintsSelectedPolygonsOnly)
{
    Model model;
    model.floor(-1.5, 0.0, 0.0, 1.0);
    model.floor(1.5, 0.0, 0.0, 1.0);
    Look look;
    look.selected = std::make_shared<const picture::PolygonMarks>(picture::PolygonMarks{{0, 1}});
    const Image image = picture_of(model.scene(), camera_above(), width, height, 8, look);
    const View view(camera_above(), width, height);
    const auto pixel = [&](double x) {
        const auto place = view.project({x, 0.0, 0.0});
        return image.at(static_cast<int>(place->x), static_cast<int>(place->y));
    };
    EXPECT_LT(std::abs(pixel(-1.5)[0] - pixel(-1.5)[2]), 30);
    EXPECT_GT(pixel(1.5)[0] - pixel(1.5)[2], 60);
}

TEST(Light, MixesAGhostWithWhatIsBehindIt)
{
    Model ground;
    ground.floor(0.0, 0.0, 0.0, 3.0);
    Model clone;
    clone.box({-0.5, 0.1, -0.5}, {0.5, 1.0, 0.5});
    Look look;
    look.ghost = clone.scene();
    const Image image = picture_of(ground.scene(), camera_above(), width, height, 8, look);
    const auto place = View(camera_above(), width, height).project({0.0, 1.0, 0.0});
    const std::uint8_t* const ghost =
        image.at(static_cast<int>(place->x), static_cast<int>(place->y));
    EXPECT_GT(ghost[2], ghost[0] + 30); // its blue
    EXPECT_GT(ghost[0], 90);            // and the ground's light behind it
    EXPECT_NEAR(image.at(20, height - 20)[0], image.at(20, height - 20)[2], 40);

    Model below;
    below.box({-0.5, -2.0, -0.5}, {0.5, -1.0, 0.5});
    look.ghost = below.scene();
    EXPECT_EQ(picture_of(ground.scene(), camera_above(), width, height, 2, look),
              picture_of(ground.scene(), camera_above(), width, height, 2));
}

TEST(Light, ShadesSmoothlyOverEdgesBelowTheSmoothingAngleOnly)
{
    // Two slopes that meet in a ridge along z at 40 degrees.
    const auto roof = [](double smoothing) {
        Model model;
        model.look("Roof", 0.8F, 0.8F, 0.8F, smoothing);
        const double drop = 2.0 * std::tan(0.349);
        const std::uint32_t a = model.point(-2, -drop, -2);
        const std::uint32_t b = model.point(-2, -drop, 2);
        const std::uint32_t c = model.point(0, 0, 2);
        const std::uint32_t d = model.point(0, 0, -2);
        const std::uint32_t e = model.point(2, -drop, 2);
        const std::uint32_t f = model.point(2, -drop, -2);
        model.polygon({a, b, c, d}, "Roof");
        model.polygon({d, c, e, f}, "Roof");
        return model;
    };
    const auto step = [](const Model& model) {
        return shown(model, {-0.15, 0, 0}) - shown(model, {0.15, 0, 0});
    };
    EXPECT_GT(step(roof(0.0)), 20.0);
    EXPECT_GT(step(roof(0.6)), 20.0); // 34 degrees
    EXPECT_LT(step(roof(0.8)), 8.0);  // 46 degrees
}

TEST(Light, LeavesFlatSurfacesBesideSmoothOnesAsTheyAre)
{
    Model model;
    model.look("Smooth", 0.8F, 0.8F, 0.8F, 1.5);
    model.floor(0.0, 0.0, 0.0, 2.0);
    const double alone = shown(model, {0.5, 0.0, 0.0});
    model.floor(3.0, -0.01, 0.0, 1.0, "Smooth");
    EXPECT_NEAR(shown(model, {0.5, 0.0, 0.0}), alone, 1.0);
    EXPECT_NEAR(shown(model, {2.5, 0.0, 0.0}), alone, 5.0);
}

TEST(Light, DrawsEdgesOfPolygonsButNotOfTheirTriangles)
{
    Model model;
    model.floor(0.0, 0.0, -1.0, 1.0);
    model.floor(0.0, 0.0, 1.0, 1.0);
    Look look;
    look.wireframe = true;
    const Image plain = picture_of(model.scene(), camera_above(), width, height, 16);
    const Image wired = picture_of(model.scene(), camera_above(), width, height, 16, look);
    const auto darker = [&](const mesh::Vec3& place) {
        const auto pixel = View(camera_above(), width, height).project(place);
        const auto x = static_cast<int>(pixel->x);
        const auto y = static_cast<int>(pixel->y);
        return brightness(plain, x, y, 0) - brightness(wired, x, y, 0);
    };
    EXPECT_GT(darker({0.3, 0.0, 0.0}), 40.0);
    EXPECT_EQ(darker({0.0, 0.0, 1.0}), 0.0); // where both diagonals run
    EXPECT_EQ(darker({0.0, 0.0, -1.0}), 0.0);
}

TEST(Light, DrawsGridAndAxesBehindTheMeshAndBesideIt)
{
    Model model;
    model.box({0.5, 0.1, 0.5}, {1.5, 1.0, 1.5});
    Look look;
    look.grid = true;
    look.axes = true;
    const Image plain = picture_of(model.scene(), camera_above(), width, height, 4);
    const Image guided = picture_of(model.scene(), camera_above(), width, height, 4, look);
    const View view(camera_above(), width, height);
    const auto at = [&](const Image& image, const mesh::Vec3& place) {
        const auto pixel = view.project(place);
        return image.at(static_cast<int>(pixel->x), static_cast<int>(pixel->y));
    };
    EXPECT_GT(at(guided, {-2.0, 0.0, 0.0})[0], at(guided, {-2.0, 0.0, 0.0})[2] + 40);
    EXPECT_GT(at(guided, {0.0, 0.0, -2.0})[2], at(guided, {0.0, 0.0, -2.0})[0] + 40);
    EXPECT_LT(at(guided, {-2.0, 0.0, -1.0})[0], at(plain, {-2.0, 0.0, -1.0})[0] - 5);
    EXPECT_EQ(at(guided, {1.0, 1.0, 1.0})[0], at(plain, {1.0, 1.0, 1.0})[0]);
}

TEST(Colour, GoesToTheScreenAndBack)
{
    for (int i = 0; i <= 255; ++i)
        EXPECT_EQ(picture::to_byte(
                      picture::to_screen(picture::to_linear(static_cast<float>(i) / 255.0F))),
                  i);
    EXPECT_NEAR(picture::to_linear(0.5F), 0.2140F, 1e-4F);
}

TEST(Colour, ToneMapNeverDarkensNorPassesWhite)
{
    float last = -1.0F;
    for (float light = 0.0F; light < 20.0F; light += 0.01F) {
        const float mapped = picture::tone_map(light);
        EXPECT_GE(mapped, last);
        EXPECT_LE(mapped, 1.0F);
        last = mapped;
    }
    EXPECT_EQ(picture::tone_map(0.5F), 0.5F);
}

} // namespace
