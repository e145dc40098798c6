// SPDX-License-Identifier: MIT
#include "plugin/geometry/axes.h"

#include <cmath>

#include "plugin/geometry/rotation.h"

namespace dastrel {

void axes_typ::calc_transf_angles()
{
    const XYZ6_typ a = axis[0];
    const XYZ6_typ b = axis[1];
    angle[0] = std::atan2(a.z(), a.x());
    angle[1] = -std::atan2(a.y(), std::sqrt(a.z() * a.z() + a.x() * a.x()));
    const double c0 = std::cos(angle[0]);
    const double s0 = std::sin(angle[0]);
    const double c1 = std::cos(angle[1]);
    const double s1 = std::sin(angle[1]);
    angle[2] = -std::atan2(b.z() * c0 - b.x() * s0, b.y() * c1 + b.x() * c0 * s1 + b.z() * s0 * s1);
}

void axes_typ::to_local(XYZ6_typ* pts, int n, XYZ6_typ origin) const
{
    const rotation_typ y(-angle[0]);
    const rotation_typ z(-angle[1]);
    const rotation_typ x(-angle[2]);
    const bool moved = origin != 0.0;
    const XYZ6_typ back = XYZ6_typ() - origin;
    for (int i = 0; i < n; ++i) {
        const XYZ6_typ p = moved ? pts[i].move(back) : pts[i];
        pts[i] = x.about_X(z.about_Z(y.about_Y(p)));
    }
}

void axes_typ::to_global(XYZ6_typ* pts, int n, XYZ6_typ origin) const
{
    const rotation_typ y(angle[0]);
    const rotation_typ z(angle[1]);
    const rotation_typ x(angle[2]);
    for (int i = 0; i < n; ++i)
        pts[i] = y.about_Y(z.about_Z(x.about_X(pts[i]))).move(origin);
}

} // namespace dastrel
