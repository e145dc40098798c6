// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/util/large_array.h"

namespace dastrel {

/// Positions in a grid of cubic cells, to find those near a point without looking at all of them.
///
/// It answers exactly what a walk over the positions in ascending X answers, for every distance:
/// the cells only choose which positions are looked at. Most of these are decided by their
/// coordinates in single precision, four at a time out of one cache line; where that is too close
/// to call, the walk's own comparisons decide. Cells share lines by hashing; what else lies in a
/// line is looked at in vain.
class position_index {
public:
    /// `spacing`: the distance that will mostly be asked for. `expected`: how many positions may
    /// come; it may be wrong.
    position_index(double spacing, std::size_t expected);

    /// Adds a position.
    void insert(const XYZ6_typ& pos);

    /// Whether any position stands closer to `pos` than `d`.
    bool too_close(const XYZ6_typ& pos, double d);

    /// Has the memory fetched that `too_close` of these will look at.
    void prefetch(const XYZ6_typ& pos, double d) const;

private:
    static constexpr std::size_t line_length = 4;

    /// Up to four positions, relative to `origin`; infinite where there is none.
    struct alignas(64) line_typ {
        std::array<float, line_length> x, y, z;
        std::int32_t used;
        std::int32_t next; ///< the line in `more` that goes on, or -1
    };

    /// The positions of a line as they are.
    using exact_typ = std::array<XYZ6_typ, line_length>;

    /// Cells from (x0, y0, z0) to (x1, y1, z1), both included.
    struct box_typ {
        std::int64_t x0, x1, y0, y1, z0, z1;
        double cells() const
        {
            return (static_cast<double>(x1 - x0) + 1) * (static_cast<double>(y1 - y0) + 1) *
                   (static_cast<double>(z1 - z0) + 1);
        }
    };

    struct query_typ;

    static line_typ empty_line();
    std::int64_t cell(double coordinate) const;
    box_typ box(const XYZ6_typ& pos, double d) const;
    static std::size_t row(std::int64_t y, std::int64_t z);
    void put(const XYZ6_typ& pos);
    void put(line_typ& line, exact_typ& exact, const XYZ6_typ& pos);
    void grow();
    query_typ query(const XYZ6_typ& pos, double d) const;
    bool too_close_in(const query_typ& query, std::size_t line) const;

    large_array<line_typ> lines; ///< a power of two of them
    large_array<exact_typ> exact;
    std::vector<line_typ> more; ///< where a line is full
    std::vector<exact_typ> more_exact;
    std::size_t count = 0;
    XYZ6_typ origin;       ///< the first position
    double farthest = 0.0; ///< of all positions from the origin, along any axis
    double cells_per_unit;
    double asked_sum = 0.0; ///< of the distances asked for since the cells were sized
    std::size_t asked = 0;
};

} // namespace dastrel
