// SPDX-License-Identifier: MIT
#pragma once

#include "mesh/layer.h"

namespace mesh {

/// Name of the weight map in which every point of a clone has the clone's number, as a share of the
/// number of clones.
inline constexpr const char* clone_number_map = "DT_index";

/// Whether the layer has points of clones that an earlier run made.
[[nodiscard]] bool holds_clones(const Layer& layer) noexcept;

/// Whether the layer has such points and no others.
[[nodiscard]] bool holds_clones_alone(const Layer& layer) noexcept;

} // namespace mesh
