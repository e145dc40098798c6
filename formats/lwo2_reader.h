// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

#include "formats/input_file.h"
#include "formats/warnings.h"
#include "mesh/document.h"

namespace formats {

/// Reads an LWO2 object from memory.
///
/// Single-precision numbers are widened without loss: `write_lwo2` restores every bit pattern,
/// including infinities, signed zeros and NaN payloads (also of signalling NaNs). Data that the
/// mesh cannot represent is kept in the document's chunks, so that writing an unchanged document
/// loses nothing.
///
/// @param bytes     the whole file; not referenced after the call
/// @param warnings  receives warnings about skipped or doubtful data, with chunk and byte offset
/// @throws FormatError if a size, count or index is inconsistent with the available bytes, the
///         object has another form, or it would need memory far beyond the size of the file
[[nodiscard]] mesh::Document read_lwo2(std::span<const std::byte> bytes,
                                       const WarningSink& warnings);

/// Reads an LWO2 file in pieces, with little memory beyond the document; from a pipe the whole
/// object is buffered first. Opens only regular files and pipes.
/// @throws FileError if it cannot be opened or read; FormatError as `read_lwo2`, with the path
///         prepended to the message
[[nodiscard]] mesh::Document read_lwo2_file(const std::filesystem::path& path,
                                            const WarningSink& warnings);

/// Reads an LWO2 file that is already open, such as standard input.
/// @throws FileError, FormatError
[[nodiscard]] mesh::Document read_lwo2_file(InputFile file, const WarningSink& warnings);

} // namespace formats
