// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "mesh/document.h"

namespace mesh {

/// A number for one more layer: the one after the highest that a layer has or names as its parent,
/// or the lowest that is free. Empty: all are taken.
[[nodiscard]] std::optional<std::uint16_t> free_layer_number(const Document& document);

} // namespace mesh
