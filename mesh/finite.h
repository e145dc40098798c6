// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "mesh/layer.h"
#include "mesh/vec3.h"

namespace mesh {

/// Whether all three coordinates are finite.
[[nodiscard]] bool is_finite(const Vec3& point) noexcept;

/// The polygon corners of a layer whose points have a non-finite coordinate.
struct NonFiniteCorners {
    std::size_t count = 0;   ///< number of such corners; a point counts once per corner
    std::size_t polygon = 0; ///< polygon index of the first such corner
    std::size_t corner = 0;  ///< its position within the polygon, from 0
    std::uint32_t point = 0; ///< its point index
};

/// Finds them in all polygons of a layer. Returns early when all points are finite.
[[nodiscard]] NonFiniteCorners find_non_finite_corners(const Layer& layer);

} // namespace mesh
