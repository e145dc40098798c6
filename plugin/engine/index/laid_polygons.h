// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory_resource>
#include <vector>

#include "plugin/random/flat_face.h"

namespace dastrel {

class face6_typ;

/// What every candidate on a polygon needs of it and does not change from one to the next.
struct laid_polygon {
    /// `memory` holds the corners of the face and must live as long.
    laid_polygon(face6_typ& polygon, std::pmr::memory_resource& memory);

    flat_face face;
    double area;             ///< as calc_poly_area gives it
    double pitch;            ///< of the normal
    double heading = 0.0;    ///< of the normal, where it has one
    bool any_heading = true; ///< the normal has no heading of its own: each clone draws one
};

/// The polygons of the ground, each laid flat when it is met for the first time.
class laid_polygons {
public:
    /// The ground: `count` records, which must stay as they are.
    laid_polygons(face6_typ* polygons, int count);

    const laid_polygon& operator[](int i)
    {
        const laid_polygon*& laid = table[static_cast<std::size_t>(i)];
        if (laid == nullptr)
            laid = lay(i);
        return *laid;
    }

    /// Has the memory of a polygon fetched.
    void prefetch(int i) const
    {
        constexpr std::size_t line = 64;
        const auto* const laid =
            reinterpret_cast<const std::byte*>(table[static_cast<std::size_t>(i)]);
        if (laid == nullptr)
            return;
        for (std::size_t at = 0; at <= sizeof(laid_polygon); at += line)
            __builtin_prefetch(laid + at); // the corners follow
    }

private:
    const laid_polygon* lay(int i);

    face6_typ* ground;
    std::pmr::monotonic_buffer_resource memory;
    std::vector<const laid_polygon*> table;
};

} // namespace dastrel
