// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "tests/literal/kernel/face.h"
#include "tests/literal/kernel/generator.h"
#include "tests/literal/kernel/vector.h"

namespace literal {

/// The draws of a run. Each draw takes one output of the generator, except where it says otherwise.
class Sampler {
public:
    /// Seeds from a calendar time in seconds, of which the low 32 bits count.
    explicit Sampler(std::int64_t clock_seconds);

    /// Restarts the sequence; s and -s give the same one.
    void restart(std::int32_t seed);

    /// True with an output above one half.
    [[nodiscard]] bool coin();
    /// An output as it is, on [0, 1].
    [[nodiscard]] double fraction();
    /// An integer from a to b in either order; equal bounds take no output. The ends of a range
    /// of non-negative numbers come half as often as each number between.
    [[nodiscard]] std::int32_t between(std::int32_t a, std::int32_t b);
    /// A real from a to b in either order; equal bounds take no output.
    [[nodiscard]] double between(double a, double b);
    /// A point of a face: a column of it first, then a height in that column. Fewer than 3 points
    /// give the zero vector and take no output; otherwise at most two outputs are taken.
    [[nodiscard]] Vec3 point_on(const Face& face);

private:
    Generator generator_;
};

} // namespace literal
