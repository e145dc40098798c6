// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace modeler {

/// Where a program looks for the file of a module that was installed or built with it, the
/// likeliest place first: beside the program, then the library folders that belong to the program's
/// own place. Empty when the program's place is not known. Whether a file is there is not looked
/// at.
[[nodiscard]] std::vector<std::filesystem::path> module_search_paths(std::string_view module_file);

} // namespace modeler
