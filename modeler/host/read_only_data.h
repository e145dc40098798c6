// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

namespace modeler {

/// The parts of a program or loaded file that were mapped without leave to write to them, such as
/// that of the texts in its source. `address` lies anywhere in it; empty where it lies in none.
[[nodiscard]] std::vector<std::span<const char>> read_only_data(const void* address);

} // namespace modeler
