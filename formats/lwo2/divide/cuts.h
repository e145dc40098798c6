// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "formats/lwo2/write/layer_part.h"

namespace formats::lwo2 {

/// The places between the points of a layer at which it can be divided: place p lies before point
/// number p.
class Cuts {
public:
    /// @param points  how many points there are; all places between them are free at first
    explicit Cuts(std::uint32_t points);

    /// Closes the places between two points and those between them, in any order of calls, in time
    /// that does not grow with their distance.
    void join(std::uint32_t first, std::uint32_t last);

    /// Takes all joins into account. Once, after the last of them.
    void finish();

    /// The last free place in a range, if there is one.
    [[nodiscard]] std::optional<std::uint32_t> last_in(Range places) const;

private:
    [[nodiscard]] bool is_free(std::uint32_t place) const
    {
        return ((closed_[place / 64u] >> (place % 64u)) & 1u) == 0;
    }
    void close(std::uint32_t begin, std::uint32_t end);

    std::vector<std::uint64_t> closed_;    ///< one bit for each place
    std::vector<std::int32_t> long_joins_; ///< for each stretch of places: joins of all of it
                                           ///< that begin with it, less those that ended before
};

} // namespace formats::lwo2
