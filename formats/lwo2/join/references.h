// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "mesh/file_chunk.h"

namespace formats::lwo2 {

using Bytes = std::vector<std::byte>;

/// What to put in place of each image and envelope that a description names by number. Numbers
/// given are never 0, which means none.
struct Renumber {
    std::function<std::uint32_t(std::uint32_t)> image;
    std::function<std::uint32_t(std::uint32_t)> envelope;
};

/// The two texts at the start of a surface's description, and what follows them.
struct SurfaceHead {
    std::string name;
    std::string source; ///< another surface, on which this one is based; mostly empty
    std::span<const std::byte> rest;
};

/// Takes a surface's description apart; none when its texts have no end. `rest` looks into `body`.
[[nodiscard]] std::optional<SurfaceHead> surface_head(std::span<const std::byte> body);

/// Whether a surface holds data of nodes, which may name images and envelopes in ways of its own.
[[nodiscard]] bool has_node_data(std::span<const std::byte> rest);

/// What follows a surface's texts, with the numbers of images and envelopes replaced. What is
/// damaged or not understood stays as it is; with nothing to replace the result is what was put in.
/// @throws LimitError when a part grows past what its size field can hold.
[[nodiscard]] Bytes renumber_surface(std::span<const std::byte> rest, const Renumber& renumber);

/// The chunk of a surface's description.
[[nodiscard]] mesh::FileChunk make_surface(const SurfaceHead& head);

/// A chunk that is known by a number: an image (CLIP) or an envelope (ENVL).
struct Numbered {
    std::uint32_t number = 0;
    std::span<const std::byte> rest; ///< what follows the number
};

/// Takes such a chunk apart; none when it is too short. `rest` looks into the chunk.
[[nodiscard]] std::optional<Numbered> numbered(const mesh::FileChunk& chunk);

/// What follows the number of an image, with the numbers in it replaced. @throws LimitError
[[nodiscard]] Bytes renumber_image(std::span<const std::byte> rest, const Renumber& renumber);

/// Whether an image is another one, seen differently.
[[nodiscard]] bool names_image(std::span<const std::byte> rest);

/// The chunk with this number and content.
[[nodiscard]] mesh::FileChunk make_numbered(mesh::FourCC id, std::uint32_t number,
                                            std::span<const std::byte> rest);

} // namespace formats::lwo2
