// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "tests/formats/support/bytes.h"

namespace test {

using File = std::vector<std::byte>;

/// A LAYR chunk without parent.
[[nodiscard]] Bytes layer_chunk(unsigned number, std::string_view name = "", unsigned flags = 0);

/// A PNTS chunk of `count` points at (i, 2i, -i).
[[nodiscard]] Bytes points_chunk(unsigned count);

/// A BBOX chunk for such points, as a writer would make it.
[[nodiscard]] Bytes box_chunk(unsigned count);

/// A POLS chunk of polygons given by their points.
[[nodiscard]] Bytes polygons_chunk(std::string_view type,
                                   const std::vector<std::vector<std::uint32_t>>& polygons);

/// A PTAG chunk of (polygon, tag) rows.
[[nodiscard]] Bytes tags_chunk(std::string_view kind,
                               const std::vector<std::pair<std::uint32_t, unsigned>>& rows);

/// A plain SURF chunk: a colour, an envelope for it, and an image of a texture layer (0: none).
[[nodiscard]] Bytes surface_chunk(std::string_view name, float grey = 0.5f,
                                  std::uint32_t envelope = 0, std::uint32_t image = 0);
[[nodiscard]] Bytes image_chunk(std::uint32_t number, std::string_view path);
[[nodiscard]] Bytes envelope_chunk(std::uint32_t number, float value);

/// The smallest useful object: one triangle with a surface.
[[nodiscard]] File triangle();

/// Two layers with something of everything: types of polygons, kinds of tags, types of maps, values
/// for corners, unknown chunks at all places, surfaces with images and envelopes.
[[nodiscard]] File rich();

/// Data before any layer, then a layer.
[[nodiscard]] File default_layer();

/// One layer with two blocks of points and polygons, and maps over both.
[[nodiscard]] File two_blocks();

/// All good samples by name, written as usual writers write them: reading and writing gives them
/// back to the byte.
[[nodiscard]] std::vector<std::pair<std::string, File>> good_samples();

/// Parts of a file: its chunks with their fillers, in order, the file's header left out.
[[nodiscard]] std::vector<File> split_chunks(const File& file);

/// The four characters of a chunk.
[[nodiscard]] std::string chunk_name(const File& chunk);

} // namespace test
