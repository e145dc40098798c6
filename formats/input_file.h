// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>

#include "formats/descriptor.h"

namespace formats {

/// Judges, before any work is done, whether a path leads to what is read: an ordinary file or a
/// pipe. Devices are not, since they may be endless, and may act or wait when they are opened.
/// Opens nothing. @throws FileError
void check_input_path(const std::filesystem::path& path);

/// A file to read from, and what it is.
struct InputFile {
    std::filesystem::path name; ///< for messages
    Descriptor descriptor;
    bool ordinary = false;  ///< read at any place; otherwise from its start to its end
    std::uint64_t size = 0; ///< of an ordinary file
};

/// Opens a path to be read. @throws FileError
[[nodiscard]] InputFile open_input(const std::filesystem::path& path);

/// Standard input, which may be a file, a pipe or a socket. It is read on from where it stands.
/// @throws FileError
[[nodiscard]] InputFile standard_input();

} // namespace formats
