// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>

#include "mesh/layer.h"
#include "mesh/vec3.h"

namespace mesh {

/// The smallest axis-parallel box around some points.
struct Bounds {
    Vec3 min;
    Vec3 max;
};

/// Box around these points; none where there are none. Coordinates that are not numbers are passed
/// over.
[[nodiscard]] std::optional<Bounds> bounds_of(std::span<const Vec3> points) noexcept;

/// Box around all points of a layer; none for a layer without points. Coordinates that are not
/// numbers are passed over.
[[nodiscard]] std::optional<Bounds> layer_bounds(const Layer& layer) noexcept;

} // namespace mesh
