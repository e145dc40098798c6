// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string_view>

#include "mesh/document.h"

namespace cli {

/// Formats a complete mesh as text for comparison: in document order, numbers in the shortest form
/// that round-trips, names quoted and escaped (see mesh::printable). Opaque chunks are given by id,
/// size and 64-bit FNV-1a hash. Calls `write` with consecutive blocks of the text.
void write_mesh_text(const mesh::Document& document,
                     const std::function<void(std::string_view)>& write);

} // namespace cli
