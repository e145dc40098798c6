// SPDX-License-Identifier: MIT
#include "tests/literal/kernel/vector.h"

#include <cmath>

#include "tests/literal/kernel/integers.h"

namespace literal {

namespace {

Vec3 turn_x(Vec3 v, double angle)
{
    const double s = std::sin(-angle);
    const double c = std::cos(-angle);
    return {v.x, v.y * c - v.z * s, v.z * c + v.y * s};
}

Vec3 turn_y(Vec3 v, double angle)
{
    const double s = std::sin(-angle);
    const double c = std::cos(-angle);
    return {v.x * c + v.z * s, v.y, v.z * c - v.x * s};
}

Vec3 turn_z(Vec3 v, double angle)
{
    const double s = std::sin(-angle);
    const double c = std::cos(-angle);
    return {v.x * c - v.y * s, v.y * c + v.x * s, v.z};
}

/// The angle between two vectors of a plane; 0 where either has no length.
double plane_angle(double dot, double length_a, double length_b)
{
    if (length_a == 0.0 || length_b == 0.0) {
        return 0.0;
    }
    return std::acos(dot / (length_a * length_b));
}

double square(double value) { return std::pow(value, 2.0); }

} // namespace

Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }

Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }

Vec3 operator*(Vec3 a, double factor) { return {a.x * factor, a.y * factor, a.z * factor}; }

Vec3 cross(Vec3 a, Vec3 b)
{
    return {a.y * b.z - a.z * b.y, b.x * a.z - a.x * b.z, a.x * b.y - a.y * b.x};
}

double length(Vec3 a) { return std::sqrt((a.x * a.x + a.y * a.y) + a.z * a.z); }

double distance(Vec3 a, Vec3 b)
{
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    const double dz = a.z - b.z;
    return std::sqrt((dx * dx + dy * dy) + dz * dz);
}

bool is_zero(Vec3 a) { return !(a.x != 0.0 || a.y != 0.0 || a.z != 0.0); }

Vec3 unit(Vec3 a)
{
    double size = length(a);
    if (size == 0.0) {
        if (is_zero(a)) {
            return {};
        }
        // The squares underflowed. A power of two keeps the components' digits as they are.
        a = a * 0x1p600;
        size = length(a);
    }
    return {a.x / size, a.y / size, a.z / size};
}

Vec3 rotate_x(Vec3 v, double angle)
{
    if (angle == 0.0) {
        return v;
    }
    return turn_x(v, angle);
}

Vec3 rotate_y(Vec3 v, double angle) { return turn_y(v, angle); }

Vec3 rotate_z(Vec3 v, double angle)
{
    if (angle == 0.0) {
        return v;
    }
    return turn_z(v, angle);
}

Vec3 rotate_x_about(Vec3& v, Vec3 centre, double angle)
{
    v = v - centre;
    const Vec3 turned = turn_x(v, angle) + centre;
    v = v + centre;
    return turned;
}

Vec3 rotate_y_about(Vec3& v, Vec3 centre, double angle)
{
    v = v - centre;
    const Vec3 turned = turn_y(v, angle) + centre;
    v = v + centre;
    return turned;
}

Vec3 rotate_z_about(Vec3& v, Vec3 centre, double angle)
{
    if (angle == 0.0) {
        return v;
    }
    v = v - centre;
    const Vec3 turned = turn_z(v, angle) + centre;
    v = v + centre;
    return turned;
}

Vec3 rotate_about(Vec3 v, Vec3 centre, Vec3 angles)
{
    Vec3 r = v - centre;
    r = turn_x(r, angles.x);
    r = turn_z(r, angles.z);
    r = turn_y(r, angles.y);
    return r + centre;
}

Vec3 to_local(Vec3 v, Vec3 origin, Vec3 angles)
{
    Vec3 r = v - origin;
    r = rotate_y(r, angles.y);
    r = rotate_z(r, -angles.z);
    r = rotate_x(r, -angles.x);
    return r;
}

Vec3 to_global(Vec3 v, Vec3 origin, Vec3 angles)
{
    Vec3 r = rotate_x(v, angles.x);
    r = rotate_z(r, angles.z);
    r = rotate_y(r, -angles.y);
    return r + origin;
}

Vec3 rotate_free(Vec3 v, Vec3 p1, Vec3 p2, double angle)
{
    if (angle == 0.0) {
        return v;
    }
    const Vec3 d = p2 - p1;
    const double h = std::atan2(d.x, p1.z - p2.z);
    const double across = square(d.x);
    const double along = square(d.z);
    const double q = std::atan2(d.y, std::sqrt(along + across));
    Vec3 r = v - p1;
    r = rotate_y(r, -h);
    r = rotate_z(r, q);
    r = rotate_x(r, angle);
    r = rotate_z(r, -q);
    r = rotate_y(r, h);
    return r + p1;
}

double angle_between(Vec3 a, Vec3 b)
{
    const double length_a = length(a);
    const double length_b = length(b);
    if (length_a == 0.0 || length_b == 0.0) {
        return 0.0;
    }
    const double k = ((a.x * b.x + a.y * b.y) + a.z * b.z) / (length_a * length_b);
    double angle = k < 1.0 ? std::acos(k) : 0.0;
    if (angle > pi_rounded) {
        angle -= to_int32(angle / pi_rounded) * pi_rounded;
    }
    if (angle < -pi_rounded) {
        angle += to_int32(angle / pi_rounded) * pi_rounded;
    }
    return angle;
}

Vec3 plane_angles(Vec3 a, Vec3 b)
{
    Vec3 angles;
    angles.x = plane_angle(a.z * b.z + a.y * b.y, std::sqrt(square(a.z) + square(a.y)),
                           std::sqrt(square(b.z) + square(b.y)));
    angles.y = plane_angle(a.z * b.z + a.x * b.x, std::sqrt(square(a.z) + square(a.x)),
                           std::sqrt(square(b.z) + square(b.x)));
    angles.z = plane_angle(a.y * b.y + a.x * b.x, std::sqrt(square(a.x) + square(a.y)),
                           std::sqrt(square(b.x) + square(b.y)));
    return angles;
}

double heading(Vec3 v)
{
    const double flat = std::sqrt(v.z * v.z + v.x * v.x);
    if (v.x == 0.0 && v.z == 0.0) {
        return 0.0;
    }
    if (v.x >= 0.0 && v.z >= 0.0) {
        if (v.x == 0.0) {
            return 0.0;
        }
        return v.z == 0.0 ? half_pi_rounded : std::asin(v.x / flat);
    }
    if (v.x >= 0.0 && v.z < 0.0) {
        return v.x == 0.0 ? pi_rounded : half_pi_rounded + std::acos(v.x / flat);
    }
    if (v.x < 0.0 && v.z <= 0.0) {
        return v.z == 0.0 ? three_half_pi_rounded : three_half_pi_rounded - std::acos(-v.x / flat);
    }
    if (v.x < 0.0 && v.z > 0.0) {
        return three_half_pi_rounded + std::asin(v.z / flat);
    }
    return 0.0;
}

double signed_heading(Vec3 v)
{
    if (v.x == 0.0) {
        return 0.0;
    }
    if (v.z == 0.0 && v.x > 0.0) {
        return half_pi_rounded;
    }
    if (v.z == 0.0 && v.x < 0.0) {
        return -half_pi_rounded;
    }
    return std::atan2(v.z, v.x);
}

} // namespace literal
