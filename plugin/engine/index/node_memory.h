// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace dastrel {

/// Where the nodes of the position list and of the point map come from and go back to.
void* take_pos_memory();
void give_pos_memory(void* memory) noexcept;
void* take_ids_memory();
void give_ids_memory(void* memory) noexcept;

/// Gives the memory of nodes that are no longer in use back to the system; at the end of a run.
void release_node_memory() noexcept;

} // namespace dastrel
