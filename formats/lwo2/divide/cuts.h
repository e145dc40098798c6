// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "formats/lwo2/write/layer_part.h"

namespace formats::lwo2 {

/// The positions in the point order of a layer at which it can be divided. Position p lies before
/// point p; it is free if no polygon has points on both sides.
class Cuts {
public:
    /// @param points  number of points; all positions are initially free
    explicit Cuts(std::uint32_t points);

    /// Blocks all positions between two points. In constant time, independent of their distance.
    void join(std::uint32_t first, std::uint32_t last);

    /// Evaluates all joins. Call once, after the last `join` and before `last_in`.
    void finish();

    /// The last free position in a range, if any.
    [[nodiscard]] std::optional<std::uint32_t> last_in(Range places) const;

private:
    [[nodiscard]] bool is_free(std::uint32_t place) const
    {
        return ((closed_[place / 64u] >> (place % 64u)) & 1u) == 0;
    }
    void close(std::uint32_t begin, std::uint32_t end);

    std::vector<std::uint64_t> closed_;    ///< one bit per position
    std::vector<std::int32_t> long_joins_; ///< difference array over fixed-size ranges: joins that
                                           ///< start at a range minus joins that end before it
};

} // namespace formats::lwo2
