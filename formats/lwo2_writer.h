// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "formats/warnings.h"
#include "mesh/document.h"

namespace formats {

/// Judges whether a document fits into LWO2: points of a polygon, points and polygons of a layer
/// that cannot be divided, tags, layer numbers, numbers within single precision, names, sizes of
/// chunks and of the file.
/// @throws LimitError naming the layer, the limit, and what to do.
void check_writable(const mesh::Document& document);

/// The LWO2 file of a document. Doubles are rounded to single precision.
///
/// A document that was read from a file keeps that file's layout: chunks in their order, polygons
/// in the blocks they came in; what was added stands at the end of the block of its kind. Boxes are
/// computed anew. A surface that a polygon uses and that neither the file nor a chunk describes
/// gets a plain description.
///
/// A layer of more points or polygons than LWO2 can number in one (16,777,216) becomes several,
/// which stand one behind the other: the points are divided where no polygon is cut, in their
/// order, and polygons, tags and map values go with them. What came from a file stays in the first.
/// The further ones are named after it ("Trees", "Trees (2)", ...), have its flags, pivot and
/// parent, and free numbers of their own.
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
