// SPDX-License-Identifier: MIT
/// Integer arithmetic that is defined for every input.
#pragma once

#include <cstdint>
#include <limits>

namespace dastrel {

/// `number` truncated towards 0. What does not fit an int, NaN included, becomes INT_MIN, the
/// result of the x86 conversion instruction.
constexpr int to_int(double number) noexcept
{
    if (!(number > -2147483649.0 && number < 2147483648.0))
        return std::numeric_limits<int>::min();
    return static_cast<int>(number);
}

/// a - b in 32 bits, wrapping around.
constexpr int wrapping_difference(int a, int b) noexcept
{
    return static_cast<int>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

/// a + b in 32 bits, wrapping around.
constexpr int wrapping_sum(int a, int b) noexcept
{
    return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// |a| in 32 bits; the most negative int, whose opposite does not fit, stays as it is.
constexpr int wrapping_abs(int a) noexcept { return a < 0 ? wrapping_difference(0, a) : a; }

} // namespace dastrel
