// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "mesh/document.h"

namespace mesh {

/// A layer number that no layer has or names as its parent: one above the highest in use or, when
/// that is out of range, the lowest free one. Empty when all are in use.
[[nodiscard]] std::optional<std::uint16_t> free_layer_number(const Document& document);

} // namespace mesh
