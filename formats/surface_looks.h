// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "mesh/document.h"
#include "mesh/surface_look.h"

namespace formats {

/// The looks of the surfaces that a document's file described, in file order. Of a name described
/// twice the first one counts. What is damaged or absent in a description is left at its default.
[[nodiscard]] std::vector<mesh::SurfaceLook> surface_looks(const mesh::Document& document);

} // namespace formats
