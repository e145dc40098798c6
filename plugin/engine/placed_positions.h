// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "plugin/engine/position_index.h"
#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

class pos_typ;

/// The positions of a run while they are found: an index answers for the list which of them are
/// near, and the list is linked in one go at the end, in the order that adding them one by one
/// gives. That order, and the walk over it, are the plain list's for every input; only where a
/// position is not a number is the list no longer sorted, and then everything goes on in the plain
/// list itself.
class placed_positions {
public:
    placed_positions(double spacing, std::size_t expected) : index(spacing, expected) {}
    placed_positions(const placed_positions&) = delete;
    placed_positions& operator=(const placed_positions&) = delete;
    /// Frees what has not been linked.
    ~placed_positions();

    /// Takes a new position. Null, and nothing is taken, where it cannot be sorted.
    pos_typ* add(const XYZ6_typ& pos);

    /// Whether any position stands closer to `pos` than `d`.
    bool too_close(const XYZ6_typ& pos, double d) { return index.too_close(pos, d); }

    /// Has the memory fetched that `too_close` of these will look at.
    void prefetch(const XYZ6_typ& pos, double d) const { index.prefetch(pos, d); }

    /// Gives the head of the list of all positions, in ascending X, those of equal X in the order
    /// in which they came. The caller owns it; this object is empty afterwards.
    pos_typ* link();

private:
    position_index index;
    std::vector<pos_typ*> nodes; ///< owned, in order of arrival
};

} // namespace dastrel
