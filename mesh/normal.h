// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "mesh/layer.h"

namespace mesh {

/// Unit normal of a polygon, on the side from which its points run clockwise in the left-handed
/// axes, by Newell's sum over its edges; the zero vector where the polygon has no area (fewer than
/// three points, or a sum of length exactly 0).
[[nodiscard]] Vec3 polygon_normal(const Layer& layer, std::size_t polygon) noexcept;

} // namespace mesh
