// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstdint>

#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

/// A rotation by an angle, with its sine and cosine computed once for many points. All rotations of
/// the module use these formulas, so that they agree to the last bit.
///
/// A rotation by `a` uses the sine and cosine of -a: clockwise when seen against the axis in the
/// left-handed system.
class rotation_typ {
public:
    rotation_typ() : rotation_typ(0.0) {}
    /// By `a` radians.
    explicit rotation_typ(double a);

    /// The formulas, also applied for an angle of 0.
    XYZ6_typ computed_X(const XYZ6_typ& p) const
    {
        return {p.x(), p.y() * c - p.z() * s, p.z() * c + p.y() * s};
    }
    XYZ6_typ computed_Y(const XYZ6_typ& p) const
    {
        return {p.x() * c + p.z() * s, p.y(), p.z() * c - p.x() * s};
    }
    XYZ6_typ computed_Z(const XYZ6_typ& p) const
    {
        return {p.x() * c - p.y() * s, p.y() * c + p.x() * s, p.z()};
    }

    /// Rotations of `p`: about X and Z an angle of 0 returns `p` unchanged; about Y it is computed.
    XYZ6_typ about_X(const XYZ6_typ& p) const { return none() ? p : computed_X(p); }
    XYZ6_typ about_Y(const XYZ6_typ& p) const { return computed_Y(p); }
    XYZ6_typ about_Z(const XYZ6_typ& p) const { return none() ? p : computed_Z(p); }

private:
    /// Whether the angle is 0: no other angle has a sine that is exactly 0.
    bool none() const { return s == 0.0; }

    double s;
    double c;
};

/// A rotation that computes sine and cosine again only when the bits of the angle change.
class cached_rotation : public rotation_typ {
public:
    void set_angle(double a)
    {
        const auto new_bits = std::bit_cast<std::uint64_t>(a);
        if (new_bits == bits)
            return;
        bits = new_bits;
        static_cast<rotation_typ&>(*this) = rotation_typ(a);
    }

private:
    std::uint64_t bits = 0; // of the angle 0.0
};

} // namespace dastrel
