// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

namespace modeler {

/// The read-only segments of the executable or shared library that contains `address`; its string
/// literals are in there. Empty if no loaded file contains the address. @throws std::bad_alloc
[[nodiscard]] std::vector<std::span<const char>> read_only_data(const void* address);

} // namespace modeler
