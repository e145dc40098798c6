// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <vector>

#include "tests/literal/kernel/vector.h"

namespace literal {

/// A local frame in which `first` points along +X and `second`, when it is perpendicular, along +Y.
class Frame {
public:
    Frame(Vec3 first, Vec3 second)
    {
        const Vec3 a = first;
        const Vec3 b = second;
        about_y_ = std::atan2(a.z, a.x);
        about_z_ = -std::atan2(a.y, std::sqrt(a.z * a.z + a.x * a.x));
        const double c0 = std::cos(about_y_);
        const double s0 = std::sin(about_y_);
        const double c1 = std::cos(about_z_);
        const double s1 = std::sin(about_z_);
        // Every product of three factors is taken from the left.
        about_x_ = -std::atan2(b.z * c0 - b.x * s0, b.y * c1 + b.x * c0 * s1 + b.z * s0 * s1);
    }

    /// The three angles in radians: x about X, y about Y, z about Z.
    [[nodiscard]] Vec3 angles() const { return {about_x_, about_y_, about_z_}; }

    /// Carries points from world coordinates into the frame placed at `origin`.
    void to_local(std::vector<Vec3>& points, Vec3 origin) const
    {
        for (Vec3& p : points) {
            if (!is_zero(origin)) {
                p = p + (Vec3{} - origin);
            }
            p = rotate_y(p, -about_y_);
            p = rotate_z(p, -about_z_);
            p = rotate_x(p, -about_x_);
        }
    }

    /// Carries points from the frame placed at `origin` back to world coordinates.
    void to_global(std::vector<Vec3>& points, Vec3 origin) const
    {
        for (Vec3& p : points) {
            p = rotate_x(p, about_x_);
            p = rotate_z(p, about_z_);
            p = rotate_y(p, about_y_);
            p = p + origin;
        }
    }

private:
    double about_x_ = 0.0;
    double about_y_ = 0.0;
    double about_z_ = 0.0;
};

} // namespace literal
