// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace formats {

/// Number of leading bytes that suffice to detect the type of a file.
constexpr std::size_t kind_bytes = 4096;

/// Detects files that are not LWO2 objects. Returns a message, such as "is a PNG picture; only LWO2
/// object files (.lwo) are read"; empty if the file begins like an LWO2 object.
/// @param begin  the first `kind_bytes` bytes of the file, or all if it is shorter
/// @param size   size of the file in bytes, as far as known
[[nodiscard]] std::string foreign_kind(std::span<const std::byte> begin, std::uint64_t size);

/// Detects the type of a regular file at a path. @throws FileError
[[nodiscard]] std::string foreign_kind(const std::filesystem::path& path);

} // namespace formats
