// SPDX-License-Identifier: MIT
#pragma once

#include "mesh/layer.h"

namespace mesh {

/// Name of the weight map that marks points of clones. Its value is the clone's index divided by
/// the number of clones.
inline constexpr const char* clone_number_map = "DT_index";

/// Whether some points of the layer belong to clones of an earlier run.
[[nodiscard]] bool holds_clones(const Layer& layer) noexcept;

/// Whether the layer has points and all of them belong to clones of earlier runs.
[[nodiscard]] bool holds_only_clones(const Layer& layer) noexcept;

} // namespace mesh
