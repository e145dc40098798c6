// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "picture/maps/map_values.h"
#include "picture/scene/float3.h"

namespace picture {

/// The colour that stands for a value of a map, linear light: from dark blue for the lowest value
/// to light yellow for the highest, of evenly growing lightness; or, for a map of steps, that of
/// the nearest step. Not-a-number: grey.
[[nodiscard]] Float3 scale_colour(const MapValues& map, float value) noexcept;

/// The colour of a step: neighbours differ much.
[[nodiscard]] Float3 step_colour(std::size_t step) noexcept;

} // namespace picture
