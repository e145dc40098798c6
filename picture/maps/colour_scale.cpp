// SPDX-License-Identifier: MIT
#include "picture/maps/colour_scale.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "picture/image/colour.h"

namespace picture {

namespace {

constexpr Float3 without_value{0.28F, 0.28F, 0.28F};

/// Stops of the scale in sRGB: blue, teal, green, yellow, with increasing lightness, so that the
/// scale is readable in greyscale, too.
constexpr std::array<Float3, 6> stops{{{0.17F, 0.13F, 0.42F},
                                       {0.16F, 0.33F, 0.60F},
                                       {0.10F, 0.53F, 0.60F},
                                       {0.27F, 0.71F, 0.49F},
                                       {0.67F, 0.84F, 0.33F},
                                       {0.99F, 0.93F, 0.45F}}};

} // namespace

Float3 scale_colour(const MapValues& map, float value) noexcept
{
    if (std::isnan(value))
        return without_value;
    if (!map.steps.empty()) {
        auto step = std::lower_bound(map.steps.begin(), map.steps.end(), value);
        // An interpolated value has rounding errors: use the nearest step.
        if (step == map.steps.end() ||
            (step != map.steps.begin() && value - *(step - 1) < *step - value))
            --step;
        return step_colour(static_cast<std::size_t>(step - map.steps.begin()));
    }
    // Halved, since the difference may exceed the range of single precision.
    const float range = map.highest * 0.5F - map.lowest * 0.5F;
    const float share = range > 0.0F ? (value * 0.5F - map.lowest * 0.5F) / range : 0.0F;
    const float place = std::clamp(share, 0.0F, 1.0F) * static_cast<float>(stops.size() - 1);
    const auto below = std::min(static_cast<std::size_t>(place), stops.size() - 2);
    const Float3 colour =
        mix(stops.at(below), stops.at(below + 1), place - static_cast<float>(below));
    return linear_colour(colour.x, colour.y, colour.z);
}

Float3 step_colour(std::size_t step) noexcept
{
    // Hues advance by the golden angle, so that each differs from the last few.
    constexpr double golden = 0.6180339887498949;
    const double turn = std::fmod(static_cast<double>(step) * golden + 0.58, 1.0);
    const auto channel = [turn](double offset) {
        const double place = std::fmod(turn + offset, 1.0) * 6.0;
        const double bright = std::clamp(std::fabs(place - 3.0) - 1.0, 0.0, 1.0);
        return static_cast<float>(0.22 + 0.70 * bright);
    };
    // Every other turn of the colour circle is darker.
    const float shade = step / 8 % 2 == 0 ? 1.0F : 0.72F;
    return linear_colour(channel(0.0) * shade, channel(2.0 / 3.0) * shade,
                         channel(1.0 / 3.0) * shade);
}

} // namespace picture
