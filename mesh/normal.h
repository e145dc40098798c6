// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "mesh/layer.h"

namespace mesh {

/// Unit normal of a polygon by Newell's method. It points to the side from which the points run
/// clockwise (left-handed axes). Zero vector for a degenerate polygon: fewer than three points, or
/// a Newell sum of length exactly 0.
[[nodiscard]] Vec3 polygon_normal(const Layer& layer, std::size_t polygon) noexcept;

} // namespace mesh
