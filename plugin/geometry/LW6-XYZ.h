// SPDX-License-Identifier: MIT
#pragma once

namespace dastrel {

/// Three doubles: a point, direction or offset (x right, y up, z forward; left-handed), an angle
/// triple (heading, pitch, bank, in radians) or scale factors. Every comparison is exact.
///
/// The order of sums and products is part of the behaviour of every operation: a layout can only
/// be repeated when each result is the same to the last bit.
class XYZ6_typ {
public:
    XYZ6_typ() : component{0.0, 0.0, 0.0} {}
    explicit XYZ6_typ(double d) : component{d, d, d} {}
    explicit XYZ6_typ(const double* p) : component{p[0], p[1], p[2]} {}
    XYZ6_typ(double x, double y, double z) : component{x, y, z} {}

    double& x() { return component[0]; }
    double& y() { return component[1]; }
    double& z() { return component[2]; }
    double x() const { return component[0]; }
    double y() const { return component[1]; }
    double z() const { return component[2]; }

    /// Sets all three components; returns a copy.
    XYZ6_typ operator=(double d);
    /// Copies three components; returns a copy.
    XYZ6_typ operator=(const double* p);
    /// Adds `b` to this vector; returns a copy.
    XYZ6_typ operator+=(XYZ6_typ b);

    XYZ6_typ operator-(XYZ6_typ b) const { return {x() - b.x(), y() - b.y(), z() - b.z()}; }
    XYZ6_typ operator*(double s) const { return {x() * s, y() * s, z() * s}; }
    /// Cross product, this x b.
    XYZ6_typ operator*(XYZ6_typ b) const;
    /// 1 when any component differs from `d`, else 0.
    int operator!=(double d) const;
    /// Without this, the conversion to a pointer would let == compare addresses.
    bool operator==(const XYZ6_typ&) const = delete;
    /// The unit vector; the zero vector stays zero.
    XYZ6_typ operator~() const;
    /// The negated vector.
    XYZ6_typ operator!() const;

    /// The components as an array of three, for host calls that take a pointer.
    operator double*() { return component; }
    operator const double*() const { return component; }

    /// The components rounded to single precision, in a new array of three that the caller deletes.
    float* conv2float() const;

    double len() const;
    /// This vector plus `d`.
    XYZ6_typ move(XYZ6_typ d) const { return {x() + d.x(), y() + d.y(), z() + d.z()}; }
    double calc_distance(XYZ6_typ b) const;

    /// Rotates by `a` about one axis: clockwise when seen against the axis in the left-handed
    /// system.
    XYZ6_typ rotate_X(double a) const;
    XYZ6_typ rotate_Y(double a) const;
    XYZ6_typ rotate_Z(double a) const;

    /// Rotates about an axis through `c`. The vector itself is moved by -c and back by +c in place,
    /// which may change its last bits.
    XYZ6_typ rotate_X(XYZ6_typ c, double a);
    XYZ6_typ rotate_Y(XYZ6_typ c, double a);
    XYZ6_typ rotate_Z(XYZ6_typ c, double a);

    /// Rotates about `c`, first about X, then Z, then Y, by the components of `angles`.
    XYZ6_typ rotate(XYZ6_typ c, XYZ6_typ angles) const;

    /// Transforms into a frame at `origin` rotated by `angles`, and back.
    XYZ6_typ to_local(XYZ6_typ origin, XYZ6_typ angles) const;
    XYZ6_typ to_global(XYZ6_typ origin, XYZ6_typ angles) const;

    /// Rotates by `a` in a frame built on the line from `p1` to `p2`. That line is the axis only if
    /// it is parallel to Y.
    XYZ6_typ rotate_free(XYZ6_typ p1, XYZ6_typ p2, double a) const;

    /// Angle to `b` in [0, pi]; 0 when either has no length.
    double calc_angle(XYZ6_typ b) const;
    /// The angles between the projections of `a` and `b` onto the planes Y-Z, X-Z and X-Y; each 0
    /// where a projection has no length. This vector is not used.
    XYZ6_typ calc_angle(XYZ6_typ a, XYZ6_typ b) const;
    /// Heading of the projection onto X-Z, from +Z towards +X, in [0, 2 pi).
    double calc_angle_Y() const;
    /// A signed angle of the projection onto X-Z, with special values on the axes, where it is
    /// not continuous.
    double calc_angle_Y2() const;

private:
    double component[3];
};

} // namespace dastrel
