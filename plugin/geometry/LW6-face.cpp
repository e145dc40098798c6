// SPDX-License-Identifier: MIT
#include "plugin/geometry/LW6-face.h"

namespace dastrel {

face6_typ::~face6_typ()
{
    delete[] points;
    points = nullptr;
}

void face6_typ::move(XYZ6_typ d)
{
    for (int i = 0; i < num_points; ++i)
        points[i] = points[i].move(d);
}

} // namespace dastrel
