// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include "plugin/random/LW6-random2.h"

namespace dastrel {

/// Lets the sampler's next outputs be the ends of its range: 0.0 or 1.0 for each of `ends`.
inline void let_next_be(random& sampler, std::initializer_list<double> ends)
{
    constexpr unsigned becomes_all_ones = 0x12dd9bb3; // by the last steps of an output
    sampler.randomize(1);
    (void)sampler.get(); // makes the state
    int at = sampler.mti;
    for (const double end : ends)
        sampler.mt[at++] = end == 0.0 ? 0U : becomes_all_ones;
}

} // namespace dastrel
