// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>

namespace mesh {

/// Copies `count` floats, which are mostly one to three: anything cleverer than one by one takes
/// longer than these.
inline void copy_floats(const float* from, float* to, std::size_t count) noexcept
{
    if (count > 3) {
        std::copy_n(from, count, to);
        return;
    }
    if (count > 0)
        to[0] = from[0];
    if (count > 1)
        to[1] = from[1];
    if (count > 2)
        to[2] = from[2];
}

} // namespace mesh
