// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace settings {

/// The text of a settings file, which is an ordinary file or a pipe of at most 1 MiB. Where the
/// first character is none that an object can begin with, the rest is not read.
/// @throws UnreadableSettings when there is no reading it, WrongSettings when it cannot be such a
/// file
[[nodiscard]] std::string read_file_text(const std::filesystem::path& file);

} // namespace settings
