// SPDX-License-Identifier: MIT
#include "plugin/util/node_pool.h"

#include <new>

namespace dastrel {

void node_pool::add_block()
{
    constexpr std::size_t nodes_in_block = 1024;
    constexpr std::size_t aligned = alignof(std::max_align_t);
    const std::size_t stride = (node_size + aligned - 1) / aligned * aligned;
    blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(nodes_in_block * stride));
    std::byte* const block = blocks.back().get();
    for (std::size_t i = nodes_in_block; i-- > 0;)
        unused = ::new (block + i * stride) free_node{unused};
}

void node_pool::release_blocks() noexcept
{
    if (in_use != 0)
        return;
    unused = nullptr;
    blocks = std::vector<std::unique_ptr<std::byte[]>>();
}

} // namespace dastrel
