// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/util/large_array.h"

namespace dastrel {

/// Positions in a grid of cells, to find those near a point without looking at all of them.
///
/// It answers exactly what a walk over the positions in ascending X answers, for every distance:
/// the cells only choose which positions are looked at. Most of these are decided by their
/// coordinates in single precision, four at a time out of one cache line; where that is too close
/// to call, the walk's own comparisons decide. Cells share lines by hashing; what else lies in a
/// line is looked at in vain.
///
/// A ground that shows most of its area along one axis has columns along that axis for cells: half
/// as many of them lie around a point.
class position_index {
public:
    /// `spacing`: the distance that will mostly be asked for. `expected`: how many positions may
    /// come. `column_axis`: 0 to 2 for cells that are columns along this axis, -1 for cubes. Any of
    /// them may be wrong.
    position_index(double spacing, std::size_t expected, int column_axis);

    /// Adds a position, which must stay where it is as long as this index is used.
    void insert(const XYZ6_typ& pos);

    /// Whether any position stands closer to `pos` than `d`.
    bool too_close(const XYZ6_typ& pos, double d);

    /// How many questions can be announced at a time.
    static constexpr std::size_t most_announced = 16;

    /// Announces a question, and has the memory fetched that it will need. `d`: the largest
    /// distance that may be asked for. `number`: below `most_announced`.
    void announce(std::size_t number, const XYZ6_typ& pos, double d);

    /// Tells that the next question is an announced one.
    void turn_to(std::size_t number) { current = number; }

private:
    static constexpr std::size_t line_length = 4;

    /// Up to four positions, relative to `origin`; infinite where there is none. The last place of
    /// `position` may lead on to another line instead.
    struct alignas(64) line_typ {
        std::array<float, line_length> x, y, z;
        /// Index into `positions`; -1: none; below -1: the line that goes on, counted in `more`
        /// from -2 downwards.
        std::array<std::int32_t, line_length> position;
    };

    /// Cells from (x0, y0, z0) to (x1, y1, z1), both included.
    struct box_typ {
        std::int64_t x0, x1, y0, y1, z0, z1;
        double cells() const
        {
            return (static_cast<double>(x1 - x0) + 1) * (static_cast<double>(y1 - y0) + 1) *
                   (static_cast<double>(z1 - z0) + 1);
        }
    };

    /// The lines of the few cells within a distance of a point, its own first.
    struct near_typ {
        XYZ6_typ pos;
        double d = 0.0;
        std::array<std::uint32_t, 27> line{};
        std::size_t count = 0;

        bool answers(const XYZ6_typ& p, double distance) const
        {
            return count != 0 && distance <= d && pos.x() == p.x() && pos.y() == p.y() &&
                   pos.z() == p.z();
        }
    };

    /// Along one axis: the cell of a point, and which of those beside it are within reach.
    struct span_typ {
        std::int64_t own = 0;
        unsigned beside = 0; ///< 1: the one below; 2: the one above; 3: both
    };

    struct query_typ;

    static line_typ empty_line();
    static std::size_t row(std::int64_t y, std::int64_t z);
    std::int64_t cell(const XYZ6_typ& pos, int axis, double reach) const;
    box_typ box(const XYZ6_typ& pos, double d) const;
    bool find_span(double coordinate, double reach, span_typ& span) const;
    bool find_near(const XYZ6_typ& pos, double d, near_typ& near) const;
    void put(std::size_t number);
    void rebuild();
    query_typ query(const XYZ6_typ& pos, double d) const;
    bool rejects(const query_typ& query, const line_typ& line) const;
    bool too_close_in(const query_typ& query, std::size_t i) const;
    bool too_close_in_box(const query_typ& query) const;

    large_array<line_typ> lines; ///< a power of two of them
    std::vector<line_typ> more;  ///< where a line is full
    std::vector<const XYZ6_typ*> positions;
    std::array<near_typ, most_announced> announced;
    std::size_t current = 0;     ///< of the announced
    XYZ6_typ origin;             ///< the first position
    double origin_largest = 0.0; ///< of its coordinates
    double farthest = 0.0;       ///< of all positions from the origin, along any axis
    int column;                  ///< the axis that does not count for the cells, or -1
    double cells_per_unit;
    double asked_sum = 0.0; ///< of the distances asked for since the cells were sized
    std::size_t asked = 0;
};

} // namespace dastrel
