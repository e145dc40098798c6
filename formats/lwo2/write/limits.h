// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "formats/lwo2/ids.h"
#include "formats/lwo2/write/layout.h"
#include "mesh/document.h"

namespace formats::lwo2 {

/// How much the format can hold.
struct Limits {
    std::uint32_t layer = index_limit;    ///< points or polygons of one layer that can be numbered
    std::uint64_t file_size = 0xFFFFFFFF; ///< bytes behind the file's own header
};

/// A layer as messages name it: its place in the document from 1, and its name.
[[nodiscard]] std::string layer_title(const mesh::Document& document, std::size_t layer);

/// Checks all that does not depend on the layout: texts, numbers, polygons and their tags, the
/// range of coordinates. @throws LimitError
void check_contents(const mesh::Document& document);

/// Checks that the points and polygons of each of a layer's blocks can be numbered.
/// @throws LimitError
void check_blocks(const Layout& layout, const Limits& limits, const std::string& title);

/// Checks how many points or polygons (`what`) one block has. @throws LimitError
void check_count(std::uint64_t count, const char* what, const Limits& limits,
                 const std::string& title);

/// Checks the size of a chunk's body. @throws LimitError
void check_chunk_size(std::uint64_t size, mesh::FourCC id, const std::string& title);

/// Checks the size of all chunks together. @throws LimitError
void check_file_size(std::uint64_t size, const Limits& limits);

} // namespace formats::lwo2
