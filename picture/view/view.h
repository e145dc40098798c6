// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "picture/view/camera.h"

namespace picture {

/// A line of sight in the mesh's axes.
struct Ray {
    Vec3 origin;
    Vec3 direction;       ///< of length 1
    bool endless = false; ///< reaches behind its origin, too, without end
};

/// Where a point of the mesh is in a picture.
struct Projected {
    double x = 0.0;     ///< pixels from the left edge
    double y = 0.0;     ///< pixels from the upper edge
    double depth = 0.0; ///< metres before the viewer, or before the target without perspective
};

/// A camera with a picture of a certain size: leads from pixels to lines of sight and back. The
/// upper left corner of the picture is (0, 0), the middle of its first pixel (0.5, 0.5).
class View {
public:
    /// Width and height are pixels, at least 1.
    View(const Camera& camera, int width, int height) noexcept;

    [[nodiscard]] const Camera& camera() const noexcept { return camera_; }
    [[nodiscard]] int width() const noexcept { return width_; }
    [[nodiscard]] int height() const noexcept { return height_; }

    /// The line of sight through a place of the picture. With perspective it starts at the viewer;
    /// else at the target's depth, and is endless.
    [[nodiscard]] Ray ray(double x, double y) const noexcept;

    /// Where a point appears; none when it is not before the viewer.
    [[nodiscard]] std::optional<Projected> project(const Vec3& point) const noexcept;

    /// How many metres one pixel covers at a distance along a line of sight.
    [[nodiscard]] double pixel_size(double distance) const noexcept;

    /// The viewer's place; without perspective the target.
    [[nodiscard]] const Vec3& eye() const noexcept { return eye_; }
    [[nodiscard]] const Basis& basis() const noexcept { return basis_; }

private:
    Camera camera_;
    int width_;
    int height_;
    Basis basis_;
    bool perspective_;
    Vec3 eye_;
    double step_; ///< metres between two pixels, at distance 1 with perspective
};

} // namespace picture
