// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "mesh/document.h"

namespace bench {

/// Writes a document without tags, of faces with point maps, as formats::write_lwo2_file does: the
/// same bytes, put one by one into a stream, and straight into the place of the file.
void write_lwo2_plainly(const mesh::Document& document, const std::filesystem::path& path);

/// Reads such a file, byte by byte from a stream and element by element into the document. Throws
/// std::runtime_error for a file with anything else in it.
[[nodiscard]] mesh::Document read_lwo2_plainly(const std::filesystem::path& path);

} // namespace bench
