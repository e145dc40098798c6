// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "mesh/vec3.h"

namespace picture {

/// A smooth line through the points of a curve polygon, three or more, as a chain of short straight
/// ones. Bit 0 and bit 1 of the polygon's flags say that its first and last point only give the
/// direction there and are not reached.
[[nodiscard]] std::vector<mesh::Vec3> spline(std::span<const mesh::Vec3> points,
                                             std::uint8_t flags);

} // namespace picture
