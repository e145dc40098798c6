// SPDX-License-Identifier: MIT
// Pictures of small scenes beside what they have looked like. They are traced again and compared
// with a tolerance: the last bits of a sine may differ from machine to machine.
//   DASTREL_UPDATE_GOLDENS=1 test_picture --gtest_filter='*Golden*'    takes the new ones
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

#include "picture/image/png.h"
#include "picture/maps/legend.h"
#include "tests/picture/scenes.h"

namespace {

namespace fs = std::filesystem;
using picture::Image;

constexpr int width = 240;
constexpr int height = 160;
constexpr unsigned passes = 64;

Image read(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    return picture::decode_png(std::as_bytes(std::span(bytes)));
}

void write(const Image& image, const fs::path& path)
{
    const std::vector<std::byte> bytes = picture::encode_png(image);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

struct Golden {
    const char* name;
    std::function<Image()> make;
};

class GoldenTest : public testing::TestWithParam<Golden> {};

TEST_P(GoldenTest, LooksAsItDid)
{
    const fs::path path = fs::path(DASTREL_SOURCE_DIR) / "tests/picture/goldens" /
                          (std::string(GetParam().name) + ".png");
    const Image image = GetParam().make();
    if (std::getenv("DASTREL_UPDATE_GOLDENS") != nullptr && std::getenv("CI") == nullptr) {
        write(image, path);
        GTEST_SKIP() << "taken as it is: " << path;
    }
    ASSERT_TRUE(fs::exists(path)) << path;
    const Image golden = read(path);
    ASSERT_EQ(golden.width, image.width);
    ASSERT_EQ(golden.height, image.height);
    const Difference apart = difference(image, golden);
    if (apart.mean > 0.5 || apart.largest > 100)
        write(image, fs::temp_directory_path() / (std::string(GetParam().name) + ".png"));
    EXPECT_LE(apart.mean, 0.5) << "the new picture is in " << fs::temp_directory_path();
    EXPECT_LE(apart.largest, 100);
}

Image plain() { return framed_picture(box_and_ball(), width, height, passes); }

Image wireframe_with_guides()
{
    picture::Look look;
    look.wireframe = true;
    look.grid = true;
    look.axes = true;
    return framed_picture(box_and_ball(), width, height, passes, look);
}

Image by_map()
{
    Model model = box_and_ball();
    mesh::VertexMap& map = model.layer().maps.emplace_back(mesh::map_wght, "Height", 1);
    // The ground's points have no value.
    for (std::uint32_t point = 4; point < model.layer().points.size(); ++point)
        map.set(point, std::vector{static_cast<float>(model.layer().points[point].y)});
    picture::Look look;
    look.map = picture::read_map(model.scene_layers(), "Height");
    const auto scene = model.scene();
    Image image =
        picture_of(scene, scene->framed(picture::Camera(), 480.0 / 320.0), 480, 320, 32, look);
    picture::draw_legend(image, *look.map);
    return image;
}

Image from_above()
{
    const Model model = box_and_ball();
    const auto scene = model.scene();
    picture::Camera camera;
    camera.look_from(picture::StandardView::top);
    return picture_of(scene, scene->framed(camera, 1.5), width, height, passes);
}

Image ghost_and_selection()
{
    const Model model = box_and_ball();
    Model clones;
    clones.box({-3.5, 0.0, -3.5}, {-2.5, 1.5, -2.5});
    clones.box({2.0, 0.0, -3.5}, {3.0, 1.0, -2.5});
    picture::Look look;
    look.ghost = clones.scene();
    look.selected =
        std::make_shared<const picture::PolygonMarks>(picture::PolygonMarks{{0, 1, 1, 1, 1, 1, 1}});
    return framed_picture(model, width, height, passes, look);
}

/// A concave polygon, one with a hole, lines, a curve and dots, standing on a ground.
Image odd_shapes()
{
    Model model;
    model.look("Sheet", 0.85F, 0.6F, 0.2F);
    model.floor(0.0, 0.0, 0.0, 4.0);
    model.face({{-3, 0, 2},
                {-3, 3, 2},
                {-2, 3, 2},
                {-2, 1, 2},
                {-1, 1, 2},
                {-1, 3, 2},
                {0, 3, 2},
                {0, 0, 2}},
               "Sheet");
    model.face({{1, 0, 1},
                {1, 2.4, 1},
                {3.4, 2.4, 1},
                {3.4, 0, 1},
                {1, 0, 1},
                {1.6, 0.6, 1},
                {2.8, 0.6, 1},
                {2.8, 1.8, 1},
                {1.6, 1.8, 1},
                {1.6, 0.6, 1}},
               "Sheet");
    model.face({{-3, 0, -2}, {-3, 2, -2}});
    model.face({{-2, 0, -2}, {-1, 1.5, -2}, {0, 0.2, -2}, {1, 1.5, -2}}, "", mesh::polygon_curv);
    for (int i = 0; i < 5; ++i)
        model.point(2.0 + 0.3 * i, 0.5, -2.0);
    return framed_picture(model, width, height, passes);
}

INSTANTIATE_TEST_SUITE_P(Pictures, GoldenTest,
                         testing::Values(Golden{"box_and_ball", plain},
                                         Golden{"wireframe_with_guides", wireframe_with_guides},
                                         Golden{"by_map", by_map}, Golden{"from_above", from_above},
                                         Golden{"ghost_and_selection", ghost_and_selection},
                                         Golden{"odd_shapes", odd_shapes}),
                         [](const auto& tested) { return std::string(tested.param.name); });

/// The same scene, made `size` times as large and moved away.
Model moved(double size, double away)
{
    Model model = box_and_ball();
    mesh::Buffer<mesh::Vec3>& points = model.layer().points;
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = {points[i].x * size + away, points[i].y * size - away,
                     points[i].z * size + 2.0 * away};
    return model;
}

TEST(Picture, IsTheSameOfATinyMeshOfAHugeOneAndFarFromTheOrigin)
{
    const Image here = framed_picture(box_and_ball(), width, height, 16);
    for (const auto& [size, away] :
         {std::pair(1e-6, 0.0), std::pair(1e6, 0.0), std::pair(1.0, 1e7), std::pair(1e-6, 1.0)}) {
        SCOPED_TRACE(testing::Message() << size << " times as large, " << away << " away");
        const Image there = framed_picture(moved(size, away), width, height, 16);
        EXPECT_LT(difference(here, there).mean, 0.3);
    }
}

TEST(Picture, OfAnEmptyMeshIsTheBackdropAlone)
{
    const Image image = framed_picture(Model(), 60, 40, 2);
    for (int y = 0; y < image.height; ++y)
        for (int x = 1; x < image.width; ++x)
            ASSERT_NEAR(image.at(x, y)[0], image.at(0, y)[0], 1);
    EXPECT_GT(image.at(0, 0)[0], image.at(0, 39)[0] + 10);
}

TEST(Picture, OfOnePointShowsADotInTheMiddle)
{
    for (const double away : {0.0, 1e6}) {
        Model model;
        model.point(away, away, away);
        const Image image = framed_picture(model, 600, 400, 8);
        EXPECT_LT(brightness(image, 300, 200, 0), 100.0);
        const int drawn = drawn_pixels(image);
        EXPECT_GT(drawn, 0);
        EXPECT_LT(drawn, 60);
    }
}

TEST(Picture, OfALineIsThin)
{
    Model model;
    model.face({{-1, 0, 0}, {1, 0, 0}});
    picture::Camera camera;
    camera.look_from(picture::StandardView::back);
    const auto scene = model.scene();
    const Image image = picture_of(scene, scene->framed(camera, 1.0), 600, 600, 16);
    for (int x = 50; x < 550; ++x) {
        int drawn = 0;
        for (int y = 200; y < 400; ++y)
            drawn += image.at(x, y)[0] + 20 < image.at(2, y)[0] ? 1 : 0;
        EXPECT_GE(drawn, 1) << x;
        EXPECT_LE(drawn, 3) << x;
    }
}

} // namespace
