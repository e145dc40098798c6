// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace desktop {

/// What stands behind the things in a picture.
enum class PictureBackground { as_shown, white, transparent };

/// What a picture of the view is to be like.
struct PictureOptions {
    int width = 1; ///< pixels
    int height = 1;
    PictureBackground background = PictureBackground::as_shown;
    bool grid = true;
    bool axes = true;
    bool selection = true; ///< selected polygons are tinted
};

inline constexpr int most_picture_pixels_a_side = 16384;
inline constexpr std::int64_t most_picture_pixels = std::int64_t{1} << 26;

} // namespace desktop
