// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <stdexcept>
#include <vector>

#include "picture/image/image.h"

namespace picture {

/// Bytes that are no PNG picture.
class PngError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The bytes of a PNG file of 8 bits for each of red, green and blue, and of cover where something
/// is not covered in full. The same picture always gives the same bytes. Encodes in a child
/// process, which is gone when this returns, and here where no process is to be had. May be called
/// on any thread.
/// @throws std::bad_alloc, PngError
[[nodiscard]] std::vector<std::byte> encode_png(const Image& image);

/// Reads a PNG file of any kind into 8-bit RGBA. @throws PngError
[[nodiscard]] Image decode_png(std::span<const std::byte> bytes);

} // namespace picture
