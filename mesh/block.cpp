// SPDX-License-Identifier: MIT
#include "mesh/block.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

#include "mesh/pages.h"

namespace mesh {

namespace {

/// Bytes from which on the memory of a block is new, and not what the program had before.
constexpr std::size_t large_block = std::size_t{1} << 20;

} // namespace

void reallocate(Block& block, std::size_t capacity, std::size_t value_size)
{
    if (capacity > std::numeric_limits<std::size_t>::max() / value_size)
        throw std::bad_alloc();
    void* const moved = std::realloc(block.data, capacity * value_size);
    if (moved == nullptr)
        throw std::bad_alloc();
    block.data = moved;
    block.capacity = capacity;
    if (capacity * value_size < large_block)
        block.ready = capacity;
}

void grow(Block& block, std::size_t needed, std::size_t value_size)
{
    if (needed > block.capacity)
        reallocate(block, std::max(needed, block.capacity + block.capacity / 2 + 16), value_size);
    if (needed <= block.ready)
        return;
    const std::size_t stretch = (std::size_t{1} << 18) / value_size + 1;
    const std::size_t next = needed + std::min(stretch, block.capacity - needed);
    prepare_pages(static_cast<std::byte*>(block.data) + block.ready * value_size,
                  (next - block.ready) * value_size);
    block.ready = next;
}

} // namespace mesh
