// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "picture/scene/float3.h"

namespace picture {

/// Encodes a direction in 32 bits (octahedral encoding). The error is below 0.01 degrees.
[[nodiscard]] inline std::uint32_t pack_normal(const Float3& normal) noexcept
{
    const float sum = std::fabs(normal.x) + std::fabs(normal.y) + std::fabs(normal.z);
    if (!(sum > 0.0F))
        return 0x80008000U;
    float u = normal.x / sum;
    float v = normal.y / sum;
    if (normal.z < 0.0F) { // the lower hemisphere maps to the outer triangles
        const float folded = (1.0F - std::fabs(v)) * (u < 0.0F ? -1.0F : 1.0F);
        v = (1.0F - std::fabs(u)) * (v < 0.0F ? -1.0F : 1.0F);
        u = folded;
    }
    const auto half = [](float value) {
        const float scaled = std::round(std::clamp(value, -1.0F, 1.0F) * 32767.0F);
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(scaled) + 32768);
    };
    return half(u) << 16U | half(v);
}

[[nodiscard]] inline Float3 unpack_normal(std::uint32_t packed) noexcept
{
    const auto whole = [](std::uint32_t half) {
        return static_cast<float>(static_cast<std::int32_t>(half) - 32768) / 32767.0F;
    };
    float u = whole(packed >> 16U);
    float v = whole(packed & 0xFFFFU);
    const float z = 1.0F - std::fabs(u) - std::fabs(v);
    if (z < 0.0F) {
        const float folded = (1.0F - std::fabs(v)) * (u < 0.0F ? -1.0F : 1.0F);
        v = (1.0F - std::fabs(u)) * (v < 0.0F ? -1.0F : 1.0F);
        u = folded;
    }
    return normalized({u, v, z});
}

} // namespace picture
