// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace desktop {

/// Remembers in the program's settings, for the files that were saved lately, which roles their
/// layers had: an object file has no place for them. A failure to remember is none of the saving.
void remember_roles(const std::filesystem::path& file, const mesh::Document& document,
                    const std::vector<modeler::LayerRole>& roles) noexcept;

/// The roles that were remembered for a file, one for each layer. Empty where none were, or where
/// the document that was read from it has not the layers of the one that was saved, by their names.
[[nodiscard]] std::optional<std::vector<modeler::LayerRole>>
remembered_roles(const std::filesystem::path& file, const mesh::Document& document);

} // namespace desktop
