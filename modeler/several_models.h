// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace modeler {

/// Says that every clone is made of all these models at once; how to have one or the other is the
/// caller's to add. Empty where there are fewer than two.
/// @param models  their names
/// @param points  of all of them together, as one clone has them
[[nodiscard]] std::string several_models(std::span<const std::string> models, std::uint64_t points);

} // namespace modeler
