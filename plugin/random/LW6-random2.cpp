// SPDX-License-Identifier: MIT
#include "plugin/random/LW6-random2.h"

#include <cstdint>

#include "plugin/random/clock.h"
#include "plugin/util/convert.h"

namespace dastrel {

random::random() { randomize(clock_seconds()); }

void random::fixed(int seed)
{
    // Widened with its sign: the most negative seed, which has no absolute value, stays negative.
    const std::int64_t widened = wrapping_abs(seed);
    randomize(static_cast<std::uint64_t>(widened));
}

bool random::TorF() { return get() > 0.5; }

double random::percent() { return get(); }

} // namespace dastrel
