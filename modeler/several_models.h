// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace modeler {

/// Warning that every clone consists of all these models. The caller appends the advice. Empty for
/// fewer than two models.
/// @param models  names of the models
/// @param points  total number of points, the size of one clone
[[nodiscard]] std::string several_models(std::span<const std::string> models, std::uint64_t points);

} // namespace modeler
