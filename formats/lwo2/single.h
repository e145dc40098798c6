// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace formats::lwo2 {

/// Converts the bits of a single-precision number to double. Keeps NaN payloads: a plain conversion
/// would turn a signalling NaN into a quiet one.
[[nodiscard]] inline double widen(std::uint32_t bits) noexcept
{
    constexpr std::uint32_t exponent = 0x7F800000u;
    const std::uint32_t fraction = bits & 0x007FFFFFu;
    if ((bits & exponent) != exponent || fraction == 0)
        return static_cast<double>(std::bit_cast<float>(bits));
    const std::uint64_t sign = static_cast<std::uint64_t>(bits & 0x80000000u) << 32u;
    return std::bit_cast<double>(sign | 0x7FF0000000000000u |
                                 static_cast<std::uint64_t>(fraction) << 29u);
}

/// The bits of the nearest single-precision number; the inverse of `widen`. A finite double out of
/// range becomes an infinity.
[[nodiscard]] inline std::uint32_t narrow(double value) noexcept
{
    if (!std::isnan(value))
        return std::bit_cast<std::uint32_t>(static_cast<float>(value));
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const auto sign = static_cast<std::uint32_t>(bits >> 32u) & 0x80000000u;
    const auto fraction = static_cast<std::uint32_t>(bits >> 29u) & 0x007FFFFFu;
    return sign | 0x7F800000u | (fraction != 0 ? fraction : 0x00400000u);
}

} // namespace formats::lwo2
