// SPDX-License-Identifier: MIT
#include "plugin/random/LW6-random2.h"

#include <cstdint>
#include <utility>

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

int random::z_zakresu(int a, int b)
{
    if (a == b)
        return a;
    if (a > b)
        std::swap(a, b);
    return to_int(a + wrapping_difference(b, a) * get() + 0.5);
}

double random::z_zakresu(double a, double b)
{
    if (a == b)
        return a;
    if (a > b)
        std::swap(a, b);
    return (b - a) * get() + a;
}

} // namespace dastrel
