// SPDX-License-Identifier: MIT
#pragma once

#include "picture/image/image.h"
#include "picture/maps/map_values.h"

namespace picture {

/// Draws the map's name and colour scale into the lower left corner of an image. Draws nothing if
/// the image is too small.
/// @param scale  image pixels per legend pixel (1, or more for high-density screens)
void draw_legend(Image& image, const MapValues& map, double scale = 1.0);

} // namespace picture
