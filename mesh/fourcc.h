// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace mesh {

/// Four-character code, the first character in the most significant byte. Identifies types of
/// polygons, vertex maps, tags and chunks.
using FourCC = std::uint32_t;

/// The code of a string of four characters.
constexpr FourCC fourcc(const char (&text)[5]) noexcept
{
    FourCC packed = 0;
    for (int i = 0; i < 4; ++i)
        packed = (packed << 8) | static_cast<unsigned char>(text[i]);
    return packed;
}

/// The four characters for display: bytes outside printable ASCII become `\xNN`.
[[nodiscard]] std::string to_text(FourCC id);

} // namespace mesh
