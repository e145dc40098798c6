// SPDX-License-Identifier: MIT
#include <algorithm>
#include <atomic>

#include <gtest/gtest.h>

#include "picture/render/progressive.h"
#include "tests/picture/scenes.h"

namespace {

using picture::Camera;
using picture::Image;
using picture::Progressive;
using picture::View;
using picture::Work;

View view_of(const picture::Scene& scene, int width, int height)
{
    return {scene.framed(Camera(), static_cast<double>(width) / height), width, height};
}

TEST(Progressive, GivesTheSameBytesWithAnyNumberOfThreads)
{
    const auto scene = box_and_ball().scene();
    const View view = view_of(*scene, 150, 90);
    Progressive one(scene, view, {});
    Progressive two(scene, view, {});
    Progressive seven(scene, view, {});
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(one.add_pass({.threads = 1}));
        EXPECT_TRUE(two.add_pass({.threads = 2}));
        EXPECT_TRUE(seven.add_pass({.threads = 7}));
    }
    EXPECT_EQ(one.image(), two.image());
    EXPECT_EQ(one.image(), seven.image());
}

TEST(Progressive, GivesTheSameBytesForFacesThatLieInEachOther)
{
    const auto build = [] {
        Model model;
        for (int i = 0; i < 40; ++i) {
            const std::string name = "S" + std::to_string(i);
            model.look(name, static_cast<float>(i) / 40.0F, 0.5F,
                       1.0F - static_cast<float>(i) / 40.0F);
            model.floor(0.0, 0.0, 0.0, 1.0, name);
        }
        return model.scene();
    };
    const Camera camera = build()->framed(Camera(), 1.5);
    const Image first = picture_of(build(), camera, 90, 60, 2);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(picture_of(build(), camera, 90, 60, 2), first);
}

TEST(Progressive, GoesOnAfterACancelAsIfThereHadBeenNone)
{
    const auto scene = box_and_ball().scene();
    const View view = view_of(*scene, 200, 120);
    Progressive through(scene, view, {});
    through.add_pass();
    through.add_pass();

    Progressive halted(scene, view, {});
    std::atomic<bool> cancel{false};
    Work work{.threads = 1, .cancel = &cancel};
    work.progress = [&](std::size_t done, std::size_t) { cancel = done >= 5; };
    int calls = 0;
    while (halted.passes() < 2) {
        cancel = false;
        ++calls;
        // every call finishes a tile at least, whether it was done before or not
        if (halted.add_pass(work))
            continue;
        work.progress = [&, wanted = 5 + 4 * calls](std::size_t done, std::size_t) {
            cancel = done >= static_cast<std::size_t>(wanted);
        };
    }
    EXPECT_GT(calls, 3);
    EXPECT_EQ(halted.image(), through.image());
}

TEST(Progressive, DoesNothingOnceCancelled)
{
    const auto scene = box_and_ball().scene();
    Progressive progressive(scene, view_of(*scene, 100, 60), {});
    const Image before = progressive.image();
    const std::atomic<bool> cancel{true};
    EXPECT_FALSE(progressive.add_pass({.cancel = &cancel}));
    EXPECT_FALSE(progressive.coarse(8, {.cancel = &cancel}));
    EXPECT_EQ(progressive.passes(), 0U);
    EXPECT_EQ(progressive.image(), before);
}

TEST(Progressive, TellsOfEveryTileWithOneThread)
{
    const auto scene = Model().scene();
    Progressive progressive(scene, View(Camera(), 100, 40), {});
    std::vector<std::size_t> told;
    Work work{.threads = 1};
    work.progress = [&](std::size_t done, std::size_t tiles) {
        EXPECT_EQ(tiles, 8U);
        told.push_back(done);
    };
    progressive.add_pass(work);
    EXPECT_EQ(told, (std::vector<std::size_t>{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(Progressive, ShowsACoarsePictureThatFinerOnesReplace)
{
    const Model model = box_and_ball();
    const auto scene = model.scene();
    const View view = view_of(*scene, 160, 90);
    Progressive progressive(scene, view, {});
    EXPECT_TRUE(progressive.coarse(8));
    const Image coarse = progressive.image();
    EXPECT_TRUE(std::equal(coarse.at(80, 40), coarse.at(80, 40) + 4, coarse.at(87, 47)));
    const Image fine = picture_of(scene, view.camera(), 160, 90, 16);
    EXPECT_LT(difference(coarse, fine).mean, 25.0);
    EXPECT_LT(difference(coarse, fine).mean,
              difference(Progressive(scene, view, {}).image(), fine).mean);
    progressive.add_pass();
    Progressive without(scene, view, {});
    without.add_pass();
    EXPECT_EQ(progressive.image(), without.image());
}

TEST(Progressive, GetsNearerToTheEndWithEveryFewPasses)
{
    const auto scene = box_and_ball().scene();
    const Camera camera = scene->framed(Camera(), 1.5);
    const Image end = picture_of(scene, camera, 120, 80, 256);
    double last = 1e9;
    for (const unsigned passes : {1U, 4U, 16U, 64U}) {
        const double apart = difference(picture_of(scene, camera, 120, 80, passes), end).mean;
        EXPECT_LT(apart, 0.75 * last);
        last = apart;
    }
    EXPECT_LT(last, 1.0);
}

} // namespace
