// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/util/large_array.h"

namespace dastrel {

/// A hash table of grid cells that finds the positions near a point.
///
/// For every distance it gives the answer of a walk over the positions in ascending X; the grid
/// only chooses which positions are compared. A bucket is one cache line of up to four positions in
/// single precision, compared together. Where single precision cannot decide, the comparisons of
/// the walk are made in double precision. Several cells may share a bucket.
///
/// On a ground that shows most of its area along one axis the cells are columns along that axis:
/// half as many of them surround a point.
class position_index {
public:
    /// `spacing`: the usual distance of queries. `expected`: the number of positions.
    /// `dominant_axis`: 0 to 2 for cells that are columns along this axis, -1 for cubes. Wrong
    /// values cost time and never change an answer.
    position_index(double spacing, std::size_t expected, int dominant_axis);

    /// Adds a position. The index keeps its address: it must outlive the index and not change.
    void insert(const XYZ6_typ& pos);

    /// Whether any position is closer to `pos` than `d`, as the walk in ascending X finds.
    bool too_close(const XYZ6_typ& pos, double d);

    /// How many queries can be prefetched at a time.
    static constexpr std::size_t max_queries = 16;

    /// Prefetches the buckets that a later `too_close(pos, ...)` reads. `number`: below
    /// `max_queries`. `d`: the largest distance of that call.
    void prefetch_query(std::size_t number, const XYZ6_typ& pos, double d);

    /// Tells that the next `too_close` is query `number` of `prefetch_query`.
    void select_query(std::size_t number) { current = number; }

private:
    static constexpr std::size_t bucket_size = 4;

    /// Up to four positions relative to `origin`; unused entries are infinite. The last entry of
    /// `position` may be a link to an overflow bucket instead.
    struct alignas(64) bucket_typ {
        std::array<float, bucket_size> x, y, z;
        /// Index into `positions`; -1: unused; -2 - i: link to `overflow[i]`.
        std::array<std::int32_t, bucket_size> position;
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

    /// A query and the buckets of the cells within its distance, that of its own cell first.
    struct near_typ {
        XYZ6_typ pos;
        double d = 0.0;
        std::array<std::uint32_t, 27> bucket{};
        std::size_t count = 0;

        /// Whether `bucket` serves a query at `p` with this distance.
        bool covers(const XYZ6_typ& p, double distance) const
        {
            return count != 0 && distance <= d && pos.x() == p.x() && pos.y() == p.y() &&
                   pos.z() == p.z();
        }
    };

    /// Along one axis: the cell of a point, and which neighbours are within reach.
    struct span_typ {
        std::int64_t own = 0;
        unsigned beside = 0; ///< 1: the one below; 2: the one above; 3: both
    };

    struct query_typ;

    static bucket_typ empty_bucket();
    static std::size_t row(std::int64_t y, std::int64_t z);
    std::int64_t cell(const XYZ6_typ& pos, int axis, double reach) const;
    box_typ box(const XYZ6_typ& pos, double d) const;
    bool find_span(double coordinate, double reach, span_typ& span) const;
    bool find_near(const XYZ6_typ& pos, double d, near_typ& near) const;
    void put(std::size_t number);
    void rebuild();
    query_typ query(const XYZ6_typ& pos, double d) const;
    bool rejects(const query_typ& query, const bucket_typ& bucket) const;
    bool too_close_in(const query_typ& query, std::size_t i) const;
    bool too_close_in_box(const query_typ& query) const;

    large_array<bucket_typ> buckets;  ///< their number is a power of two
    std::vector<bucket_typ> overflow; ///< moved-out full buckets
    std::vector<const XYZ6_typ*> positions;
    std::array<near_typ, max_queries> queries;
    std::size_t current = 0;     ///< index into `queries`
    XYZ6_typ origin;             ///< the first position
    double origin_largest = 0.0; ///< largest coordinate of `origin`, absolute
    double farthest = 0.0;       ///< largest distance along an axis of a position from `origin`
    int column;                  ///< the axis along which cells are columns, or -1
    double cells_per_unit;
    double asked_sum = 0.0; ///< sum of the distances of queries since the last rebuild
    std::size_t asked = 0;  ///< number of these queries
};

} // namespace dastrel
