// SPDX-License-Identifier: MIT
// The angles of a vector and between vectors.
#include <cmath>

#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/util/convert.h"

namespace dastrel {

namespace {

// Rounded decimal forms, not the nearest doubles to pi and its parts: results depend on them.
constexpr double PI_A = 3.1415926535898;
constexpr double HALF_PI_A = 1.5707963267949;
constexpr double THREE_HALF_PI_A = 4.7123889803847;

double projected_length(double first, double second)
{
    return std::sqrt(std::pow(first, 2.0) + std::pow(second, 2.0));
}

double projected_angle(double dot, double length_a, double length_b)
{
    if (length_a == 0.0 || length_b == 0.0)
        return 0.0;
    return std::acos(dot / (length_a * length_b));
}

} // namespace

double XYZ6_typ::calc_angle(XYZ6_typ b) const
{
    const double la = len();
    const double lb = b.len();
    if (la == 0.0 || lb == 0.0)
        return 0.0;
    const double k = ((x() * b.x() + y() * b.y()) + z() * b.z()) / (la * lb);
    double angle = k < 1 ? std::acos(k) : 0.0;
    if (angle > PI_A)
        angle -= to_int(angle / PI_A) * PI_A;
    if (angle < -PI_A)
        angle += to_int(angle / PI_A) * PI_A;
    return angle;
}

XYZ6_typ XYZ6_typ::calc_angle(XYZ6_typ a, XYZ6_typ b) const
{
    return {projected_angle(a.z() * b.z() + a.y() * b.y(), projected_length(a.z(), a.y()),
                            projected_length(b.z(), b.y())),
            projected_angle(a.z() * b.z() + a.x() * b.x(), projected_length(a.z(), a.x()),
                            projected_length(b.z(), b.x())),
            projected_angle(a.y() * b.y() + a.x() * b.x(), projected_length(a.x(), a.y()),
                            projected_length(b.x(), b.y()))};
}

double XYZ6_typ::calc_angle_Y() const
{
    const double px = x();
    const double pz = z();
    const double length = std::sqrt(pz * pz + px * px);
    if (px == 0 && pz == 0)
        return 0.0;
    if (px >= 0 && pz >= 0) {
        if (px == 0)
            return 0.0;
        return pz == 0 ? HALF_PI_A : std::asin(px / length);
    }
    if (px >= 0 && pz < 0)
        return px == 0 ? PI_A : HALF_PI_A + std::acos(px / length);
    if (px < 0 && pz <= 0)
        return pz == 0 ? THREE_HALF_PI_A : THREE_HALF_PI_A - std::acos(-px / length);
    if (px < 0 && pz > 0)
        return THREE_HALF_PI_A + std::asin(pz / length);
    return 0.0; // a component is not a number
}

double XYZ6_typ::calc_angle_Y2() const
{
    if (x() == 0)
        return 0.0;
    if (z() == 0 && x() > 0)
        return HALF_PI_A;
    if (z() == 0 && x() < 0)
        return -HALF_PI_A;
    return std::atan2(z(), x());
}

} // namespace dastrel
