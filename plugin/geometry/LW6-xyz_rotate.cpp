// SPDX-License-Identifier: MIT
// Rotations of a vector.
#include <cmath>

#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/geometry/rotation.h"

namespace dastrel {

XYZ6_typ XYZ6_typ::rotate_X(double a) const
{
    return a == 0.0 ? *this : rotation_typ(a).about_X(*this);
}

// Without the shortcut of the other two: a rotation by 0 is computed here.
XYZ6_typ XYZ6_typ::rotate_Y(double a) const { return rotation_typ(a).about_Y(*this); }

XYZ6_typ XYZ6_typ::rotate_Z(double a) const
{
    return a == 0.0 ? *this : rotation_typ(a).about_Z(*this);
}

XYZ6_typ XYZ6_typ::rotate_X(XYZ6_typ c, double a)
{
    *this = *this - c;
    const XYZ6_typ turned = rotation_typ(a).computed_X(*this).move(c);
    *this += c;
    return turned;
}

XYZ6_typ XYZ6_typ::rotate_Y(XYZ6_typ c, double a)
{
    *this = *this - c;
    const XYZ6_typ turned = rotation_typ(a).computed_Y(*this).move(c);
    *this += c;
    return turned;
}

XYZ6_typ XYZ6_typ::rotate_Z(XYZ6_typ c, double a)
{
    if (a == 0.0)
        return *this;
    *this = *this - c;
    const XYZ6_typ turned = rotation_typ(a).computed_Z(*this).move(c);
    *this += c;
    return turned;
}

XYZ6_typ XYZ6_typ::rotate(XYZ6_typ c, XYZ6_typ angles) const
{
    XYZ6_typ r = *this - c;
    r = rotation_typ(angles.x()).computed_X(r);
    r = rotation_typ(angles.z()).computed_Z(r);
    r = rotation_typ(angles.y()).computed_Y(r);
    return r.move(c);
}

XYZ6_typ XYZ6_typ::to_local(XYZ6_typ origin, XYZ6_typ angles) const
{
    const XYZ6_typ r = *this - origin;
    return r.rotate_Y(angles.y()).rotate_Z(-angles.z()).rotate_X(-angles.x());
}

XYZ6_typ XYZ6_typ::to_global(XYZ6_typ origin, XYZ6_typ angles) const
{
    return rotate_X(angles.x()).rotate_Z(angles.z()).rotate_Y(-angles.y()).move(origin);
}

XYZ6_typ XYZ6_typ::rotate_free(XYZ6_typ p1, XYZ6_typ p2, double a) const
{
    if (a == 0.0)
        return *this;
    const XYZ6_typ d = p2 - p1;
    // The z difference is taken the other way round than the x difference: that decides the frame.
    const double heading = std::atan2(d.x(), p1.z() - p2.z());
    const double dx2 = std::pow(d.x(), 2.0);
    const double dz2 = std::pow(d.z(), 2.0);
    const double pitch = std::atan2(d.y(), std::sqrt(dz2 + dx2));
    const XYZ6_typ r = (*this - p1).rotate_Y(-heading).rotate_Z(pitch).rotate_X(a);
    return r.rotate_Z(-pitch).rotate_Y(heading).move(p1);
}

} // namespace dastrel
