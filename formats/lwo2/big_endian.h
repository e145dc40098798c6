// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace formats::lwo2 {

// Compilers turn each of these into one load or store and a byte swap.

[[nodiscard]] inline std::uint16_t read_u2(const std::byte* from) noexcept
{
    return static_cast<std::uint16_t>(std::to_integer<std::uint32_t>(from[0]) << 8u |
                                      std::to_integer<std::uint32_t>(from[1]));
}

[[nodiscard]] inline std::uint32_t read_u4(const std::byte* from) noexcept
{
    return std::to_integer<std::uint32_t>(from[0]) << 24u |
           std::to_integer<std::uint32_t>(from[1]) << 16u |
           std::to_integer<std::uint32_t>(from[2]) << 8u | std::to_integer<std::uint32_t>(from[3]);
}

/// Reads an index of two bytes, or of four if the first byte is 0xFF, and advances `at` past it.
[[nodiscard]] inline std::uint32_t read_index(const std::byte*& at) noexcept
{
    if (std::to_integer<std::uint32_t>(*at) == 0xFF) {
        at += 4;
        return read_u4(at - 4) & 0x00FFFFFFu;
    }
    at += 2;
    return read_u2(at - 2);
}

/// Writes two bytes and returns a pointer past them.
inline std::byte* put_u2(std::byte* to, std::uint32_t value) noexcept
{
    to[0] = static_cast<std::byte>(value >> 8u);
    to[1] = static_cast<std::byte>(value);
    return to + 2;
}

/// Writes four bytes and returns a pointer past them.
inline std::byte* put_u4(std::byte* to, std::uint32_t value) noexcept
{
    to[0] = static_cast<std::byte>(value >> 24u);
    to[1] = static_cast<std::byte>(value >> 16u);
    to[2] = static_cast<std::byte>(value >> 8u);
    to[3] = static_cast<std::byte>(value);
    return to + 4;
}

} // namespace formats::lwo2
