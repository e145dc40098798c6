// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>

#include "formats/descriptor.h"

namespace formats {

/// Checks before the work that a path refers to a regular file or a pipe. Devices are rejected,
/// since they may be endless, and opening them may block or have side effects. Opens nothing.
/// @throws FileError
void check_input_path(const std::filesystem::path& path);

/// An open input file.
struct InputFile {
    std::filesystem::path name; ///< for messages
    Descriptor descriptor;
    bool ordinary = false;  ///< a regular file, which is seekable; otherwise read sequentially
    std::uint64_t size = 0; ///< size in bytes of a regular file
};

/// Opens a path for reading. @throws FileError
[[nodiscard]] InputFile open_input(const std::filesystem::path& path);

/// Standard input, which may be a file, a pipe or a socket, from its current position.
/// @throws FileError
[[nodiscard]] InputFile standard_input();

} // namespace formats
