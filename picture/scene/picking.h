// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "picture/scene/scene.h"
#include "picture/view/view.h"

namespace picture {

/// What a line of sight meets first.
struct Pick {
    PolygonId polygon;
    Vec3 position;
};

/// The polygon at a place of the picture; none where there is none, or a point that
/// belongs to no polygon.
[[nodiscard]] std::optional<Pick> pick(const Scene& scene, const View& view, double x, double y);

/// A part of a picture: pixels from `left` up to before `right`, from `top` up to before `bottom`.
struct PixelRectangle {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// All polygons that are seen in the middle of some pixel of the rectangle, in ascending order.
/// What reaches out of the picture is cut off. One line of sight for each pixel: about a million in
/// a second on one core.
[[nodiscard]] std::vector<PolygonId> visible_polygons(const Scene& scene, const View& view,
                                                      PixelRectangle rectangle);

} // namespace picture
