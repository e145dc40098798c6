// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace dastrel {

/// Memory for the nodes of lists that are made and freed by the million: nodes come from large
/// blocks and go back onto a chain of free ones.
template <std::size_t node_size> class node_pool {
public:
    /// Memory for one node. Throws std::bad_alloc.
    void* take()
    {
        if (unused == nullptr)
            add_block();
        free_node* const node = unused;
        unused = node->next;
        ++in_use;
        return node;
    }

    /// Takes back what `take` gave.
    void give(void* memory) noexcept
    {
        auto* const node = static_cast<free_node*>(memory);
        node->next = unused;
        unused = node;
        --in_use;
    }

    /// Gives the blocks back when no node is in use.
    void release_blocks() noexcept
    {
        if (in_use != 0)
            return;
        unused = nullptr;
        blocks = std::vector<std::unique_ptr<free_node[]>>();
    }

private:
    union free_node {
        free_node* next;
        alignas(std::max_align_t) std::byte bytes[node_size];
    };

    void add_block()
    {
        constexpr std::size_t nodes_in_block = 1024;
        blocks.push_back(std::make_unique_for_overwrite<free_node[]>(nodes_in_block));
        free_node* const block = blocks.back().get();
        for (std::size_t i = nodes_in_block; i-- > 0;) {
            block[i].next = unused;
            unused = &block[i];
        }
    }

    free_node* unused = nullptr;
    std::size_t in_use = 0;
    std::vector<std::unique_ptr<free_node[]>> blocks;
};

} // namespace dastrel
