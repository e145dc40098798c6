// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include "tests/literal/kernel/vector.h"

namespace literal {

/// A usable foreground face as a run keeps it. `polygon` indexes `Scene::polygons`.
struct Face {
    std::vector<Vec3> points;
    Vec3 normal;
    std::size_t polygon = 0;
};

/// Heron's formula. A flat triangle gives 0 or, where rounding makes the product negative, NaN.
[[nodiscard]] inline double triangle_area(Vec3 a, Vec3 b, Vec3 c)
{
    const double s1 = distance(a, b);
    const double s2 = distance(b, c);
    const double s3 = distance(c, a);
    const double h = (s1 + s2 + s3) * 0.5;
    return std::sqrt((h - s3) * ((h - s2) * ((h - s1) * h)));
}

/// The sum of the triangles of a fan from the first point; 0 for fewer than 3 points.
[[nodiscard]] inline double face_area(const Face& face)
{
    if (face.points.size() < 3) {
        return 0.0;
    }
    double sum = 0.0;
    const Vec3 a = face.points[0];
    Vec3 c = face.points[1];
    for (std::size_t k = 2; k < face.points.size(); ++k) {
        const Vec3 b = c;
        c = face.points[k];
        sum += triangle_area(a, b, c);
    }
    return sum;
}

/// The sum of the areas, added in the order of the list.
[[nodiscard]] inline double total_area(const std::vector<Face>& faces)
{
    double sum = 0.0;
    for (const Face& face : faces) {
        sum += face_area(face);
    }
    return sum;
}

} // namespace literal
