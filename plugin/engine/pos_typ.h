// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "plugin/engine/index/node_memory.h"
#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

/// The position of one clone: a node of the list `pos_list`, which owns its nodes.
class pos_typ {
public:
    std::int32_t poly = 0;   ///< index of the ground polygon in `poly_data`
    XYZ6_typ pos;            ///< where the model's origin goes
    double norm_h = 0.0;     ///< heading of the normal; 0 when neither align switch is on
    double norm_p = 0.0;     ///< pitch of the normal, with the pitch weight added
    double poly_area = 0.0;  ///< area of the polygon; only when size depends on it
    pos_typ* next = nullptr; ///< next node, at an equal or greater X

    // a run makes one for each clone
    static void* operator new(std::size_t /*size*/) { return pos_nodes.take(); }
    static void operator delete(void* memory) noexcept { pos_nodes.give(memory); }
};

} // namespace dastrel
