// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace dastrel {

/// A free-list allocator for list nodes of one size, which are allocated in blocks of 1,024.
class node_pool {
public:
    /// For nodes of `size` bytes.
    explicit node_pool(std::size_t size) : node_size(size) {}

    /// Allocates one node. Throws std::bad_alloc.
    void* take()
    {
        if (unused == nullptr)
            add_block();
        free_node* const node = unused;
        unused = node->next;
        ++in_use;
        return node;
    }

    /// Frees a node that `take` returned.
    void give(void* memory) noexcept
    {
        auto* const node = static_cast<free_node*>(memory);
        node->next = unused;
        unused = node;
        --in_use;
    }

    /// Frees all blocks if no node is in use; otherwise does nothing.
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
