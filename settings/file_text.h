// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace settings {

/// Reads a settings file: a regular file or a pipe of at most 1 MiB. Stops after the first
/// character if it cannot begin a JSON object.
/// @throws UnreadableSettings if it cannot be read; WrongSettings if it cannot be a settings file
[[nodiscard]] std::string read_file_text(const std::filesystem::path& file);

} // namespace settings
