// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "formats/warnings.h"
#include "mesh/document.h"

namespace formats {

/// Judges whether a document fits into LWO2: points of a polygon, points and polygons of a layer,
/// tags, layer numbers, numbers within single precision, names, sizes of chunks and of the file.
/// @throws LimitError naming the layer, the limit, and what to do.
void check_writable(const mesh::Document& document);

/// The LWO2 file of a document. Doubles are rounded to single precision.
///
/// A document that was read from a file keeps that file's layout: chunks in their order, polygons
/// in the blocks they came in; what was added stands at the end of the block of its kind. Boxes are
/// computed anew. A surface that a polygon uses and that neither the file nor a chunk describes
/// gets a plain description.
///
/// @param warnings  told of kept chunks that may no longer fit a layer that has grown
/// @throws LimitError as `check_writable`.
[[nodiscard]] std::vector<std::byte> write_lwo2(const mesh::Document& document,
                                                const WarningSink& warnings = {});

/// Writes the LWO2 file of a document, whole or not at all (see FileWriter).
/// @throws LimitError before the file is touched; FileError when the system refuses.
void write_lwo2_file(const mesh::Document& document, const std::filesystem::path& path,
                     const WarningSink& warnings = {});

} // namespace formats
