// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "mesh/layer.h"
#include "mesh/vec3.h"

namespace mesh {

/// Whether all three coordinates are finite numbers.
[[nodiscard]] bool is_finite(const Vec3& point) noexcept;

/// The corners of a layer's polygons whose points are not finite.
struct NonFiniteCorners {
    std::size_t count = 0;   ///< corners; a point counts once for each corner that it makes
    std::size_t polygon = 0; ///< of the first one
    std::size_t corner = 0;  ///< of the first one, within the polygon, from 0
    std::uint32_t point = 0; ///< of the first one
};

/// Looks at all polygons of a layer; at once where all points are finite.
[[nodiscard]] NonFiniteCorners find_non_finite_corners(const Layer& layer);

} // namespace mesh
