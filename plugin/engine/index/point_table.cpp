// SPDX-License-Identifier: MIT
#include "plugin/engine/index/point_table.h"

#include <utility>

namespace dastrel {

void point_table::clear()
{
    ++clone;
    filled = 0;
}

void point_table::release()
{
    slots = std::vector<slot_typ>();
    most = 0;
    clear();
}

void point_table::put(LWPntID old_id, LWPntID new_id)
{
    std::size_t i = start(old_id);
    while (slots[i].clone == clone) {
        if (slots[i].old_id == old_id)
            return;
        i = (i + 1) & mask;
    }
    slots[i] = {old_id, new_id, clone};
    ++filled;
}

void point_table::grow()
{
    const std::size_t size = slots.empty() ? 64 : slots.size() * 2;
    const std::vector<slot_typ> old = std::exchange(slots, std::vector<slot_typ>(size));
    mask = size - 1;
    most = size / 2;
    filled = 0;
    for (const slot_typ& slot : old)
        if (slot.clone == clone)
            put(slot.old_id, slot.new_id);
}

void point_table::add(LWPntID old_id, LWPntID new_id)
{
    if (filled == most)
        grow();
    put(old_id, new_id);
}

} // namespace dastrel
