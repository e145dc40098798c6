// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/engine/placed_positions.h"

namespace dastrel {

/// While it lives, `check_pos` and `add_item` work on an index of the positions; `finish` makes
/// them the list `pos_list`. With `plain_lists` they work on the list all the time.
class position_setup {
public:
    /// `spacing`: the distance that will mostly be asked for; `expected`: how many positions.
    position_setup(double spacing, int expected);
    position_setup(const position_setup&) = delete;
    position_setup& operator=(const position_setup&) = delete;
    ~position_setup();

    /// Has the memory fetched that `check_pos` of these will look at.
    void prefetch(const XYZ6_typ& pos, double d) const;

    void finish();

private:
    placed_positions store;
};

} // namespace dastrel
