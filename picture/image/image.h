// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace picture {

/// An RGBA image with 8 bits per channel, sRGB, not premultiplied. Alpha is 255 everywhere unless
/// the background is transparent. Rows from top to bottom without padding.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;

    Image() = default;
    Image(int pixels_wide, int pixels_high)
        : width(pixels_wide), height(pixels_high),
          rgba(static_cast<std::size_t>(pixels_wide) * static_cast<std::size_t>(pixels_high) * 4)
    {}

    /// The four bytes of a pixel. Coordinates are not checked.
    [[nodiscard]] std::uint8_t* at(int x, int y) noexcept { return rgba.data() + offset(x, y); }
    [[nodiscard]] const std::uint8_t* at(int x, int y) const noexcept
    {
        return rgba.data() + offset(x, y);
    }

    friend bool operator==(const Image&, const Image&) = default;

private:
    [[nodiscard]] std::size_t offset(int x, int y) const noexcept
    {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                static_cast<std::size_t>(x)) *
               4;
    }
};

} // namespace picture
