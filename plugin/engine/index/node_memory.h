// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/util/node_pool.h"

namespace dastrel {

// Hidden visibility: no indirection through the GOT.
#pragma GCC visibility push(hidden)

/// Pools of the nodes of `pos_list` and `IDs`.
extern node_pool pos_nodes;
extern node_pool ids_nodes;

#pragma GCC visibility pop

/// Frees the blocks of pools that have no node in use. Called at the end of a run.
void release_node_memory() noexcept;

} // namespace dastrel
