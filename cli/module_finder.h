// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

#include "modeler/module.h"

namespace cli {

/// The module file to use: `named` where that is not empty, else `dastrel.p` beside the program,
/// else the one in the library folder that belongs to the program's own place.
/// @throws Failure (host) that tells where it was looked for.
[[nodiscard]] std::filesystem::path find_module(const std::string& named);

/// Finds and loads it. @throws Failure (host)
[[nodiscard]] modeler::Module load_module(const std::string& named);

} // namespace cli
