// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mesh {

/// The noun as it stands behind that number: `point` where it is 1, else `points`.
/// @param noun  forms its plural with an s
[[nodiscard]] inline std::string plural(std::uint64_t number, std::string_view noun)
{
    return std::string(noun) + (number == 1 ? "" : "s");
}

/// `1 point`, `2 points`.
[[nodiscard]] inline std::string counted(std::uint64_t number, std::string_view noun)
{
    return std::to_string(number) + " " + plural(number, noun);
}

} // namespace mesh
