// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "picture/scene/scene.h"
#include "picture/view/view.h"

namespace picture {

/// The first hit of a viewing ray.
struct Pick {
    PolygonId polygon;
    Vec3 position;
};

/// The polygon at a position of the picture, in pixels. Empty for the background and for points
/// without a polygon.
[[nodiscard]] std::optional<Pick> pick(const Scene& scene, const View& view, double x, double y);

/// A rectangle of pixels; `right` and `bottom` are exclusive.
struct PixelRectangle {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// All polygons visible at the centre of any pixel of the rectangle, in ascending order. The
/// rectangle is clipped to the picture. Traces one ray per pixel: about a million per second on one
/// core.
[[nodiscard]] std::vector<PolygonId> visible_polygons(const Scene& scene, const View& view,
                                                      PixelRectangle rectangle);

} // namespace picture
