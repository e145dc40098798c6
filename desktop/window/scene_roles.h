// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace desktop {

/// Saves the roles of a file's layers in the application settings, since object files cannot store
/// them. Only the most recently saved files are kept. Failures are ignored.
void remember_roles(const std::filesystem::path& file, const mesh::Document& document,
                    const std::vector<modeler::LayerRole>& roles) noexcept;

/// The saved roles of a file, one per layer. Empty if there are none or the layer names of the
/// document differ from those saved.
[[nodiscard]] std::optional<std::vector<modeler::LayerRole>>
remembered_roles(const std::filesystem::path& file, const mesh::Document& document);

} // namespace desktop
