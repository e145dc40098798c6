// SPDX-License-Identifier: MIT
#include "plugin/geometry/area.h"

#include <cmath>
#include <cstdint>

namespace dastrel {

double calc_triangle_area(XYZ6_typ a, XYZ6_typ b, XYZ6_typ c)
{
    const double s1 = a.calc_distance(b);
    const double s2 = b.calc_distance(c);
    const double s3 = c.calc_distance(a);
    const double h = (s1 + s2 + s3) * 0.5;
    return std::sqrt((h - s3) * ((h - s2) * ((h - s1) * h)));
}

double calc_poly_area(int i, face6_typ* polys)
{
    const face6_typ& p = polys[i];
    if (p.num_points < 3)
        return 0.0;
    double area = 0.0;
    const XYZ6_typ a = p.points[0];
    XYZ6_typ c = p.points[1];
    // 16 bits: polygons have fewer than 65,536 points
    for (std::uint16_t k = 2; k < p.num_points; ++k) {
        const XYZ6_typ b = c;
        c = p.points[k];
        area += calc_triangle_area(a, b, c);
    }
    return area;
}

double calc_area(face6_typ* polys, int n)
{
    double area = 0.0;
    for (int i = 0; i < n; ++i)
        area += calc_poly_area(i, polys);
    return area;
}

} // namespace dastrel
