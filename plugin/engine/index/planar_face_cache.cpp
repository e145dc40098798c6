// SPDX-License-Identifier: MIT
#include "plugin/engine/index/planar_face_cache.h"

#include <cstddef>
#include <memory_resource>
#include <new>
#include <type_traits>

#include "plugin/geometry/LW6-face.h"
#include "plugin/geometry/area.h"
#include "plugin/geometry/normal_angles.h"

namespace dastrel {

static_assert(std::is_trivially_destructible_v<planar_face>,
              "the cache releases its memory without destroying the faces");

planar_face::planar_face(face6_typ& polygon, std::pmr::memory_resource& memory)
    : face(polygon, memory), area(calc_poly_area(0, &polygon)), pitch(normal_pitch(polygon.normal)),
      has_heading(normal_heading(polygon.normal, heading))
{}

planar_face_cache::planar_face_cache(face6_typ* polygons, int count)
    : ground(polygons), faces(static_cast<std::size_t>(count))
{}

const planar_face* planar_face_cache::compute(int i)
{
    constexpr std::size_t cache_line = 64;
    void* const place = memory.allocate(sizeof(planar_face), cache_line);
    return new (place) planar_face(ground[i], memory);
}

} // namespace dastrel
