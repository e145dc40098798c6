// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/engine/index/placed_positions.h"

namespace dastrel {

/// While it lives, `check_pos` and `add_item` work on an index of the positions; `finish` makes
/// them the list `pos_list`. With `plain_lists` they work on the list all the time.
class position_setup {
public:
    /// `spacing`: the distance that will mostly be asked for; `expected`: how many positions;
    /// `column_axis`: along which the ground shows most of its area, or -1.
    position_setup(double spacing, int expected, int column_axis);
    position_setup(const position_setup&) = delete;
    position_setup& operator=(const position_setup&) = delete;
    ~position_setup();

    /// To announce what `check_pos` will ask.
    position_index& answers() { return store.answers(); }

    /// Makes the positions found so far the list `pos_list`; the last call.
    void finish();

private:
    placed_positions store;
};

} // namespace dastrel
