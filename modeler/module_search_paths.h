// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace modeler {

/// The paths at which a program looks for a module installed or built with it, in order of
/// preference: the folder of the executable, then the library folders of its installation prefix.
/// Does not check whether the files exist. Empty if the path of the executable is unknown.
[[nodiscard]] std::vector<std::filesystem::path> module_search_paths(std::string_view module_file);

} // namespace modeler
