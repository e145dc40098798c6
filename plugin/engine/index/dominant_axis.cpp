// SPDX-License-Identifier: MIT
#include "plugin/engine/index/dominant_axis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "plugin/geometry/LW6-face.h"
#include "plugin/geometry/area.h"

namespace dastrel {

int dominant_axis(face6_typ* polygons, int count)
{
    constexpr int sample = 1000;
    constexpr double most = 0.6; // cosine of 53 degrees
    const int step = std::max(count / sample, 1);
    double total = 0.0;
    std::array<double, 3> shown{};
    for (int i = 0; i < count; i += step) {
        const double area = calc_poly_area(i, polygons);
        total += area;
        for (std::size_t axis = 0; axis < 3; ++axis)
            shown[axis] += area * std::fabs(static_cast<const double*>(polygons[i].normal)[axis]);
    }
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (shown[axis] > most * total)
            return static_cast<int>(axis);
    return -1;
}

} // namespace dastrel
