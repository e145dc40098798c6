// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "formats/lwo2/ids.h"
#include "formats/lwo2/write/layout.h"
#include "mesh/document.h"

namespace formats::lwo2 {

/// Limits of the format. Tests use smaller ones.
struct Limits {
    std::uint32_t layer = index_limit;    ///< points or polygons per layer
    std::uint64_t file_size = 0xFFFFFFFF; ///< bytes after the file header
};

/// Display name of a layer for messages: position in the document from 1, and name.
[[nodiscard]] std::string layer_title(const mesh::Document& document, std::size_t layer);

/// Checks what does not depend on the layout: strings, numbers, polygons and their tags, range of
/// coordinates. @throws LimitError
void check_contents(const mesh::Document& document);

/// Checks the number of points and polygons of each block of a layer. @throws LimitError
void check_blocks(const Layout& layout, const Limits& limits, const std::string& title);

/// Checks the number of points or polygons (`what`) of one block. @throws LimitError
void check_count(std::uint64_t count, const char* what, const Limits& limits,
                 const std::string& title);

/// Checks the size of a chunk's body. @throws LimitError
void check_chunk_size(std::uint64_t size, mesh::FourCC id, const std::string& title);

/// Checks the total size of all chunks. @throws LimitError
void check_file_size(std::uint64_t size, const Limits& limits);

} // namespace formats::lwo2
