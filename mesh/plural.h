// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mesh {

/// The noun in the singular if the number is 1, otherwise in the plural.
/// @param noun  singular of a noun with a regular plural in s
[[nodiscard]] inline std::string plural(std::uint64_t number, std::string_view noun)
{
    return std::string(noun) + (number == 1 ? "" : "s");
}

/// The number with its noun: `1 point`, `2 points`.
[[nodiscard]] inline std::string counted(std::uint64_t number, std::string_view noun)
{
    return std::to_string(number) + " " + plural(number, noun);
}

} // namespace mesh
