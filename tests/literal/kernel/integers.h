// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

namespace literal {

/// A double cut towards zero. What does not fit, NaN included, becomes the most negative integer.
[[nodiscard]] inline std::int32_t to_int32(double value)
{
    if (value > -2147483649.0 && value < 2147483648.0) {
        return static_cast<std::int32_t>(value);
    }
    return std::numeric_limits<std::int32_t>::min();
}

/// a + b with the sum wrapped to 32 bits.
[[nodiscard]] inline std::int32_t wrapped_sum(std::int32_t a, std::int32_t b)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// a - b with the difference wrapped to 32 bits.
[[nodiscard]] inline std::int32_t wrapped_difference(std::int32_t a, std::int32_t b)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

/// |a|; the most negative integer stays itself.
[[nodiscard]] inline std::int32_t wrapped_absolute(std::int32_t a)
{
    return a < 0 ? wrapped_difference(0, a) : a;
}

} // namespace literal
