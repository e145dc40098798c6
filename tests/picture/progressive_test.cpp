// SPDX-License-Identifier: MIT
#include <algorithm>
#include <atomic>
#include <cstddef>

#include <gtest/gtest.h>

#include "picture/image/png.h"
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

TEST(Progressive, LetsNothingBeSeenWhereNothingIsOnATransparentBackdrop)
{
    const auto scene = box_and_ball().scene();
    const View view = view_of(*scene, 120, 80);
    const auto picture = [&](bool transparent) {
        picture::Look look;
        look.backdrop.transparent = transparent;
        Progressive progressive(scene, view, look);
        for (int i = 0; i < 5; ++i)
            EXPECT_TRUE(progressive.add_pass());
        return progressive.image();
    };
    const Image opaque = picture(false);
    const Image clear = picture(true);
    int empty = 0;
    int whole = 0;
    int in_part = 0;
    for (int y = 0; y < clear.height; ++y)
        for (int x = 0; x < clear.width; ++x) {
            EXPECT_EQ(opaque.at(x, y)[3], 255);
            const std::uint8_t cover = clear.at(x, y)[3];
            if (cover == 0)
                ++empty;
            else if (cover < 255)
                ++in_part;
            else {
                ++whole;
                for (int i = 0; i < 3; ++i)
                    EXPECT_EQ(clear.at(x, y)[i], opaque.at(x, y)[i]);
            }
        }
    EXPECT_GT(empty, 1000);
    EXPECT_GT(whole, 1000);
    EXPECT_GT(in_part, 50); // edges
    EXPECT_EQ(clear.at(0, 0)[3], 0);
}

TEST(Png, KeepsTheCoverOfAPictureThatIsTransparentInPart)
{
    Image image(3, 2);
    for (std::size_t i = 0; i < image.rgba.size(); ++i)
        image.rgba[i] = static_cast<std::uint8_t>(i * 11);
    EXPECT_EQ(picture::decode_png(picture::encode_png(image)), image);
    const std::size_t colour_type = 25; // of the file's bytes
    EXPECT_EQ(picture::encode_png(image).at(colour_type), std::byte{6});
    for (std::size_t i = 3; i < image.rgba.size(); i += 4)
        image.rgba[i] = 255;
    EXPECT_EQ(picture::encode_png(image).at(colour_type), std::byte{2});
}

} // namespace
