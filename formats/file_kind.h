// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace formats {

/// As many bytes as are needed to tell what a file is.
constexpr std::size_t kind_bytes = 4096;

/// Why a file is not read that begins with these bytes, and what to do, such as "is a PNG picture;
/// only LWO2 object files (.lwo) are read". Empty for what begins as an LWO2 object does.
/// @param begin  the file's first `kind_bytes`, or all that it has
/// @param size   of the whole file, as far as it is known
[[nodiscard]] std::string foreign_kind(std::span<const std::byte> begin, std::uint64_t size);

/// The same of an ordinary file. @throws FileError
[[nodiscard]] std::string foreign_kind(const std::filesystem::path& path);

} // namespace formats
