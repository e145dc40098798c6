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

/// Bytes that are asked for ahead: enough that the helper need not be woken too often.
constexpr std::size_t stretch = std::size_t{1} << 20;

/// Has the block's memory to itself again, where some of it was asked for ahead.
void withdraw(const Block& block, std::size_t value_size) noexcept
{
    if (block.capacity * value_size >= large_block)
        withdraw_pages(block.data, block.capacity * value_size);
}

} // namespace

void reallocate(Block& block, std::size_t capacity, std::size_t value_size)
{
    if (capacity > std::numeric_limits<std::size_t>::max() / value_size)
        throw std::bad_alloc();
    withdraw(block, value_size);
    void* const moved = std::realloc(block.data, capacity * value_size);
    if (moved == nullptr)
        throw std::bad_alloc();
    block.data = moved;
    block.capacity = capacity;
    if (capacity * value_size < large_block)
        block.ready = block.asked = capacity;
}

void release(Block& block, std::size_t value_size) noexcept
{
    withdraw(block, value_size);
    std::free(block.data);
}

void grow(Block& block, std::size_t needed, std::size_t value_size)
{
    if (needed > block.capacity)
        reallocate(block, std::max(needed, block.capacity + block.capacity / 2 + 16), value_size);
    if (needed <= block.ready)
        return;
    const auto at = [&](std::size_t value) {
        return static_cast<std::byte*>(block.data) + value * value_size;
    };
    if (needed > block.asked)
        prepare_pages(at(block.asked), (needed - block.asked) * value_size);
    block.ready = std::max(needed, block.asked);
    block.asked = std::min(block.ready + stretch / value_size + 1, block.capacity);
    prepare_pages_ahead(at(block.ready), (block.asked - block.ready) * value_size);
}

} // namespace mesh
