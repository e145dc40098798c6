// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/util/node_pool.h"

namespace dastrel {

// Of the module alone: reached directly, not through the table of names that others could replace.
#pragma GCC visibility push(hidden)

/// Where the nodes of the position list and of the point map come from and go back to.
extern node_pool pos_nodes;
extern node_pool ids_nodes;

#pragma GCC visibility pop

/// Gives the memory of nodes that are no longer in use back to the system; at the end of a run.
void release_node_memory() noexcept;

} // namespace dastrel
