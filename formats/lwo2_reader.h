// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

#include "formats/input_file.h"
#include "formats/warnings.h"
#include "mesh/document.h"

namespace formats {

/// Reads an LWO2 object.
///
/// The file's single precision becomes double without a change of any bit pattern's meaning:
/// `write_lwo2` gives every number back as it was, infinities, signed zeros and the payloads of
/// not-a-numbers (signalling ones too) included. What the mesh has no form for is kept in the
/// document's chunks, so that writing an untouched document loses nothing.
///
/// @param bytes     the whole file; not kept after the call
/// @param warnings  told what was left out or is doubtful, each with its chunk and byte offset
/// @throws FormatError where a size, count or index does not fit the bytes there are, for an object
///         of another form, and for memory far beyond the size of the file. Nothing is half read.
[[nodiscard]] mesh::Document read_lwo2(std::span<const std::byte> bytes,
                                       const WarningSink& warnings);

/// Reads an LWO2 file. Takes hardly more memory than the document; of a pipe the whole object is
/// held first. What is neither an ordinary file nor a pipe is not opened.
/// @throws FileError when it cannot be opened or read; FormatError as `read_lwo2`, with the path
///         before the message.
[[nodiscard]] mesh::Document read_lwo2_file(const std::filesystem::path& path,
                                            const WarningSink& warnings);

/// The same from a file that is open already, such as standard input.
[[nodiscard]] mesh::Document read_lwo2_file(InputFile file, const WarningSink& warnings);

} // namespace formats
