// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <stdexcept>
#include <vector>

#include "picture/image/image.h"

namespace picture {

/// The bytes are not a valid PNG file.
class PngError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Encodes a PNG file with 8 bits per channel: RGB, or RGBA if any pixel is not opaque. The result
/// is deterministic. Encodes in a forked child process, which has ended when this returns, or in
/// this process if the fork fails. Thread-safe.
/// @throws std::bad_alloc, PngError
[[nodiscard]] std::vector<std::byte> encode_png(const Image& image);

/// Decodes a PNG file of any colour type to 8-bit RGBA. @throws PngError
[[nodiscard]] Image decode_png(std::span<const std::byte> bytes);

} // namespace picture
