// SPDX-License-Identifier: MIT
#include "plugin/geometry/normal_angles.h"

#include <cmath>

namespace dastrel {

double normal_pitch(XYZ6_typ normal)
{
    return -1 < normal.y() && normal.y() < 1 ? std::acos(normal.y()) : 0.0;
}

bool normal_heading(XYZ6_typ normal, double& heading)
{
    constexpr double pi = 3.141592653589793;
    constexpr double tolerance = 0.001;
    const double x = normal.x();
    const double z = normal.z();
    if (z < -tolerance || z > tolerance) {
        const double h = std::acos(x / std::sqrt(x * x + z * z));
        heading = z < 0 ? -h : h;
        return true;
    }
    if (x > tolerance) {
        heading = 0.0;
        return true;
    }
    if (x < -tolerance) {
        heading = pi;
        return true;
    }
    return false;
}

} // namespace dastrel
