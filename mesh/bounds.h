// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>

#include "mesh/layer.h"
#include "mesh/vec3.h"

namespace mesh {

/// Axis-aligned bounding box, in metres.
struct Bounds {
    Vec3 min;
    Vec3 max;
};

/// Bounding box of these points; empty for no points. NaN coordinates are ignored.
[[nodiscard]] std::optional<Bounds> bounds_of(std::span<const Vec3> points) noexcept;

/// Bounding box of all points of a layer; empty for a layer without points. NaN coordinates are
/// ignored.
[[nodiscard]] std::optional<Bounds> layer_bounds(const Layer& layer) noexcept;

} // namespace mesh
