// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "picture/render/look.h"
#include "picture/scene/float3.h"
#include "picture/view/view.h"

namespace picture {

/// Grid and axes, as a look wants them.
class Guides {
public:
    Guides(const View& view, const Look& look) noexcept;

    /// A line of a guide that covers what lies behind it.
    struct Line {
        double distance = 0.0; ///< metres along the ray
        Float3 colour;
        float cover = 0.0F; ///< 0 to 1
    };

    /// The nearest guide that is seen along a line of sight before `depth`; none where none is.
    [[nodiscard]] std::optional<Line> along(const Ray& ray, double depth) const noexcept;

private:
    [[nodiscard]] std::optional<Line> grid_line(const Ray& ray) const noexcept;
    [[nodiscard]] std::optional<Line> axis_line(const Ray& ray, int axis) const noexcept;

    View view_;
    Float3 grid_colour_;
    bool grid_;
    bool axes_;
    int plane_;   ///< the axis that the grid's plane is at right angles to: 0 x, 1 y, 2 z
    double step_; ///< between two lines, metres
};

} // namespace picture
