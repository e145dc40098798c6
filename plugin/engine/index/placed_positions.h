// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "plugin/engine/index/position_index.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/util/node_pool.h"

namespace dastrel {

/// The positions of a run while they are found: an index answers for the list which of them are
/// near, and the list is linked in one go at the end, in the order that adding them one by one
/// gives. That order, and the walk over it, are the plain list's for every input.
class placed_positions {
public:
    /// As position_index has them.
    placed_positions(double spacing, std::size_t expected, int column_axis)
        : index(spacing, expected, column_axis)
    {}
    placed_positions(const placed_positions&) = delete;
    placed_positions& operator=(const placed_positions&) = delete;

    /// Takes a new position, and gives its node, to be filled in before `link`.
    pos_typ* add(const XYZ6_typ& pos);

    /// Whether any position stands closer to `pos` than `d`.
    bool too_close(const XYZ6_typ& pos, double d) { return index.too_close(pos, d); }

    /// The index that answers, for announcing questions to it.
    position_index& answers() { return index; }

    /// Makes the list of all positions, in ascending X, those of equal X in the order in which
    /// they came. One whose X is not a number stands where the largest X so far ended. `list` is
    /// null before; it is the caller's at every moment, also when memory ends
    /// on the way.
    void link(pos_typ*& list);

private:
    position_index index;
    node_pool memory{sizeof(pos_typ)};
    std::vector<pos_typ*> nodes; ///< in `memory`, in order of arrival
};

} // namespace dastrel
