// SPDX-License-Identifier: MIT
#pragma once

namespace literal {

/// Three doubles: a point, a direction, a triple of angles or of factors.
struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    [[nodiscard]] bool operator==(const Vec3&) const = default;
};

// Rounded decimal forms, not the nearest doubles to the true values.
inline constexpr double pi_rounded = 3.1415926535898;
inline constexpr double half_pi_rounded = 1.5707963267949;
inline constexpr double three_half_pi_rounded = 4.7123889803847;

[[nodiscard]] Vec3 operator+(Vec3 a, Vec3 b);
[[nodiscard]] Vec3 operator-(Vec3 a, Vec3 b);
[[nodiscard]] Vec3 operator*(Vec3 a, double factor);
[[nodiscard]] Vec3 cross(Vec3 a, Vec3 b);
[[nodiscard]] double length(Vec3 a);
[[nodiscard]] double distance(Vec3 a, Vec3 b);
/// True when all three components equal 0 (either zero; a NaN does not).
[[nodiscard]] bool is_zero(Vec3 a);
/// The vector divided by its length; the zero vector stays zero.
[[nodiscard]] Vec3 unit(Vec3 a);

/// The vector turned about one axis by `angle` radians, with sin(-angle) and cos(-angle).
/// About X and Z an angle of 0 gives the vector back untouched; about Y the formula always runs.
[[nodiscard]] Vec3 rotate_x(Vec3 v, double angle);
[[nodiscard]] Vec3 rotate_y(Vec3 v, double angle);
[[nodiscard]] Vec3 rotate_z(Vec3 v, double angle);

/// The same about a centre. `v` itself is moved to the centre and back, so it may change in its
/// last bits; only about Z does an angle of 0 leave everything untouched.
[[nodiscard]] Vec3 rotate_x_about(Vec3& v, Vec3 centre, double angle);
[[nodiscard]] Vec3 rotate_y_about(Vec3& v, Vec3 centre, double angle);
[[nodiscard]] Vec3 rotate_z_about(Vec3& v, Vec3 centre, double angle);

/// Turned about a centre by angles.x about X, then angles.z about Z, then angles.y about Y.
[[nodiscard]] Vec3 rotate_about(Vec3 v, Vec3 centre, Vec3 angles);
/// Into the frame placed at `origin` and turned by `angles`.
[[nodiscard]] Vec3 to_local(Vec3 v, Vec3 origin, Vec3 angles);
/// Out of the frame placed at `origin` and turned by `angles`.
[[nodiscard]] Vec3 to_global(Vec3 v, Vec3 origin, Vec3 angles);
/// Turned in the frame that the line through p1 and p2 gives. The frame's heading takes its x and
/// z differences in opposite senses, so the axis is the line itself only for lines along Y.
[[nodiscard]] Vec3 rotate_free(Vec3 v, Vec3 p1, Vec3 p2, double angle);

/// The angle between two vectors in radians; 0 where either has no length.
[[nodiscard]] double angle_between(Vec3 a, Vec3 b);
/// The angles between the projections of two vectors on the planes Y-Z, X-Z and X-Y.
[[nodiscard]] Vec3 plane_angles(Vec3 a, Vec3 b);
/// The heading of the X-Z projection from +Z towards +X, in [0, 2 pi).
[[nodiscard]] double heading(Vec3 v);
/// A signed angle of the X-Z projection; on the axes it differs on purpose from its neighbours.
[[nodiscard]] double signed_heading(Vec3 v);

} // namespace literal
