// SPDX-License-Identifier: MIT
#include "mesh/block.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

#include "mesh/pages.h"

namespace mesh {

namespace {

/// Allocations of at least this size, in bytes, come from fresh pages and are prefaulted. Smaller
/// ones mostly reuse pages of the heap.
constexpr std::size_t large_block = std::size_t{1} << 20;

/// Bytes per request to the prefault thread: large enough to keep wake-ups rare.
constexpr std::size_t prefault_step = std::size_t{1} << 20;

/// Cancels prefault requests for the block's memory, if there can be any.
void cancel_block_prefault(const Block& block, std::size_t value_size) noexcept
{
    if (block.capacity * value_size >= large_block)
        cancel_prefault(block.data, block.capacity * value_size);
}

} // namespace

void reallocate(Block& block, std::size_t capacity, std::size_t value_size)
{
    if (capacity > std::numeric_limits<std::size_t>::max() / value_size)
        throw std::bad_alloc();
    cancel_block_prefault(block, value_size);
    void* const moved = std::realloc(block.data, capacity * value_size);
    if (moved == nullptr)
        throw std::bad_alloc();
    block.data = moved;
    block.capacity = capacity;
    if (capacity * value_size < large_block)
        block.prefaulted = block.requested = capacity;
}

void release(Block& block, std::size_t value_size) noexcept
{
    cancel_block_prefault(block, value_size);
    std::free(block.data);
}

void grow(Block& block, std::size_t needed, std::size_t value_size)
{
    if (needed > block.capacity)
        reallocate(block, std::max(needed, block.capacity + block.capacity / 2 + 16), value_size);
    if (needed <= block.prefaulted)
        return;
    const auto at = [&](std::size_t value) {
        return static_cast<std::byte*>(block.data) + value * value_size;
    };
    if (needed > block.requested)
        prefault_pages(at(block.requested), (needed - block.requested) * value_size);
    block.prefaulted = std::max(needed, block.requested);
    block.requested = std::min(block.prefaulted + prefault_step / value_size + 1, block.capacity);
    prefault_pages_async(at(block.prefaulted), (block.requested - block.prefaulted) * value_size);
}

} // namespace mesh
