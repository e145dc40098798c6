// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "picture/scene/float3.h"

namespace picture {

/// From a value encoded for a screen (sRGB), 0 to 1, to linear light. What lies outside is cut off.
[[nodiscard]] inline float to_linear(float encoded) noexcept
{
    const float value = std::clamp(encoded, 0.0F, 1.0F);
    return value <= 0.04045F ? value / 12.92F : std::pow((value + 0.055F) / 1.055F, 2.4F);
}

/// The inverse of `to_linear`.
[[nodiscard]] inline float to_screen(float linear) noexcept
{
    const float value = std::clamp(linear, 0.0F, 1.0F);
    return value <= 0.0031308F ? value * 12.92F : 1.055F * std::pow(value, 1.0F / 2.4F) - 0.055F;
}

[[nodiscard]] inline Float3 linear_colour(float red, float green, float blue) noexcept
{
    return {to_linear(red), to_linear(green), to_linear(blue)};
}

/// A byte of a picture out of a value encoded for a screen.
[[nodiscard]] inline std::uint8_t to_byte(float encoded) noexcept
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(encoded, 0.0F, 1.0F) * 255.0F));
}

/// Brings light of any strength into 0 to 1: as it is up to a shoulder, above it ever less.
[[nodiscard]] inline float tone_map(float linear) noexcept
{
    constexpr float shoulder = 0.7F;
    if (linear <= shoulder)
        return std::max(linear, 0.0F);
    constexpr float room = 1.0F - shoulder;
    return shoulder + room * (1.0F - std::exp((shoulder - linear) / room));
}

} // namespace picture
