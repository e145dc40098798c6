// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "mesh/document.h"

namespace bench {

/// Writes a document without tags, whose layers all have points, faces and maps of whole points, as
/// formats::write_lwo2_file does: the same bytes, put one by one into a stream, and straight into
/// the place of the file. Throws std::ios_base::failure where that fails.
void write_lwo2_plainly(const mesh::Document& document, const std::filesystem::path& path);

/// Reads such a file, byte by byte from a stream and element by element into the document. Throws
/// std::ios_base::failure where that fails, std::runtime_error for a chunk of any other kind.
[[nodiscard]] mesh::Document read_lwo2_plainly(const std::filesystem::path& path);

} // namespace bench
