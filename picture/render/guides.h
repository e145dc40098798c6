// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "picture/render/look.h"
#include "picture/scene/float3.h"
#include "picture/view/view.h"

namespace picture {

/// The grid and the coordinate axes of a picture.
class Guides {
public:
    Guides(const View& view, const Look& look) noexcept;

    /// A grid or axis line at one sample.
    struct Line {
        double distance = 0.0; ///< metres along the ray
        Float3 colour;
        float cover = 0.0F; ///< opacity, 0 to 1
    };

    /// The nearest line that the ray hits before `depth` (metres along the ray), if any.
    [[nodiscard]] std::optional<Line> along(const Ray& ray, double depth) const noexcept;

private:
    [[nodiscard]] std::optional<Line> grid_line(const Ray& ray) const noexcept;
    [[nodiscard]] std::optional<Line> axis_line(const Ray& ray, int axis) const noexcept;

    View view_;
    Float3 grid_colour_;
    bool grid_;
    bool axes_;
    int plane_;   ///< normal axis of the grid's plane: 0 x, 1 y, 2 z
    double step_; ///< grid spacing in metres
};

} // namespace picture
