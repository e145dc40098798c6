// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "mesh/vec3.h"

namespace picture {

/// Samples the spline through the points (three or more) of a curve polygon as a polyline. If bit 0
/// (bit 1) of the polygon's flags is set, the first (last) point is only a control point for the
/// direction, and the curve does not reach it.
[[nodiscard]] std::vector<mesh::Vec3> spline(std::span<const mesh::Vec3> points,
                                             std::uint8_t flags);

} // namespace picture
