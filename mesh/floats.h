// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace mesh {

/// Copies `count` floats, which are mostly one to three: for these a loop takes less time than the
/// call of anything cleverer.
inline void copy_floats(const float* from, float* to, std::size_t count) noexcept
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = from[i];
}

} // namespace mesh
