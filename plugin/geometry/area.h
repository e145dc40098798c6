// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/geometry/LW6-face.h"

namespace dastrel {

/// Area of a triangle by Heron's formula. For points on one line rounding may make it NaN.
double calc_triangle_area(XYZ6_typ a, XYZ6_typ b, XYZ6_typ c);

/// Area of record `i` of `polys` as a fan of triangles from its first point: exact for a convex
/// polygon, the sum of the overlapping triangles for a concave one, 0 for fewer than three points.
double calc_poly_area(int i, face6_typ* polys);

/// Sum of the areas of the first `n` records.
double calc_area(face6_typ* polys, int n);

} // namespace dastrel
