// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string_view>

#include "mesh/document.h"

namespace cli {

/// Writes a mesh as text for comparing: everything in it, in its own order, numbers in the shortest
/// form that reads back to the same bits, names quoted with `\xNN` for bytes that are not printable
/// UTF-8 text. Chunks that the mesh has no form for appear by name, size and a 64-bit FNV-1a sum.
/// `write` gets the text in runs of some size.
void write_mesh_text(const mesh::Document& document,
                     const std::function<void(std::string_view)>& write);

} // namespace cli
