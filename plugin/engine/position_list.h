// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/engine/indexed_positions.h"

namespace dastrel {

/// During its lifetime `check_pos` and `add_item` work on an index of the positions, and `finish`
/// makes the list `pos_list` of them. With `plain_lists` they work on the list directly.
class position_setup {
public:
    /// See position_index.
    position_setup(double spacing, int expected, int dominant_axis);
    position_setup(const position_setup&) = delete;
    position_setup& operator=(const position_setup&) = delete;
    ~position_setup();

    /// The index, to prefetch the queries of `check_pos`.
    position_index& index() { return store.index(); }

    /// Makes the list `pos_list` of the positions. No call may follow.
    void finish();

private:
    indexed_positions store;
};

} // namespace dastrel
