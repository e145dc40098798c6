// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "mesh/document.h"
#include "mesh/surface_look.h"

namespace formats {

/// The appearance of the surfaces described in the document's file, in file order. For duplicate
/// names the first description counts. Damaged or missing parts of a description keep the defaults.
[[nodiscard]] std::vector<mesh::SurfaceLook> surface_looks(const mesh::Document& document);

} // namespace formats
