// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace desktop {

/// The background of a picture.
enum class PictureBackground { as_shown, white, transparent };

/// The options of a picture of the view.
struct PictureOptions {
    int width = 1; ///< pixels
    int height = 1;
    PictureBackground background = PictureBackground::as_shown;
    bool grid = true;
    bool axes = true;
    bool selection = true; ///< tint selected polygons
};

/// Limits of width and height, and of their product.
inline constexpr int most_picture_pixels_a_side = 16384;
inline constexpr std::int64_t most_picture_pixels = std::int64_t{1} << 26;

} // namespace desktop
