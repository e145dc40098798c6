// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace mesh {

/// Memory of the C library for values of one size, which a Buffer counts.
struct Block {
    void* data = nullptr;
    std::size_t ready = 0;    ///< values that the memory to be used so far holds
    std::size_t asked = 0;    ///< the same and what was asked for ahead
    std::size_t capacity = 0; ///< values that the memory holds
};

/// Gives the block room for `capacity` values of `value_size` bytes in all.
/// @throws std::bad_alloc when memory ends; the block is then as it was.
void reallocate(Block& block, std::size_t capacity, std::size_t value_size);

/// Gives the memory back. The block must not be used afterwards.
void release(Block& block, std::size_t value_size) noexcept;

/// Makes memory ready for `needed` values, and asks for that of some more that are likely to
/// follow.
/// @throws std::bad_alloc when memory ends; the block is then as it was.
void grow(Block& block, std::size_t needed, std::size_t value_size);

} // namespace mesh
