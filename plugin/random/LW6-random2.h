// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/random/rnd.h"
#include "plugin/util/convert.h"

namespace dastrel {

class face6_typ;

/// The few kinds of draw that scattering needs. Each draw takes one output of the generator unless
/// its range is empty.
class random : public CRandom {
public:
    /// Seeded from the clock, in seconds.
    random();
    random(const random&) = delete;
    random& operator=(const random&) = delete;
    virtual ~random() = default;

    /// Restarts the sequence; s and -s start the same one.
    void fixed(int seed);

    /// A coin toss.
    bool TorF();

    /// A fraction in [0, 1].
    double percent();

    /// A whole number between a and b, both included and in any order. Each end is half as likely
    /// as a number between them (for numbers from 0 up; below 0 the rounding goes towards 0).
    /// Layouts depend on this unevenness. Equal bounds are returned without a draw.
    int z_zakresu(int a, int b)
    {
        if (a == b)
            return a;
        if (a > b)
            std::swap(a, b);
        return to_int(a + wrapping_difference(b, a) * get() + 0.5);
    }

    /// A real between a and b, both included and in any order. Equal bounds draw nothing.
    double z_zakresu(double a, double b)
    {
        if (a == b)
            return a;
        if (a > b)
            std::swap(a, b);
        return (b - a) * get() + a;
    }

    /// A point of the polygon: a column drawn evenly over its width in its own plane, then a height
    /// drawn evenly within the column, so narrow parts get as many points for each unit of width
    /// as wide ones. Takes up to two outputs. The origin, without a draw, for fewer than three
    /// points.
    XYZ6_typ z_polygonu(face6_typ* poly);
};

} // namespace dastrel
