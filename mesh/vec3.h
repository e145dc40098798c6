// SPDX-License-Identifier: MIT
#pragma once

namespace mesh {

/// A position, direction or size in metres. Left-handed axes: x right, y up, z forward.
struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    friend bool operator==(const Vec3&, const Vec3&) = default;
};

} // namespace mesh
