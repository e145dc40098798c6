// SPDX-License-Identifier: MIT
#pragma once

#include "picture/image/image.h"
#include "picture/maps/map_values.h"

namespace picture {

/// Draws the map's name and its colour scale with numbers into the lower left corner of a picture;
/// into a picture too small for it nothing is drawn. `scale` is how many of the picture's pixels
/// one pixel of the legend takes (1, or more on a screen of high density).
void draw_legend(Image& image, const MapValues& map, double scale = 1.0);

} // namespace picture
