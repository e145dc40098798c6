// SPDX-License-Identifier: MIT
#include "picture/maps/legend.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include <fmt/format.h>

#include "picture/image/colour.h"
#include "picture/image/text.h"
#include "picture/maps/colour_scale.h"

namespace picture {

namespace {

struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

void put(Image& image, int x, int y, const Float3& linear)
{
    std::uint8_t* const pixel = image.at(x, y);
    pixel[0] = to_byte(to_screen(linear.x));
    pixel[1] = to_byte(to_screen(linear.y));
    pixel[2] = to_byte(to_screen(linear.z));
}

/// Lightens the background of the legend, so that black text is readable; transparent pixels become
/// white.
void draw_plate(Image& image, const Box& box)
{
    for (int y = box.top; y < box.top + box.height; ++y)
        for (int x = box.left; x < box.left + box.width; ++x) {
            std::uint8_t* const pixel = image.at(x, y);
            for (int i = 0; i < 3; ++i) {
                const int below = (pixel[i] * pixel[3] + 255 * (255 - pixel[3])) / 255;
                pixel[i] = static_cast<std::uint8_t>((below + 4 * 255) / 5);
            }
            pixel[3] = 255;
        }
}

/// Draws the scale from left to right; for a map of steps, its first steps as fields of equal
/// width.
void draw_bar(Image& image, const Box& box, const MapValues& map, std::size_t fields)
{
    for (int x = 0; x < box.width; ++x) {
        const float share = (static_cast<float>(x) + 0.5F) / static_cast<float>(box.width);
        Float3 colour;
        if (fields != 0)
            colour = step_colour(static_cast<std::size_t>(share * static_cast<float>(fields)));
        else
            colour = scale_colour(map, map.lowest * (1.0F - share) + map.highest * share);
        for (int y = 0; y < box.height; ++y)
            put(image, box.left + x, box.top + y, colour);
    }
}

std::string number(float value) { return fmt::format("{:.4g}", value); }

} // namespace

void draw_legend(Image& image, const MapValues& map, double scale)
{
    constexpr std::size_t most_fields = 40;
    const auto pixels = [scale](double size) {
        return std::max(1, static_cast<int>(std::lround(size * scale)));
    };
    const TextWriter text(15.0 * scale);
    const bool steps = !map.steps.empty();
    const std::size_t fields = std::min(most_fields, map.steps.size());
    std::string title = map.name;
    if (steps)
        title += fmt::format(": {} values, a colour each", map.steps.size());
    const std::string low = number(map.lowest);
    std::string high = number(map.highest);
    if (fields < map.steps.size()) // the bar shows a part of them
        high = number(map.steps[fields - 1]) + " ... " + high;

    const int gap = pixels(10);
    const int line = pixels(20);
    Box bar{0, 0, std::max(pixels(260), text.width(title)), pixels(16)};
    const Box plate{gap, image.height - gap - (3 * gap + 2 * line + bar.height) + gap,
                    bar.width + 2 * gap, 2 * gap + 2 * line + bar.height};
    if (plate.left + plate.width > image.width || plate.top < 0)
        return;
    bar.left = plate.left + gap;
    bar.top = plate.top + gap + line;
    draw_plate(image, plate);
    text.write(image, bar.left, plate.top + gap + line - pixels(8), title);
    draw_bar(image, bar, map, fields);
    const int below = bar.top + bar.height + line - pixels(4);
    text.write(image, bar.left, below, low);
    text.write(image, bar.left + bar.width - text.width(high), below, high);
    if (map.lowest < map.highest && !steps) {
        const std::string middle = number(map.lowest * 0.5F + map.highest * 0.5F);
        text.write(image, bar.left + (bar.width - text.width(middle)) / 2, below, middle);
    }
}

} // namespace picture
