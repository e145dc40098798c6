// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "picture/view/camera.h"

namespace picture {

/// A viewing ray in world coordinates.
struct Ray {
    Vec3 origin;
    Vec3 direction;       ///< unit vector
    bool endless = false; ///< a line: also extends behind its origin
};

/// The projection of a point onto a picture.
struct Projected {
    double x = 0.0;     ///< pixels from the left edge
    double y = 0.0;     ///< pixels from the upper edge
    double depth = 0.0; ///< metres in front of the viewer or, if orthographic, of the target
};

/// A camera with a picture size: converts between pixels and viewing rays. The upper left corner of
/// the picture is (0, 0), the centre of its first pixel (0.5, 0.5).
class View {
public:
    /// Width and height are in pixels, at least 1.
    View(const Camera& camera, int width, int height) noexcept;

    [[nodiscard]] const Camera& camera() const noexcept { return camera_; }
    [[nodiscard]] int width() const noexcept { return width_; }
    [[nodiscard]] int height() const noexcept { return height_; }

    /// The viewing ray through a position of the picture. It starts at the viewer or, if
    /// orthographic, at the target's depth and is endless.
    [[nodiscard]] Ray ray(double x, double y) const noexcept;

    /// Projects a point; empty if it is not in front of the viewer.
    [[nodiscard]] std::optional<Projected> project(const Vec3& point) const noexcept;

    /// Size of a pixel in metres at a distance along a viewing ray.
    [[nodiscard]] double pixel_size(double distance) const noexcept;

    /// Position of the viewer; if orthographic, the target.
    [[nodiscard]] const Vec3& eye() const noexcept { return eye_; }
    [[nodiscard]] const Basis& basis() const noexcept { return basis_; }

private:
    Camera camera_;
    int width_;
    int height_;
    Basis basis_;
    bool perspective_;
    Vec3 eye_;
    double step_; ///< pixel spacing in metres; for perspective, at distance 1
};

} // namespace picture
