// SPDX-License-Identifier: MIT
#include "plugin/engine/index/laid_polygons.h"

#include <cmath>
#include <cstddef>
#include <memory_resource>
#include <new>
#include <type_traits>

#include "plugin/geometry/LW6-face.h"
#include "plugin/geometry/area.h"

namespace dastrel {

static_assert(std::is_trivially_destructible_v<laid_polygon>,
              "its memory is given back as a whole");

namespace {

constexpr double pi = 3.141592653589793;

/// 0 for a normal straight up and, deliberately, for one straight down.
double pitch_of(XYZ6_typ n) { return -1 < n.y() && n.y() < 1 ? std::acos(n.y()) : 0.0; }

/// False for a normal along the Y axis, which has no heading.
bool heading_of(XYZ6_typ n, double& heading)
{
    constexpr double tolerance = 0.001;
    if (n.z() < -tolerance || n.z() > tolerance) {
        const double h = std::acos(n.x() / std::sqrt(n.x() * n.x() + n.z() * n.z()));
        heading = n.z() < 0 ? -h : h;
        return true;
    }
    if (n.x() > tolerance) {
        heading = 0.0;
        return true;
    }
    if (n.x() < -tolerance) {
        heading = pi;
        return true;
    }
    return false;
}

} // namespace

laid_polygon::laid_polygon(face6_typ& polygon, std::pmr::memory_resource& memory)
    : face(polygon, memory), area(calc_poly_area(0, &polygon)), pitch(pitch_of(polygon.normal)),
      any_heading(!heading_of(polygon.normal, heading))
{}

laid_polygons::laid_polygons(face6_typ* polygons, int count)
    : ground(polygons), table(static_cast<std::size_t>(count))
{}

const laid_polygon* laid_polygons::lay(int i)
{
    constexpr std::size_t line = 64; // of the cache: a polygon begins where one does
    void* const place = memory.allocate(sizeof(laid_polygon), line);
    return new (place) laid_polygon(ground[i], memory);
}

} // namespace dastrel
