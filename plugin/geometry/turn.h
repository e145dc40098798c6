// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstdint>

#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

/// A turn by an angle whose sine and cosine are taken once, for turning many points alike. Every
/// turn of the module goes through these formulas, so that all agree to the last bit.
///
/// A turn by `a` uses the sine and cosine of -a: clockwise when seen against the axis in the
/// left-handed system.
class turn_typ {
public:
    turn_typ() : turn_typ(0.0) {}
    /// By `a` radians.
    explicit turn_typ(double a);

    /// The formulas themselves, computed for an angle of 0, too.
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

    /// The turns: about X and Z an angle of 0 leaves a point alone; about Y it is computed.
    XYZ6_typ about_X(const XYZ6_typ& p) const { return none() ? p : computed_X(p); }
    XYZ6_typ about_Y(const XYZ6_typ& p) const { return computed_Y(p); }
    XYZ6_typ about_Z(const XYZ6_typ& p) const { return none() ? p : computed_Z(p); }

private:
    /// Whether the angle is 0: no other angle has a sine that is exactly 0.
    bool none() const { return s == 0.0; }

    double s;
    double c;
};

/// A turn that is taken anew only when the angle changes by a bit.
class remembered_turn : public turn_typ {
public:
    void take(double a)
    {
        const auto asked = std::bit_cast<std::uint64_t>(a);
        if (asked == bits)
            return;
        bits = asked;
        static_cast<turn_typ&>(*this) = turn_typ(a);
    }

private:
    std::uint64_t bits = 0; // of the angle 0.0
};

} // namespace dastrel
