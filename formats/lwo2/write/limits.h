// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

#include "formats/lwo2/write/layout.h"
#include "mesh/document.h"

namespace formats::lwo2 {

/// A layer as messages name it: its place in the document from 1, and its name.
[[nodiscard]] std::string layer_title(const mesh::Document& document, std::size_t layer);

/// Checks all that does not depend on the layout: texts, numbers, polygons and their tags, the
/// range of coordinates. @throws LimitError
void check_contents(const mesh::Document& document);

/// Checks that the points and polygons of each of a layer's blocks can be numbered.
/// @throws LimitError
void check_blocks(const Layout& layout, const std::string& title);

/// Checks how many points or polygons (`what`) one block has. @throws LimitError
void check_count(std::uint64_t count, const char* what, const std::string& title);

/// Checks the size of a chunk's body. @throws LimitError
void check_chunk_size(std::uint64_t size, mesh::FourCC id, const std::string& title);

/// Checks the size of all chunks together. @throws LimitError
void check_file_size(std::uint64_t size);

} // namespace formats::lwo2
