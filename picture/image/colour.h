// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "picture/scene/float3.h"

namespace picture {

/// Converts an sRGB value, 0 to 1 (clamped), to linear light.
[[nodiscard]] inline float to_linear(float encoded) noexcept
{
    const float value = std::clamp(encoded, 0.0F, 1.0F);
    return value <= 0.04045F ? value / 12.92F : std::pow((value + 0.055F) / 1.055F, 2.4F);
}

/// Converts linear light, 0 to 1 (clamped), to an sRGB value.
[[nodiscard]] inline float to_screen(float linear) noexcept
{
    const float value = std::clamp(linear, 0.0F, 1.0F);
    return value <= 0.0031308F ? value * 12.92F : 1.055F * std::pow(value, 1.0F / 2.4F) - 0.055F;
}

/// Converts an sRGB colour to linear light.
[[nodiscard]] inline Float3 linear_colour(float red, float green, float blue) noexcept
{
    return {to_linear(red), to_linear(green), to_linear(blue)};
}

/// Converts an sRGB value, 0 to 1 (clamped), to a byte.
[[nodiscard]] inline std::uint8_t to_byte(float encoded) noexcept
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(encoded, 0.0F, 1.0F) * 255.0F));
}

/// Maps linear light of any intensity to 0 to 1: linear up to a shoulder, exponential above.
[[nodiscard]] inline float tone_map(float linear) noexcept
{
    constexpr float shoulder = 0.7F;
    if (linear <= shoulder)
        return std::max(linear, 0.0F);
    constexpr float room = 1.0F - shoulder;
    return shoulder + room * (1.0F - std::exp((shoulder - linear) / room));
}

} // namespace picture
