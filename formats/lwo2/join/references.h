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

/// Functions that map the numbers of images and envelopes to new ones. They are not called for 0,
/// which means none.
struct Renumber {
    std::function<std::uint32_t(std::uint32_t)> image;
    std::function<std::uint32_t(std::uint32_t)> envelope;
};

/// The two strings at the start of a surface description, and the bytes after them.
struct SurfaceHead {
    std::string name;
    std::string source; ///< name of the surface that this one is based on; usually empty
    std::span<const std::byte> rest;
};

/// Parses the head of a surface description; empty if a string is not terminated. `rest` points
/// into `body`.
[[nodiscard]] std::optional<SurfaceHead> surface_head(std::span<const std::byte> body);

/// Whether a surface has shader node data, which may refer to images and envelopes in an unknown
/// encoding.
[[nodiscard]] bool has_node_data(std::span<const std::byte> rest);

/// Replaces the numbers of images and envelopes in the bytes after the strings of a surface
/// description. Damaged or unknown parts stay unchanged.
/// @throws LimitError if a part exceeds the range of its size field
[[nodiscard]] Bytes renumber_surface(std::span<const std::byte> rest, const Renumber& renumber);

/// Builds the chunk of a surface description.
[[nodiscard]] mesh::FileChunk make_surface(const SurfaceHead& head);

/// A chunk identified by a number: an image (CLIP) or an envelope (ENVL).
struct Numbered {
    std::uint32_t number = 0;
    std::span<const std::byte> rest; ///< bytes after the number
};

/// Parses a numbered chunk; empty if it is too short. `rest` points into the chunk.
[[nodiscard]] std::optional<Numbered> numbered(const mesh::FileChunk& chunk);

/// Replaces the numbers in the bytes after the number of an image. @throws LimitError
[[nodiscard]] Bytes renumber_image(std::span<const std::byte> rest, const Renumber& renumber);

/// Whether an image refers to another image.
[[nodiscard]] bool names_image(std::span<const std::byte> rest);

/// Builds a numbered chunk.
[[nodiscard]] mesh::FileChunk make_numbered(mesh::FourCC id, std::uint32_t number,
                                            std::span<const std::byte> rest);

} // namespace formats::lwo2
