// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace dastrel {

/// Memory for the nodes of lists that are made and freed by the million: nodes come from large
/// blocks and go back onto a chain of free ones.
class node_pool {
public:
    /// For nodes of `size` bytes.
    explicit node_pool(std::size_t size) : node_size(size) {}

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
    void release_blocks() noexcept;

private:
    struct free_node {
        free_node* next;
    };

    void add_block();

    free_node* unused = nullptr;
    std::size_t in_use = 0;
    std::size_t node_size;
    std::vector<std::unique_ptr<std::byte[]>> blocks;
};

} // namespace dastrel
