// SPDX-License-Identifier: MIT
/// The meshes that the benchmarks work on, made by formulas, so that every machine has the same.
#pragma once

#include <string_view>

#include "mesh/layer.h"

namespace bench {

/// A ground by name: "grid" (100 x 100 level quads of 1 m), "hills" (141 x 141 quads over the same
/// square, with the weight map "Density"), or "mountain" (1414 x 1414 quads of the same form).
/// @throws std::invalid_argument for another name.
[[nodiscard]] mesh::Layer ground(std::string_view name);

/// A model by name: "cube" (8 points, 6 quads), "tree" (205 points, 192 quads) or "large" (5,000
/// points, 4,900 quads). All but the cube carry a UV map, a weight map and a relative morph.
/// @throws std::invalid_argument for another name.
[[nodiscard]] mesh::Layer model(std::string_view name);

} // namespace bench
