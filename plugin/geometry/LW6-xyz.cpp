// SPDX-License-Identifier: MIT
#include "plugin/geometry/LW6-XYZ.h"

#include <cmath>

namespace dastrel {

namespace {

// Squares of components below about 1e-162 underflow, so that a vector may have no measurable
// length and yet a direction. Scaled by a power of two it keeps all its bits.
XYZ6_typ with_measurable_length(XYZ6_typ v)
{
    constexpr double two_to_600 = 0x1p600;
    return v * two_to_600;
}

} // namespace

XYZ6_typ XYZ6_typ::operator=(double d)
{
    component[0] = d;
    component[1] = d;
    component[2] = d;
    return *this;
}

XYZ6_typ XYZ6_typ::operator=(const double* p)
{
    const XYZ6_typ copy(p); // p may point at this vector's own components
    return *this = copy;
}

XYZ6_typ XYZ6_typ::operator+=(XYZ6_typ b)
{
    component[0] += b.x();
    component[1] += b.y();
    component[2] += b.z();
    return *this;
}

XYZ6_typ XYZ6_typ::operator*(XYZ6_typ b) const
{
    return {y() * b.z() - z() * b.y(), b.x() * z() - x() * b.z(), x() * b.y() - y() * b.x()};
}

int XYZ6_typ::operator!=(double d) const { return x() != d || y() != d || z() != d ? 1 : 0; }

XYZ6_typ XYZ6_typ::operator~() const
{
    const double length = len();
    if (length != 0.0)
        return {x() / length, y() / length, z() / length};
    if (*this != 0.0)
        return ~with_measurable_length(*this);
    return {};
}

XYZ6_typ XYZ6_typ::operator!() const { return {-x(), -y(), -z()}; }

float* XYZ6_typ::conv2float() const
{
    return new float[3]{static_cast<float>(x()), static_cast<float>(y()), static_cast<float>(z())};
}

double XYZ6_typ::len() const { return std::sqrt((x() * x() + y() * y()) + z() * z()); }

double XYZ6_typ::calc_distance(XYZ6_typ b) const
{
    const double dx = x() - b.x();
    const double dy = y() - b.y();
    const double dz = z() - b.z();
    return std::sqrt((dx * dx + dy * dy) + dz * dz);
}

} // namespace dastrel
