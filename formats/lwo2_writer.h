// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "formats/warnings.h"
#include "mesh/document.h"

namespace formats {

/// Checks that a document fits into LWO2: points per polygon, points and polygons of a layer that
/// cannot be divided, tags, layer numbers, range of single precision, names, sizes of chunks and of
/// the file.
/// @throws LimitError with the layer, the limit, and what to do
void check_writable(const mesh::Document& document);

/// Encodes a document as an LWO2 file. Doubles are rounded to single precision.
///
/// A document that was read from a file keeps the layout of that file: the order of the chunks, and
/// the blocks of the polygons. Added elements are appended to the block of their type. Bounding
/// boxes are recomputed. A surface that is used but described neither in the file nor in a chunk
/// gets a default description.
///
/// A layer with more points or polygons than LWO2 can index (16,777,216) is written as several
/// consecutive layers. The points are divided in their order, at places where no polygon has points
/// on both sides; polygons, tags and map values follow their points. Elements read from a file stay
/// in the first part. Further parts are named after it ("Trees", "Trees (2)", ...), copy its flags,
/// pivot and parent, and get free layer numbers.
///
/// @param warnings  receives warnings about kept chunks that may not match a layer that has grown
/// @throws LimitError as `check_writable`
[[nodiscard]] std::vector<std::byte> write_lwo2(const mesh::Document& document,
                                                const WarningSink& warnings = {});

/// Writes a document to an LWO2 file atomically (see FileWriter).
/// @throws LimitError before the file is touched; FileError
void write_lwo2_file(const mesh::Document& document, const std::filesystem::path& path,
                     const WarningSink& warnings = {});

} // namespace formats
