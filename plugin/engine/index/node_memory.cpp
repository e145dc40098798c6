// SPDX-License-Identifier: MIT
#include "plugin/engine/index/node_memory.h"

#include "plugin/engine/IDs_typ.h"
#include "plugin/engine/pos_typ.h"

namespace dastrel {

node_pool pos_nodes(sizeof(pos_typ));
node_pool ids_nodes(sizeof(IDs_typ));

void release_node_memory() noexcept
{
    pos_nodes.release_blocks();
    ids_nodes.release_blocks();
}

} // namespace dastrel
