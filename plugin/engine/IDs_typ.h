// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "hostapi/types.h"
#include "plugin/engine/index/node_memory.h"
#include "plugin/util/chain.h"

namespace dastrel {

/// One point of the current clone, a node of a list in order of creation.
class IDs_typ {
public:
    IDs_typ() = default;
    IDs_typ(const IDs_typ&) = delete;
    IDs_typ& operator=(const IDs_typ&) = delete;
    /// Frees the rest of the chain.
    ~IDs_typ() { delete_rest_of_chain(this); }

    LWPntID old_id = nullptr; ///< the background point
    LWPntID new_id = nullptr; ///< its copy
    IDs_typ* next = nullptr;  ///< owned

    // a run makes one for each point of each clone
    static void* operator new(std::size_t /*size*/) { return ids_nodes.take(); }
    static void operator delete(void* memory) noexcept { ids_nodes.give(memory); }
};

} // namespace dastrel
