// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/engine/index/candidate_draws.h"
#include "plugin/engine/position_list.h"
#include "plugin/host/run_state.h"

namespace dastrel {

class random;

/// The candidates for the positions of one run, drawn on the records `poly_data`, with the values
/// of their polygons. With `plain_lists` each is drawn and computed when it is asked for;
/// otherwise candidates are drawn ahead and values are cached. Both give the same values and leave
/// the generator in the same state.
class candidate_source {
public:
    /// `spacing`: the distance before it shrinks from try to try. `expected`: how many positions.
    /// `draws` must outlive this object.
    candidate_source(double spacing, int expected, random& draws);

    /// The next candidate.
    candidate_draw next() { return plain_lists ? next_plain() : drawn_ahead.next(); }

    /// The generator, in its state after the last candidate.
    random& sampler() { return plain_lists ? generator : drawn_ahead.sampler(); }

    /// The area of polygon `poly`.
    double area(int poly);

    /// The pitch of the normal of polygon `poly`.
    double pitch(int poly);

    /// Sets `heading` to that of the normal of polygon `poly`; false: it has none.
    bool heading(int poly, double& heading);

    /// Makes the accepted positions the list `pos_list`; the last call.
    void finish() { positions.finish(); }

private:
    candidate_draw next_plain();

    random& generator;
    position_setup positions;
    candidate_draws drawn_ahead;
};

} // namespace dastrel
