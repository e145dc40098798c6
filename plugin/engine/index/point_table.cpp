// SPDX-License-Identifier: MIT
#include "plugin/engine/index/point_table.h"

#include <utility>

namespace dastrel {

void point_table::release()
{
    memory = std::vector<slot_typ>();
    slots = &none;
    mask = 0;
    used = 0;
}

point_table::slot_typ& point_table::slot(LWPntID old_id)
{
    std::size_t i = start(old_id);
    while (slots[i].clone != unused) {
        if (slots[i].old_id == old_id)
            return slots[i];
        i = (i + 1) & mask;
    }
    return add(old_id);
}

point_table::slot_typ& point_table::add(LWPntID old_id)
{
    if (used * 2 >= memory.size())
        grow();
    slot_typ slot;
    slot.old_id = old_id;
    slot.clone = no_clone;
    ++used;
    return put(slot);
}

point_table::slot_typ& point_table::put(const slot_typ& slot)
{
    std::size_t i = start(slot.old_id);
    while (slots[i].clone != unused)
        i = (i + 1) & mask;
    return slots[i] = slot;
}

void point_table::grow()
{
    const std::vector<slot_typ> old =
        std::exchange(memory, std::vector<slot_typ>(memory.empty() ? 64 : memory.size() * 2));
    slots = memory.data();
    mask = memory.size() - 1;
    for (const slot_typ& slot : old)
        if (slot.clone != unused)
            put(slot);
}

} // namespace dastrel
