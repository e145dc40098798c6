// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "mesh/bounds.h"
#include "mesh/vec3.h"

namespace picture {

using mesh::Vec3;

/// How things far away appear.
enum class Projection {
    perspective,  ///< smaller
    orthographic, ///< as large as near ones
};

/// The sides from which a mesh is looked at. A model faces forward (z up to infinity): `front`
/// stands before it and has x to the left, `back` stands behind it and has x to the right. `top`
/// has z up.
enum class StandardView { perspective, front, back, left, right, top, bottom };

/// Three directions of length 1 at right angles to each other; forward is what is looked along.
struct Basis {
    Vec3 right;
    Vec3 up;
    Vec3 forward;
};

/// From where and how a mesh is looked at, in its own axes: x right, y up, z forward (left-handed).
struct Camera {
    Projection projection = Projection::perspective;
    Vec3 target;                 ///< what stands in the middle of the picture
    double azimuth_deg = 30.0;   ///< where the viewer stands around the up axis: 0 behind (at -z),
                                 ///< 90 at the right (x), 180 in front, 270 at the left
    double elevation_deg = 25.0; ///< how high: 90 straight above, -90 straight below
    double height = 2.0;         ///< how much of the world the picture shows from its lower to its
                                 ///< upper edge at the target's distance, metres; zooms
    double field_of_view_deg = 30.0; ///< angle between lower and upper edge; perspective only

    /// Looks from this side; target and height stay.
    void look_from(StandardView view) noexcept;

    /// Moves target and height so that all the points are just seen. `aspect` is the picture's
    /// width over its height. Without points nothing changes; one point alone is shown in a picture
    /// a metre high.
    void frame(std::span<const Vec3> points, double aspect) noexcept;

    /// The same for the corners of a box.
    void frame(const mesh::Bounds& bounds, double aspect) noexcept;

    /// The directions in which the camera looks and in which its picture lies.
    [[nodiscard]] Basis basis() const noexcept;

    /// How far the viewer stands from the target, metres.
    [[nodiscard]] double distance() const noexcept;

    friend bool operator==(const Camera&, const Camera&) = default;
};

/// Gathers points, and then moves a camera so that it just sees all of them.
class Framing {
public:
    /// Uses the camera's directions, projection and field of view.
    Framing(const Camera& camera, double aspect) noexcept;

    /// A point with a coordinate that is no finite number is passed over.
    void add(const Vec3& point) noexcept;

    /// See Camera::frame.
    void apply(Camera& camera) const noexcept;

private:
    struct Extent {
        double low = 0.0;
        double high = 0.0;
    };

    Basis basis_;
    bool perspective_;
    double aspect_;
    double slope_; ///< of the upper edge of sight; 0 without perspective
    bool any_ = false;
    Vec3 origin_;   ///< the first point: the others are taken relative to it
    Extent across_; ///< the lines of sight along the left and right edge that touch the points
    Extent along_;  ///< the same for lower and upper edge
    Extent depth_;
};

} // namespace picture
