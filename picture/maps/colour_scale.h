// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "picture/maps/map_values.h"
#include "picture/scene/float3.h"

namespace picture {

/// The linear colour for a value of a map: from dark blue (lowest value) to light yellow (highest),
/// with uniformly increasing lightness; or, for a map of steps, the colour of the nearest step.
/// Grey for NaN.
[[nodiscard]] Float3 scale_colour(const MapValues& map, float value) noexcept;

/// The linear colour of a step; consecutive steps have distinct colours.
[[nodiscard]] Float3 step_colour(std::size_t step) noexcept;

} // namespace picture
