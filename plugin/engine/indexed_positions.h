// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "plugin/engine/index/position_index.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/util/node_pool.h"

namespace dastrel {

/// The positions of a run while they are found. An index finds near positions in place of a walk
/// over the list; the list is made once, at the end, by sorting. Answers and order are equal to
/// those of the plain list for every input, also for coordinates that are not numbers.
class indexed_positions {
public:
    /// See position_index.
    indexed_positions(double spacing, std::size_t expected, int dominant_axis)
        : positions(spacing, expected, dominant_axis)
    {}
    indexed_positions(const indexed_positions&) = delete;
    indexed_positions& operator=(const indexed_positions&) = delete;

    /// Adds a position and returns its node, owned by this object; the caller fills in the rest
    /// before `link`.
    pos_typ* add(const XYZ6_typ& pos);

    /// Whether any position is closer to `pos` than `d`.
    bool too_close(const XYZ6_typ& pos, double d) { return positions.too_close(pos, d); }

    /// The index, to prefetch queries.
    position_index& index() { return positions; }

    /// Appends copies of all nodes to `list`, which must be null, in ascending X; equal X in order
    /// of arrival; a NaN behind the largest X that came before it. The caller owns the list, also
    /// when this throws std::bad_alloc half way.
    void link(pos_typ*& list);

private:
    position_index positions;
    node_pool memory{sizeof(pos_typ)};
    std::vector<pos_typ*> nodes; ///< allocated from `memory`, in order of arrival
};

} // namespace dastrel
