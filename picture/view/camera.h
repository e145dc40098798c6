// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "mesh/bounds.h"
#include "mesh/vec3.h"

namespace picture {

using mesh::Vec3;

/// The projection of a camera.
enum class Projection { perspective, orthographic };

/// Standard views. Models face +z: `front` looks at them along -z with x to the left, `back` along
/// +z with x to the right. `top` has z up in the picture.
enum class StandardView { perspective, front, back, left, right, top, bottom };

/// An orthonormal basis; forward is the viewing direction.
struct Basis {
    Vec3 right;
    Vec3 up;
    Vec3 forward;
};

/// A camera that orbits a target, in mesh axes: x right, y up, z forward (left-handed).
struct Camera {
    Projection projection = Projection::perspective;
    Vec3 target;                 ///< centre of the picture
    double azimuth_deg = 30.0;   ///< position of the viewer around the y axis: 0 at -z, 90 at x,
                                 ///< 180 at z, 270 at -x
    double elevation_deg = 25.0; ///< 90 straight above the target, -90 straight below
    double height = 2.0;         ///< visible height at the target's distance, metres; changed by
                                 ///< zooming
    double field_of_view_deg = 30.0; ///< vertical field of view; perspective only

    /// Sets a standard view; target and height stay.
    void look_from(StandardView view) noexcept;

    /// Changes target and height to frame the points. Does nothing without points; a single point
    /// gives a height of one metre.
    /// @param aspect  width of the picture divided by its height
    void frame(std::span<const Vec3> points, double aspect) noexcept;

    /// Changes target and height to frame the corners of a box.
    void frame(const mesh::Bounds& bounds, double aspect) noexcept;

    /// The orientation of the camera.
    [[nodiscard]] Basis basis() const noexcept;

    /// Distance of the viewer from the target, metres.
    [[nodiscard]] double distance() const noexcept;

    friend bool operator==(const Camera&, const Camera&) = default;
};

/// Accumulates points and then moves a camera to frame all of them.
class Framing {
public:
    /// Uses the camera's directions, projection and field of view.
    Framing(const Camera& camera, double aspect) noexcept;

    /// Adds a point; ignores one with a non-finite coordinate.
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
    double slope_; ///< tangent of half the vertical field of view; 0 if orthographic
    bool any_ = false;
    Vec3 origin_;   ///< the first point; the others are stored relative to it
    Extent across_; ///< offsets of the left and right view planes that touch the points
    Extent along_;  ///< offsets of the lower and upper view planes that touch the points
    Extent depth_;
};

} // namespace picture
