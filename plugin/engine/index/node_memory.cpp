// SPDX-License-Identifier: MIT
#include "plugin/engine/index/node_memory.h"

#include "plugin/engine/IDs_typ.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/util/node_pool.h"

namespace dastrel {

namespace {

node_pool<sizeof(pos_typ)> pos_pool;
node_pool<sizeof(IDs_typ)> ids_pool;

} // namespace

void* take_pos_memory() { return pos_pool.take(); }
void give_pos_memory(void* memory) noexcept { pos_pool.give(memory); }
void* take_ids_memory() { return ids_pool.take(); }
void give_ids_memory(void* memory) noexcept { ids_pool.give(memory); }

void release_node_memory() noexcept
{
    pos_pool.release_blocks();
    ids_pool.release_blocks();
}

} // namespace dastrel
