// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace mesh {

/// A malloc'ed allocation for values of one size. Used by Buffer, which stores the number of
/// values in use. All fields count values, not bytes.
struct Block {
    void* data = nullptr;
    std::size_t prefaulted = 0; ///< values whose pages may be written now without page faults
    std::size_t requested = 0;  ///< values whose pages are prefaulted, or requested to be
    std::size_t capacity = 0;   ///< values that fit into the allocation
};

/// Resizes the allocation to `capacity` values of `value_size` bytes each. Keeps the contents.
/// @throws std::bad_alloc when out of memory; the block is then unchanged.
void reallocate(Block& block, std::size_t capacity, std::size_t value_size);

/// Frees the allocation. The block must not be used afterwards.
void release(Block& block, std::size_t value_size) noexcept;

/// Makes space for `needed` values in all, with amortised growth, and requests prefaulting of the
/// pages behind them.
/// @throws std::bad_alloc when out of memory; the block is then unchanged.
void grow(Block& block, std::size_t needed, std::size_t value_size);

} // namespace mesh
