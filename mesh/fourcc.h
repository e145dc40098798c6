// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace mesh {

/// Four characters in 32 bits, the first one in the highest byte: names types of polygons, vertex
/// maps, tags and chunks.
using FourCC = std::uint32_t;

/// Packs a text of four characters.
constexpr FourCC fourcc(const char (&text)[5]) noexcept
{
    FourCC packed = 0;
    for (int i = 0; i < 4; ++i)
        packed = (packed << 8) | static_cast<unsigned char>(text[i]);
    return packed;
}

/// The four characters as a text fit for messages: bytes outside printable ASCII become `\xNN`.
[[nodiscard]] std::string to_text(FourCC id);

} // namespace mesh
