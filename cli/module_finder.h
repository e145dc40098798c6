// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

#include "modeler/module.h"

namespace cli {

/// Finds the module file: `named` if not empty, else `dastrel.p` in modeler::module_search_paths.
/// @throws Failure (host) with the paths searched
[[nodiscard]] std::filesystem::path find_module(const std::string& named);

/// Finds and loads the module. @throws Failure (host)
[[nodiscard]] modeler::Module load_module(const std::string& named);

} // namespace cli
