// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory_resource>
#include <vector>

#include "plugin/random/flat_face.h"

namespace dastrel {

class face6_typ;

/// What positions need of a ground polygon, computed once for all candidates that fall on it.
struct planar_face {
    /// `memory` holds the corners of `face` and must outlive this object.
    planar_face(face6_typ& polygon, std::pmr::memory_resource& memory);

    flat_face face;           ///< the polygon in its own plane, to draw points from
    double area;              ///< as calc_poly_area gives it
    double pitch;             ///< as normal_pitch gives it
    double heading = 0.0;     ///< as normal_heading gives it
    bool has_heading = false; ///< as normal_heading returns
};

/// The planar faces of the ground's polygons, each computed at its first use.
class planar_face_cache {
public:
    /// `polygons`: `count` records, which must outlive the cache and not change.
    planar_face_cache(face6_typ* polygons, int count);

    /// The face of polygon `i`. The reference stays valid as long as the cache.
    const planar_face& operator[](int i)
    {
        const planar_face*& face = faces[static_cast<std::size_t>(i)];
        if (face == nullptr)
            face = compute(i);
        return *face;
    }

    /// Prefetches the face of polygon `i` into the processor's cache, if it is computed.
    void prefetch(int i) const
    {
        constexpr std::size_t cache_line = 64;
        const auto* const face =
            reinterpret_cast<const std::byte*>(faces[static_cast<std::size_t>(i)]);
        if (face == nullptr)
            return;
        for (std::size_t at = 0; at <= sizeof(planar_face); at += cache_line)
            __builtin_prefetch(face + at); // the corners follow in memory
    }

private:
    const planar_face* compute(int i);

    face6_typ* ground;
    std::pmr::monotonic_buffer_resource memory;
    std::vector<const planar_face*> faces; ///< null until computed
};

} // namespace dastrel
