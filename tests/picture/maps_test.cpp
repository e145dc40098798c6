// SPDX-License-Identifier: MIT
#include <array>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "picture/maps/colour_scale.h"
#include "picture/maps/legend.h"
#include "picture/maps/map_values.h"
#include "picture/view/view.h"
#include "tests/picture/scenes.h"

namespace {

using picture::Float3;
using picture::Image;
using picture::MapValues;

void set(mesh::VertexMap& map, std::uint32_t point, float value)
{
    map.set(point, std::array{value});
}

/// A strip of squares; the map's value runs with x.
Model strip()
{
    Model model;
    model.layer().maps.emplace_back(mesh::map_wght, "Height", 1);
    for (int i = 0; i < 4; ++i) {
        model.floor(2.0 * i, 0.0, 0.0, 1.0);
        for (std::uint32_t corner = 0; corner < 4; ++corner) {
            const auto point = static_cast<std::uint32_t>(i) * 4 + corner;
            set(model.layer().maps[0], point,
                static_cast<float>(model.layer().points[point].x) - 3.0F);
        }
    }
    return model;
}

float lightness(const Float3& colour)
{
    return 0.2126F * colour.x + 0.7152F * colour.y + 0.0722F * colour.z;
}

TEST(ReadMap, TakesValuesAndTheirRange)
{
    const Model model = strip();
    const auto map = picture::read_map(model.scene_layers(), "Height");
    ASSERT_TRUE(map);
    EXPECT_EQ(map->lowest, -4.0F);
    EXPECT_EQ(map->highest, 4.0F);
    EXPECT_TRUE(map->steps.empty());
    EXPECT_EQ(picture::value_at(*map, 0, 0, 0), -4.0F);
    EXPECT_TRUE(std::isnan(picture::value_at(*map, 0, 0, 99)));
    EXPECT_TRUE(std::isnan(picture::value_at(*map, 7, 0, 0)));
    EXPECT_EQ(picture::read_map(model.scene_layers(), "height"), nullptr);
}

TEST(ReadMap, PrefersTheValueOfACornerAndPassesOverWhatIsNoNumber)
{
    Model model = strip();
    mesh::VertexMap& map = model.layer().maps[0];
    for (const float value : {1.0F, 2.0F}) { // the last one counts
        map.edit_corners().polygons.push_back(1);
        map.edit_corners().points.push_back(4);
        map.edit_corners().values.push_back(value);
    }
    set(map, 0, std::numeric_limits<float>::infinity());
    const auto read = picture::read_map(model.scene_layers(), "Height");
    EXPECT_EQ(picture::value_at(*read, 0, 1, 4), 2.0F);
    EXPECT_EQ(picture::value_at(*read, 0, 2, 4), -2.0F);
    EXPECT_TRUE(std::isnan(picture::value_at(*read, 0, 0, 0)));
    EXPECT_EQ(read->lowest, -4.0F);
}

TEST(ReadMap, FindsStepsWhereEveryPolygonHasOneValue)
{
    Model model = strip();
    mesh::VertexMap& map = model.layer().maps[0];
    for (std::uint32_t point = 0; point < 16; ++point)
        set(map, point, static_cast<float>(point / 4) * 0.25F);
    const auto read = picture::read_map(model.scene_layers(), "Height");
    EXPECT_EQ(read->steps, (std::vector<float>{0.0F, 0.25F, 0.5F, 0.75F}));
    set(map, 3, 0.5F);
    EXPECT_TRUE(picture::read_map(model.scene_layers(), "Height")->steps.empty());
}

TEST(MapNames, ListEachMapThatCanBeShownOnce)
{
    Model model = strip();
    model.layer().maps.emplace_back(mesh::map_txuv, "Texture", 2);
    model.layer().maps.emplace_back(mesh::map_mnvw, "Weight", 1);
    model.document.layers.emplace_back().maps.emplace_back(mesh::map_wght, "Height", 1);
    EXPECT_EQ(picture::map_names(model.scene_layers()),
              (std::vector<std::string>{"Height", "Weight"}));
}

TEST(ColourScale, GetsLighterAllTheWay)
{
    MapValues map;
    map.lowest = -2.0F;
    map.highest = 6.0F;
    float last = -1.0F;
    for (float value = -2.0F; value <= 6.0F; value += 0.05F) {
        const float now = lightness(picture::scale_colour(map, value));
        EXPECT_GT(now, last) << value;
        last = now;
    }
}

TEST(ColourScale, ShowsWhatHasNoValueInGrey)
{
    const Float3 grey = picture::scale_colour(MapValues(), std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(grey.x, grey.y);
    EXPECT_EQ(grey.y, grey.z);
}

TEST(ColourScale, TellsNeighbouringStepsApart)
{
    for (std::size_t step = 0; step < 500; ++step) {
        const Float3 a = picture::step_colour(step);
        for (std::size_t next = step + 1; next < step + 4; ++next) {
            const Float3 apart = picture::step_colour(next) - a;
            EXPECT_GT(length(apart), 0.12F) << step << ' ' << next;
        }
    }
}

TEST(MapPicture, RunsFromDarkToLightAlongTheMap)
{
    const Model model = strip();
    picture::Look look;
    look.map = picture::read_map(model.scene_layers(), "Height");
    picture::Camera camera;
    camera.look_from(picture::StandardView::top);
    const auto scene = model.scene();
    const Image image = picture_of(scene, scene->framed(camera, 4.0), 200, 50, 8, look);
    double last = 0.0;
    for (int x = 20; x <= 180; x += 20) {
        EXPECT_GT(brightness(image, x, 25), last + 3.0) << x;
        last = brightness(image, x, 25);
    }
}

TEST(Legend, IsDrawnInTheCornerWithTheColoursOfTheScale)
{
    MapValues map;
    map.name = "Density";
    map.highest = 1.0F;
    Image image(640, 400);
    picture::draw_legend(image, map);
    int black = 0;
    int left = image.width;
    int right = 0;
    bool has_low = false;
    bool has_high = false;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            const std::uint8_t* const pixel = image.at(x, y);
            if (pixel[0] + pixel[1] + pixel[2] == 0)
                continue;
            left = std::min(left, x);
            right = std::max(right, x);
            EXPECT_GT(y, 280);
            has_low |= pixel[2] > pixel[1] + 60;
            has_high |= pixel[0] > 230 && pixel[1] > 220 && pixel[2] < 140;
        }
    for (int y = 310; y < 380; ++y)
        for (int x = left; x <= right; ++x)
            black += image.at(x, y)[0] < 60 && image.at(x, y)[1] < 60 ? 1 : 0;
    EXPECT_EQ(left, 10);
    EXPECT_LT(right, 320);
    EXPECT_TRUE(has_low);
    EXPECT_TRUE(has_high);
    EXPECT_GT(black, 100); // letters
}

TEST(Legend, WritesOtherLettersForOtherNames)
{
    MapValues map;
    Image first(640, 400);
    map.name = "Gr\xC3\xBC\xC3\x9F";
    picture::draw_legend(first, map);
    Image second(640, 400);
    map.name = "Gruss";
    picture::draw_legend(second, map);
    Image latin(640, 400);
    map.name = "Gr\xFC\xDF"; // the same in Latin-1
    picture::draw_legend(latin, map);
    EXPECT_NE(first, second);
    EXPECT_EQ(first, latin);
}

TEST(Legend, IsLeftOutOfAPictureTooSmallForIt)
{
    MapValues map;
    map.name = "Density";
    for (const auto& [width, height] : {std::pair(100, 400), std::pair(640, 30)}) {
        Image image(width, height);
        picture::draw_legend(image, map);
        EXPECT_EQ(image, Image(width, height));
    }
}

TEST(Legend, GrowsWithTheScreen)
{
    MapValues map;
    map.name = "Density";
    Image image(640, 400);
    picture::draw_legend(image, map, 2.0);
    EXPECT_NE(image.at(500, 300)[0], 0);
}

} // namespace
